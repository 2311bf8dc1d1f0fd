#pragma once

#include "apps/command_outputs.h"
#include "apps/end_signals.h"
#include "apps/outlet.h"
#include "apps/progress_line.h"
#include "apps/run_boxes.h"
#include "apps/word_options.h"
#include "apps/word_report.h"
#include "bench/scripted_desk.h"
#include "platform/clock.h"
#include "program/program.h"
#include "sending/continuous_count.h"

#include <functional>
#include <memory>
#include <ostream>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// The exit code for a command line that cannot be understood.
inline constexpr int usageError = 2;

/// What all commands that send words are told alike.
struct CommandOptions {
    OutletOptions outlet;
    OutputOptions outputs;
    double timeout = 0; ///< seconds that a word may take, 0 for as long as it takes
    int times = 1;      ///< how often everything is sent
};

/// Adds the options to a command; `busHelp` is what --bus does there. The result raises
/// CLI::ValidationError for options that do not go together; to be called when all are parsed.
[[nodiscard]] std::function<void()> addCommandOptions(CLI::App& command, CommandOptions& options,
                                                      const std::string& busHelp);

/// The command line asks for what cannot be; found before anything was sent.
class WrongUse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A command that sends words: the program on its bus, the signals that end it, its lines and its
/// outputs. A message box ends it, its text on `errors`; so does a signal, before the next word or
/// in a wait, with an orderly end.
class CommandRun {
public:
    /// All outlive it.
    CommandRun(const CommandOptions& options, std::ostream& output, std::ostream& errors);
    virtual ~CommandRun() { isOver_ = true; }
    CommandRun(const CommandRun&) = delete;
    CommandRun& operator=(const CommandRun&) = delete;

    /// The exit code of the program.
    int run();

protected:
    /// Brings the program to where it can send. False after a message.
    virtual bool prepare() = 0;
    /// Sends everything once. False when the command is to end, perhaps after a message.
    virtual bool sendPass() = 0;
    virtual std::unique_ptr<WordReport> makeReport() = 0;
    /// The exit code of a command that no message has ended.
    [[nodiscard]] virtual int verdict() const { return 0; }
    /// What stands before a message; empty where there is nothing to tell.
    [[nodiscard]] virtual std::string where() const = 0;
    [[nodiscard]] virtual std::string progressText();
    /// How many words, and how many a second.
    [[nodiscard]] std::string countText();

    /// Opens a configuration file. One that does not choose the dongle, or finds none, goes to the
    /// parallel port, which is set up for it. False after a message.
    bool openFile(const std::string& fileName);
    /// Chooses the bus, opens the configuration file of `shape` where it has one, and applies its
    /// settings. False after a message.
    bool applySettings(const WordOptions& shape);

    [[nodiscard]] const CommandOptions& options() const { return options_; }
    [[nodiscard]] Program& program() { return program_; }
    [[nodiscard]] RunBoxes& boxes() { return boxes_; }
    [[nodiscard]] const Interruption& interruption() const { return interruption_; }
    [[nodiscard]] StandardInput& input() { return input_; }
    [[nodiscard]] const Clock& clock() const { return outlet_.clock(); }
    [[nodiscard]] std::ostream& output() { return output_; }
    /// Lets time pass on clock(); a signal ends it.
    void waitUntil(std::int64_t nanoseconds);
    /// A line on `errors`; the command goes on.
    void warn(const std::string& text);
    /// Null until the first word.
    [[nodiscard]] const WordReport* report() const { return report_.get(); }

private:
    void checkInterruption();
    bool sendAll();
    bool chooseSettings(const std::string& config);
    int attempt();
    int fail(const std::string& text, int code);
    void switchLog();
    int finish(int code);

    const CommandOptions& options_;
    std::ostream& output_;
    std::ostream& errors_;
    EndSignals signals_;
    Interruption interruption_;
    StandardInput input_;
    ProgressLine progress_;
    RunBoxes boxes_;
    GivenFileName noFileName_;
    QuietPointer pointer_;
    Outlet outlet_;
    Program program_;
    CommandOutputs outputs_;
    std::unique_ptr<WordReport> report_;
    SystemClock realTime_; ///< on the bench time passes as words want it
    WordRate rate_;
    bool isOver_ = false;      ///< signals count no more
    bool nobodyReads_ = false; ///< what is printed
};

} // namespace bitlux
