#pragma once

#include "gui/panels/panel_widgets.h"
#include "gui/widgets/form_dialog.h"
#include "panels/common/companion_form.h"

class QVBoxLayout;

namespace bitlux::gui {

class RowGrid;

/// The window of a form beside a panel, made from the chip's description. The buttons that read or
/// send several registers, and the last word, stay visible; the rows of registers and of views
/// scroll below them. Closing the window hides the form.
class CompanionView : public FormDialog {
public:
    CompanionView(CompanionForm& form, Binder& binder, QWidget* parent);

protected:
    /// As in a panel, Escape and Enter do nothing unless a control handles them.
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }

private:
    [[nodiscard]] QWidget* makeActions();
    void addRegisters(QVBoxLayout& column, QWidget* parent);
    void addViews(QVBoxLayout& column, QWidget* parent);

    CompanionForm& form_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
