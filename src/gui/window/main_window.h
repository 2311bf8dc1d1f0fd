#pragma once

#include "gui/panels/panel_view.h"
#include "gui/widgets/binder.h"
#include "gui/widgets/form_dialog.h"
#include "gui/window/main_view.h"
#include "gui/window/user_settings.h"
#include "gui/window/work_title.h"
#include "program/program.h"

#include <array>
#include <map>
#include <memory>

#include <QMainWindow>
#include <QTimer>

namespace bitlux::gui {

class ElidedLabel;
class HelpWindow;
class NoticeView;
class RunProgressView;

/// The main window: menus, the pages of frmMain in a scroll area, a status line; and the windows of
/// the other forms as they are shown. Closing it ends the program, and the end of the program
/// closes all windows. A configuration file or a chip that is dropped on it is opened.
class MainWindow : public QMainWindow {
public:
    explicit MainWindow(Program& program, UserSettings settings = UserSettings());
    ~MainWindow() override;

    [[nodiscard]] Program& program() { return program_; }
    [[nodiscard]] Binder& binder() { return binder_; }
    [[nodiscard]] MainView& view() { return *view_; }

    /// Sets how panels that are opened from now on show the model of their chip.
    void showModelsBy(ShowModel showModel) { showModel_ = std::move(showModel); }

    /// The size that shows everything without a scroll bar, if it fits the screen.
    void fitToContent();
    /// Restores the last position and size, if known; else as fitToContent.
    void restorePlace();

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void hideDialogs();
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void makeMenus();
    void makeFileMenu();
    void makeHelpMenu();
    /// Exit closes everything before its handler asks about changes; here the user is asked first.
    void addExit(QMenu& menu, forms::MenuItem& item);
    QAction* menuItem(QMenu& menu, forms::MenuItem& item);
    void formShown(forms::Form& form);
    void formGoing(forms::Form& form);
    FormDialog* makeDialog(forms::Form& form);
    void refresh();
    void updateStatus();
    void noteFileUsed();
    void openFile(const QString& fileName);
    void openDropped(const QString& fileName);
    void showHelp();
    void followRun();
    void makeDarkEntry(QMenu& view);
    /// The program's colours have changed.
    void recolor();

    Program& program_;
    UserSettings settings_;
    Binder binder_;
    WorkTitle title_;
    MainView* view_;
    ElidedLabel* bus_;
    NoticeView* notice_;
    QAction* dark_ = nullptr;
    RunProgressView* progress_ = nullptr; ///< made for the first run
    std::unique_ptr<HelpWindow> help_;    ///< made at the first request
    ShowModel showModel_;                 ///< empty without a virtual bench
    QTimer presence_;                     ///< checks whether the dongle is still present
    std::array<Subscription, 9> subscriptions_;
    std::map<const forms::Form*, FormDialog*> dialogs_; ///< those that were shown
};

} // namespace bitlux::gui
