#include "gui/window/window_program.h"

#include "gui/bench/bench_view.h"
#include "gui/desktop/accessibility.h"
#include "gui/desktop/program_icon.h"
#include "gui/desktop/qt_desk.h"
#include "gui/desktop/termination_signals.h"
#include "gui/desktop/theme.h"
#include "gui/window/command_line.h"
#include "gui/window/main_window.h"
#include "platform/linux/user_folder.h"

#include <cstdlib>
#include <iostream>
#include <memory>
#include <utility>

#include <QApplication>
#include <QSessionManager>
#include <QTimer>

namespace bitlux::gui {

namespace {

/// For the one exit without stack unwinding: the display is gone and the toolkit exits.
Program* runningProgram = nullptr;

void endRunningProgram() {
    if (runningProgram != nullptr)
        runningProgram->end();
}

/// Prepares the bench: sets up the port, and selects hexadecimal display.
void setUp(Program& program) {
    ConfigureDialog& dialog = program.dialog();
    dialog.Btn_ParallelPort_Click();
    dialog.optHex.setValue(true);
    dialog.cmdApply_Click();
    program.session().ConfigDirty = ConstOff;
}

/// The end of the user's session. A user who wants to continue cancels it.
void endWithSession(Program& program, QSessionManager& manager) {
    if (!manager.allowsInteraction()) {
        program.end();
        return;
    }
    program.close(Program::Closing::System);
    if (program.running())
        manager.cancel();
    manager.release();
}

/// The window and its contents, made when the program shows its main form.
class Stage {
public:
    Stage(Program& program, VirtualBench* bench, UserSettings settings)
        : program_(program), bench_(bench), settings_(std::move(settings)) {
        shown_ = program.forms().formShown.follow([this](const forms::Form& form) {
            if (!window_ && form.visible() && form.name() == "frmMain")
                raise();
        });
    }

private:
    void raise() {
        if (bench_ != nullptr)
            setUp(program_);
        window_ = std::make_unique<MainWindow>(program_, settings_);
        if (bench_ != nullptr)
            addBench(*window_, *bench_, "loopback");
        window_->restorePlace();
        window_->show();
        window_->view().focusEntry();
        QTimer::singleShot(0, window_.get(), [this] { window_->setWindowIcon(programIcon()); });
    }

    Program& program_;
    VirtualBench* bench_;
    UserSettings settings_;
    std::unique_ptr<MainWindow> window_;
    Subscription shown_;
};

int runInWindow(const std::string& commandLine, const Hardware& hardware, VirtualBench* bench) {
    const UserSettings settings(UserSettings::standardFile(),
                                bench != nullptr ? "bench" : "window");
    applyTheme(settings.dark().value_or(isDark()));
    QtDesk desk;
    Program program(hardware, desk.desk());
    runningProgram = &program;
    std::atexit(endRunningProgram);
    if (bench != nullptr)
        bench->wireFor(program.session());
    desk.boxes.abortRequested.subscribe([&program] { program.mainForm().run.cmdAbort_Click(); });
    int result = 0;
    {
        const Stage stage(program, bench, settings);
        const TerminationSignals termination([&program] { program.end(); });
        QObject::connect(
            qApp, &QGuiApplication::commitDataRequest, &termination,
            [&program](QSessionManager& manager) { endWithSession(program, manager); });
        program.Main(commandLine);
        if (program.running()) { // a message box about the file may have ended it
            program.mainForm().unsaved.keepIn(stateFolder());
            result = QApplication::exec();
        }
    }
    runningProgram = nullptr;
    return result;
}

} // namespace

int runWindow(int argc, char** argv, const Hardware& hardware, VirtualBench* bench) {
    const std::string commandLine = commandLineOf(argc, argv);
    const std::string name = bench != nullptr ? "bitlux-bench" : "bitlux-forge";
    if (const std::optional<std::string> answer = answerTo(commandLine, name)) {
        std::cout << *answer;
        return 0;
    }
    int count = 1; // none of the arguments is for the toolkit
    QApplication application(count, argv);
    QApplication::setApplicationName(applicationTitle);
    QGuiApplication::setDesktopFileName(bench != nullptr ? "io.bitlux.Bench" : "io.bitlux.Forge");
    installAccessibility();
    return runInWindow(commandLine, hardware, bench);
}

} // namespace bitlux::gui
