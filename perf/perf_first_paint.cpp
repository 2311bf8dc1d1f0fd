// Start-up to the first paint: an empty main window of the toolkit, or the program's window, as
// the first argument says; or, with "dialog", from opening the configuration dialog to its first
// paint, or with the name of a panel's form from opening that. perf/run counts the instructions,
// and the memory of the first two.

#include "gui/window/main_window.h"
#include "gui/window/window_program.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

#include <string>
#include <string_view>

#include <valgrind/callgrind.h>

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMainWindow>
#include <QTimer>

namespace {

bool opensDialog = false; ///< or the panel
std::string opensPanel;   ///< name of its form; empty for none

/// Ends the application once something has been painted; where the dialog is wanted, opens it then
/// and counts from there to its own paint.
class EndAfterPaint : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Paint || done_)
            return false;
        if (opensDialog && !opened_) {
            opened_ = true;
            QTimer::singleShot(0, [] { openDialog(); });
        } else if (!opensDialog || qobject_cast<QDialog*>(watched) != nullptr) {
            done_ = true;
            QTimer::singleShot(0, [] { quit(); });
        }
        return false;
    }

private:
    static void openDialog() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* main = dynamic_cast<bitlux::gui::MainWindow*>(window);
            if (main == nullptr)
                continue;
            CALLGRIND_TOGGLE_COLLECT;
            if (!opensPanel.empty())
                main->program().forms().show(opensPanel);
            else
                main->findChild<QAction*>("frmMain.itemPortOptions")->trigger();
        }
    }

    static void quit() {
        if (opensDialog)
            CALLGRIND_TOGGLE_COLLECT;
        QCoreApplication::quit();
    }

    bool opened_ = false;
    bool done_ = false;
};

void watch() {
    QCoreApplication* application = QCoreApplication::instance();
    application->installEventFilter(new EndAfterPaint(application));
}

int runEmptyWindow(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(720, 620);
    window.show();
    return QApplication::exec();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(watch)

int main(int argc, char** argv) {
    if (argc > 1 && std::string_view(argv[1]) == "empty")
        return runEmptyWindow(argc, argv);
    const std::string_view what = argc > 1 ? argv[1] : "";
    if (what.starts_with("ZT"))
        opensPanel = what;
    opensDialog = !opensPanel.empty() || what == "dialog";
    const bitlux::SystemClock clock;
    bitlux::LinuxParallelPort port;
    bitlux::LinuxUsbHost usb;
    return bitlux::gui::runWindow(1, argv, {.port = port, .usb = usb, .clock = clock});
}
