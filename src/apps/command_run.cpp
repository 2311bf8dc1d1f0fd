#include "apps/command_run.h"

#include "apps/opened_file.h"
#include "apps/output_failure.h"
#include "platform/failure.h"

#include <algorithm>
#include <ctime>
#include <limits>

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

// These end a command at once. They are no std::exception, so that no handler takes them for a
// failure.

/// A signal was received.
struct Interrupted {};

/// A word exceeded its time-out.
struct TimedOut {
    std::string where;
};

/// A signal cuts the sleep short.
void sleepFor(std::int64_t nanoseconds) {
    constexpr std::int64_t second = 1'000'000'000;
    const timespec duration{.tv_sec = nanoseconds / second, .tv_nsec = nanoseconds % second};
    nanosleep(&duration, nullptr);
}

} // namespace

std::function<void()> addCommandOptions(CLI::App& command, CommandOptions& options,
                                        const std::string& busHelp) {
    const std::function<void()> checkOutlet = addOutletOptions(command, options.outlet, busHelp);
    const std::function<void()> checkOutputs = addOutputOptions(command, options.outputs);
    command
        .add_option("--timeout", options.timeout,
                    "End when the answer to a word takes longer; without it words are waited for")
        ->check(CLI::PositiveNumber.description("SECONDS"));
    return [checkOutlet, checkOutputs] {
        checkOutlet();
        checkOutputs();
    };
}

CommandRun::CommandRun(const CommandOptions& options, std::ostream& output, std::ostream& errors)
    : options_(options),
      output_(output),
      errors_(errors),
      interruption_{.check = [this] { checkInterruption(); }, .sleep = sleepFor},
      input_(interruption_),
      progress_(errors, isatty(STDERR_FILENO) == 1),
      boxes_(errors, input_),
      noFileName_({}),
      outlet_(options.outlet, interruption_, errors),
      program_(outlet_.hardware(), {.boxes = boxes_,
                                    .fileDialogs = noFileName_,
                                    .pointer = pointer_,
                                    .loop = outlet_.loop()}),
      outputs_(options.outputs, output, errors) {
    outlet_.wireFor(program_.session());
    boxes_.where = [this] { return where(); };
    boxes_.printing = [this] { progress_.clear(); };
    boxes_.ended = [this] { program_.mainForm().multiple.abandon(); };
}

void CommandRun::checkInterruption() {
    if (isOver_)
        return;
    if (EndSignals::received()) {
        isOver_ = true;
        throw Interrupted{};
    }
    constexpr double second = 1e9;
    if (options_.timeout > 0 && report_ &&
        static_cast<double>(report_->sendingFor()) > options_.timeout * second) {
        isOver_ = true;
        throw TimedOut{where()};
    }
    if (report_ && !input_.isWaiting())
        progress_.offer([this] { return progressText(); });
}

int CommandRun::run() {
    return finish(attempt());
}

int CommandRun::attempt() {
    try {
        outputs_.open();
        outlet_.demandChosen();
        program_.Main();
        if (!prepare() || boxes_.hasEnded())
            return 1;
        program_.engine().requireCarriedLength();
        return sendAll() || !boxes_.hasEnded() ? verdict() : 1;
    } catch (const Interrupted&) {
        constexpr int signalBase = 128; // as shells report a program that was ended by a signal
        return signalBase + EndSignals::received().value_or(0);
    } catch (const OutputClosed&) {
        nobodyReads_ = true;
        return 0;
    } catch (const TimedOut& late) {
        return fail(fmt::format("{}No answer came in {} s.", late.where, options_.timeout), 1);
    } catch (const WrongUse& wrong) {
        return fail(wrong.what(), usageError);
    } catch (const Failure& failure) {
        return fail(where() + failure.what(), 1);
    }
}

void CommandRun::waitUntil(std::int64_t nanoseconds) {
    while (clock().nanoseconds() < nanoseconds) {
        checkInterruption();
        outlet_.loop().waitForEvents(nanoseconds - clock().nanoseconds());
    }
}

void CommandRun::warn(const std::string& text) {
    progress_.clear();
    fmt::print(errors_, "{}\n", text);
}

