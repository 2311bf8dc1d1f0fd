#pragma once

#include "gui/binder.h"
#include "gui/form_dialog.h"
#include "gui/main_view.h"
#include "program/program.h"

#include <array>
#include <map>

#include <QMainWindow>

class QLabel;

namespace bitlux::gui {

class RunProgressView;

/// The main window: menus, the pages of frmMain in a scroll area, a status line; and the windows
/// of the other forms as they are shown. Closing it ends the program.
class MainWindow : public QMainWindow {
public:
    explicit MainWindow(Program& program);

    [[nodiscard]] Binder& binder() { return binder_; }
    [[nodiscard]] MainView& view() { return *view_; }

    /// The size that shows everything without a scroll bar, if the screen has it.
    void fitToContent();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void makeMenus();
    QAction* menuItem(QMenu& menu, forms::MenuItem& item);
    void formShown(forms::Form& form);
    void formGoing(forms::Form& form);
    FormDialog* makeDialog(forms::Form& form);
    void updateStatus();
    void followRun();

    Program& program_;
    Binder binder_;
    MainView* view_;
    QLabel* bus_;
    RunProgressView* progress_ = nullptr; ///< made for the first run
    std::array<Subscription, 5> subscriptions_;
    std::map<const forms::Form*, FormDialog*> dialogs_; ///< those that were shown
};

} // namespace bitlux::gui
