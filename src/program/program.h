#pragma once

#include "config/configure_dialog.h"
#include "platform/clock.h"
#include "platform/desk.h"
#include "platform/forms/form_set.h"
#include "platform/parallel_port.h"
#include "program/main_form.h"
#include "session/live_options.h"
#include "session/session.h"
#include "transfer/pin_layer.h"
#include "transfer/word_engine.h"

namespace bitlux {

/// The program without its window: the rooms put together on a platform. Whatever front end there
/// is (window, command line, script, test) works on its forms.
class Program {
public:
    /// The outside; all of it outlives the program.
    struct Platform {
        ParallelPort& port;
        MessageBoxes& boxes;
        FileDialogs& fileDialogs;
        Pointer& pointer;
        EventLoop& loop;
    };

    explicit Program(const Platform& platform);
    /// Ends the program if it has not ended yet.
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Starts the program: brings the session and the forms to their defaults, shows the main
    /// form.
    void Main();
    /// An orderly end: a continuous run stops and the pins go idle. Harmless when repeated.
    void end();

    /// The user asked for the end by the menu; whoever runs the program then calls end.
    Event<> exitRequested;

    [[nodiscard]] forms::FormSet& forms() { return forms_; }
    [[nodiscard]] Session& session() { return session_; }
    [[nodiscard]] PinLayer& pins() { return pins_; }
    [[nodiscard]] WordEngine& engine() { return engine_; }
    [[nodiscard]] MainForm& mainForm() { return *mainForm_; }
    [[nodiscard]] ConfigureDialog& dialog() { return *dialog_; }

private:
    void registerProcedures(MainForm& form);
    void loadMainForm(MainForm& form);
    void putIdleLevelsOnPins();
    void Start_USB();

    Session session_;
    forms::FormSet forms_;
    LiveOptions options_;
    PinLayer pins_;
    WordEngine engine_;
    forms::FormSlot<MainForm> mainForm_;
    forms::FormSlot<ConfigureDialog> dialog_;
    bool running_ = false;
};

} // namespace bitlux