int CommandRun::fail(const std::string& text, int code) {
    warn(text);
    return code;
}

bool CommandRun::openFile(const std::string& fileName) {
    const bool onAdapter = options_.outlet.chosenBus() == Bus::Adapter;
    if (onAdapter && !useBus(Bus::Adapter))
        return false;
    openConfiguration(program_, fileName);
    if (boxes_.hasEnded() || onAdapter)
        return !boxes_.hasEnded();
    const bool usesDongle = program_.engine().usesDongle();
    if (!options_.outlet.serial.empty() && !usesDongle)
        throw WrongUse("The file chooses the parallel port, and --serial a dongle.");
    if (!options_.outlet.port.empty() && usesDongle)
        throw WrongUse("The file chooses the dongle, and --port a parallel port.");
    if (usesDongle)
        return true;
    program_.dialog().Btn_ParallelPort_Click();
    if (!boxes_.hasEnded())
        openConfiguration(program_, fileName);
    return !boxes_.hasEnded();
}

bool CommandRun::useBus(std::optional<Bus> bus) {
    return chooseBus(program_, bus, [this] { return outlet_.refusal(); });
}

bool CommandRun::chooseSettings(const std::string& config) {
    const std::optional<Bus> bus = options_.outlet.chosenBus();
    if (config.empty())
        return useBus(bus);
    if (bus != Bus::Dongle)
        return openFile(config);
    openConfiguration(program_, config);
    return !boxes_.hasEnded() && useBus(bus);
}

bool CommandRun::applySettings(const WordOptions& shape) {
    if (!chooseSettings(shape.config))
        return false;
    WordSettings settings = shape.settings;
    if (program_.engine().usesDongle())
        settings.clock = options_.outlet.dongleClock();
    applyWordSettings(program_, settings);
    return !boxes_.hasEnded();
}

/// The rate that an adapter has made of the wanted one.
void CommandRun::tellRate() {
    const int rate = program_.session().AdapterClock;
    if (options_.outlet.clock.empty() || rate == 0)
        return;
    warn(fmt::format("The adapter {} clocks out {} bytes a second.",
                     program_.session().AdapterInUse, rate));
}

bool CommandRun::sendAll() {
    tellRate();
    switchLog();
    outputs_.begin(program_);
    report_ = makeReport();
    rate_.begin(realTime_.nanoseconds());
    report_->printing = [this, isTerminal = isatty(STDOUT_FILENO) == 1] {
        if (isTerminal)
            progress_.clear(); // the next line is printed in its place
    };
    // Words follow each other without a turn of the loop, which would check for signals.
    const Subscription starting =
        program_.engine().wordStarting.follow([this] { checkInterruption(); });
    for (int pass = 0; pass < options_.times; ++pass) {
        report_->beginPass();
        checkInterruption();
        if (!sendPass())
            return false;
        report_->endPass();
    }
    return true;
}

/// The list is kept only to be printed, since a full one would end the run; a file receives the
/// words without it.
void CommandRun::switchLog() {
    forms::CheckBox& log = program_.dialog().chkEnableLog;
    if (log.checked() != (options_.outputs.log == "-"))
        log.setValue(log.checked() ? 0 : 1);
}

std::string CommandRun::progressText() {
    return fmt::format("pass {} of {}, {}", report_->pass(), options_.times, countText());
}

std::string CommandRun::countText() {
    return bitlux::countText(report_->words(), rate_.at(report_->words(), realTime_.nanoseconds()));
}

int CommandRun::finish(int code) {
    isOver_ = true;
    progress_.clear();
    outputs_.stop(program_); // the idle levels do not belong to an aborted word
    program_.end();
    if (!report_)
        return code;
    bool isWritten = false;
    try {
        if (!outputs_.save(program_))
            code = std::max(code, 1);
        report_->end(code);
        isWritten = static_cast<bool>(output_.flush());
    } catch (const OutputClosed&) {
        nobodyReads_ = true;
    } catch (const Failure&) { // printing the words failed too
    }
    return isWritten || nobodyReads_ ? code : std::max(code, 1);
}

} // namespace bitlux
