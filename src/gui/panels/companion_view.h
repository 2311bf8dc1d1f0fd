#pragma once

#include "gui/panels/panel_widgets.h"
#include "gui/widgets/form_dialog.h"
#include "panels/common/companion_form.h"

class QVBoxLayout;

namespace bitlux::gui {

class RowGrid;

/// The window of a form beside a panel, made from the chip's description: what reads or sends
/// several, and the last word, stay in sight; the rows of registers and of views scroll below.
/// Closing it hides the form.
class CompanionView : public FormDialog {
public:
    CompanionView(CompanionForm& form, Binder& binder, QWidget* parent);

protected:
    /// As in a panel, neither Escape nor Enter does anything that no control takes.
    void keyPressEvent(QKeyEvent* event) override { event->ignore(); }

private:
    [[nodiscard]] QWidget* makeActions();
    void addRegisters(QVBoxLayout& column, QWidget* parent);
    void addViews(QVBoxLayout& column, QWidget* parent);

    CompanionForm& form_;
    PanelWidgets widgets_;
};

} // namespace bitlux::gui
