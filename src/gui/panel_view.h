#pragma once

#include "gui/form_dialog.h"
#include "gui/panel_widgets.h"
#include "panels/zt72518/panel_form.h"

#include <array>

class QStackedWidget;

namespace bitlux::gui {

/// The window of the form "ZT72518". The pages are made when they are first looked at. Closing it
/// unloads the form.
class PanelView : public FormDialog {
public:
    PanelView(zt72518::PanelForm& form, Binder& binder, QWidget* parent);

protected:
    /// Neither Escape nor Enter does anything here that no control takes.
    void keyPressEvent(QKeyEvent* event) override;

private:
    static constexpr int pageCount = 5;

    QWidget* makeTabs();
    void makeTimers();
    void leaveOutCopies();
    void followForm();
    QWidget* makePage(int page);
    QWidget* makeRegisters();
    void followRegisters();
    QWidget* makeRegisterPage(int page);

    zt72518::PanelForm& form_;
    Binder& binder_;
    PanelWidgets widgets_;
    QStackedWidget* pages_;
    std::array<QWidget*, pageCount> made_{};
    QStackedWidget* registerPages_ = nullptr;
    std::vector<QWidget*> madeRegisters_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
