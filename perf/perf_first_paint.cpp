// Start-up to the first paint: an empty main window of the toolkit, or the program's window, as
// the first argument says. perf/run counts the instructions and the memory of both.

#include "gui/window_program.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

#include <string_view>

#include <QApplication>
#include <QMainWindow>
#include <QTimer>

namespace {

/// Ends the application once something has been painted.
class EndAfterPaint : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Paint)
            QTimer::singleShot(0, [] { QCoreApplication::quit(); });
        return false;
    }
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
    const bitlux::SystemClock clock;
    bitlux::LinuxParallelPort port;
    bitlux::LinuxUsbHost usb;
    return bitlux::gui::runWindow(argc, argv, {.port = port, .usb = usb, .clock = clock});
}
