#include "gui/window_program.h"

#include "gui/bench_view.h"
#include "gui/log_accessible.h"
#include "gui/main_window.h"
#include "gui/qt_desk.h"
#include "gui/theme.h"

#include <cstdlib>

#include <QApplication>

namespace bitlux::gui {

namespace {

/// For the one way out on which nothing is unwound: the display is gone and the toolkit exits.
Program* runningProgram = nullptr;

void endRunningProgram() {
    if (runningProgram != nullptr)
        runningProgram->end();
}

/// Makes the bench ready: the port is found too, and words are typed in hexadecimal.
void setUp(Program& program) {
    ConfigureDialog& dialog = program.dialog();
    dialog.Btn_ParallelPort_Click();
    dialog.optHex.setValue(true);
    dialog.cmdApply_Click();
    program.session().ConfigDirty = ConstOff;
}

} // namespace

int runWindow(int argc, char** argv, const Hardware& hardware, VirtualBench* bench) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(applicationTitle);
    applyTheme(isDark());
    installLogAccessibility();

    QtDesk desk;
    Program program(hardware, desk.desk());
    if (bench != nullptr)
        bench->wireFor(program.session());
    program.Main();
    runningProgram = &program;
    std::atexit(endRunningProgram);
    if (bench != nullptr)
        setUp(program);

    int result = 0;
    {
        MainWindow window(program);
        if (bench != nullptr)
            window.addDockWidget(
                Qt::BottomDockWidgetArea,
                new BenchView(*bench, program, "loopback", window.binder(), &window));
        window.fitToContent();
        window.show();
        window.view().focusEntry();
        result = QApplication::exec();
    }
    runningProgram = nullptr;
    return result;
}

} // namespace bitlux::gui
