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

/// The options of all commands that send words.
struct CommandOptions {
    OutletOptions outlet;
    OutputOptions outputs;
    double timeout = 0; ///< the longest time for a word in seconds, 0 for no limit
    int times = 1;      ///< number of repetitions
};

/// Adds the options to a command; `busHelp` describes --bus for it. The result raises
/// CLI::ValidationError for options that exclude each other; to be called after parsing.
[[nodiscard]] std::function<void()> addCommandOptions(CLI::App& command, CommandOptions& options,
                                                      const std::string& busHelp);

/// The command line requests something impossible; detected before anything was sent.
class WrongUse : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A command that sends words: the program on its bus, the signals that end it, its printed lines
/// and its output files. A message box ends it, its text on `errors`; so does a signal, orderly,
/// before the next word or in a wait.
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
    /// Prepares the program for sending. False after a message.
    virtual bool prepare() = 0;
    /// Sends everything once. False when the command is to end, perhaps after a message.
    virtual bool sendPass() = 0;
    virtual std::unique_ptr<WordReport> makeReport() = 0;
    /// The exit code of a command that no message has ended.
    [[nodiscard]] virtual int verdict() const { return 0; }
    /// A prefix of messages; empty when there is nothing to say.
    [[nodiscard]] virtual std::string where() const = 0;
    [[nodiscard]] virtual std::string progressText();
    /// The number of words, and the rate.
    [[nodiscard]] std::string countText();

    /// Opens a configuration file. When it does not choose the dongle, or there is none, sets up
    /// the parallel port. False after a message.
    bool openFile(const std::string& fileName);
    /// Chooses the bus as chooseBus() does; a dongle that is in use is named with its holder.
    bool useBus(std::optional<Bus> bus);
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
    /// Prints a line on `errors`; the command continues.
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
    void tellRate();
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
    SystemClock realTime_; ///< on the bench the time of words is virtual
    WordRate rate_;
    bool isOver_ = false;      ///< signals are ignored from now on
    bool nobodyReads_ = false; ///< of the printed lines
};

} // namespace bitlux
