#pragma once

#include "gui/panels/panel_extras.h"
#include "gui/widgets/form_dialog.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

class QStackedWidget;

namespace bitlux::gui {

/// Shows the model of a chip on the virtual bench, beside the panel that requests it.
using ShowModel = std::function<void(const chips::Chip& chip, QWidget& panel)>;

/// The window of a chip's panel. A page is made when it is first shown. Closing the window unloads
/// the form.
class PanelView : public FormDialog {
public:
    /// `showModel` is empty where there is no virtual bench.
    PanelView(PanelForm& form, Binder& binder, const ShowModel& showModel, QWidget* parent);

protected:
    /// Escape and Enter do nothing unless a control handles them.
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* makeTabs(const ShowModel& showModel);
    QWidget* makeModelButton(const ShowModel& showModel, QWidget* parent);
    void makeTimers();
    void followForm();
    QWidget* makePage(std::size_t page);
    QWidget* makeRegisters();
    void followRegisters();
    /// Puts what is beside the pages after them in the tab order.
    void putSideLast();
    QWidget* makeRegisterPage(const std::string& page);

    PanelForm& form_;
    Binder& binder_;
    PanelWidgets widgets_;
    const PanelExtras extras_;
    const std::vector<std::string> registerTitles_;
    QStackedWidget* pages_;
    QWidget* side_ = nullptr;    ///< null where nothing is beside the pages
    std::vector<QWidget*> made_; ///< null until first shown
    QStackedWidget* registerPages_ = nullptr;
    std::vector<QWidget*> madeRegisters_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
