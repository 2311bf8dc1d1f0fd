#include "apps/run_command.h"

#include "apps/end_signals.h"
#include "apps/opened_file.h"
#include "apps/progress_line.h"
#include "apps/run_boxes.h"
#include "apps/run_report.h"
#include "bench/scripted_desk.h"
#include "platform/failure.h"
#include "platform/forms/near_names.h"
#include "platform/printable.h"

#include <algorithm>
#include <ctime>
#include <functional>
#include <limits>
#include <memory>
#include <vector>

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

/// A signal ends the run where it is. No std::exception, so that no handler takes it for a failure.
struct Interrupted {};

/// A signal cuts the sleep short.
void sleepFor(std::int64_t nanoseconds) {
    constexpr std::int64_t second = 1'000'000'000;
    const timespec duration{.tv_sec = nanoseconds / second, .tv_nsec = nanoseconds % second};
    nanosleep(&duration, nullptr);
}

Failure unknownBatch(const std::string& name, const std::vector<std::string>& names) {
    constexpr std::size_t most = 80;
    std::string text = fmt::format("There is no Batch \"{}\"", printable(name, most));
    std::vector<std::string> near = forms::nearNames(name, names);
    for (std::string& nearName : near)
        nearName = fmt::format("\"{}\"", printable(nearName, most));
    if (names.empty())
        text += "; the file has none";
    else if (!near.empty())
        text += fmt::format("; near: {}", fmt::join(near, ", "));
    return {Failure::Kind::OutOfRange, text + "."};
}

/// One run of the command: the program, and where its results go.
class Run {
public:
    Run(const RunOptions& options, std::ostream& output, std::ostream& errors);
    ~Run() { isOver_ = true; }
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// The exit code.
    int run();

private:
    [[nodiscard]] forms::FormSet& forms() { return program_.forms(); }
    [[nodiscard]] MultipleRun& multiple() { return program_.mainForm().multiple; }
    void checkSignals();
    bool prepare();
    bool open();
    void chooseCommands();
    void switchLog();
    bool play();
    void moved();
    void showProgress();
    [[nodiscard]] std::string progressText();
    int finish(int code);
    void save(int& code);
    void saveLog();

    const RunOptions& options_;
    std::ostream& output_;
    std::ostream& errors_;
    EndSignals signals_;
    Interruption interruption_;
    ProgressLine progress_;
    RunBoxes boxes_;
    GivenFileName fileName_;
    QuietPointer pointer_;
    Outlet outlet_;
    Program program_;
    std::unique_ptr<RunReport> report_; ///< from the first word on
    int wholePasses_ = 0;
    bool isOver_ = false; ///< signals count no more
    bool outputIsTerminal_ = isatty(STDOUT_FILENO) == 1;
};

Run::Run(const RunOptions& options, std::ostream& output, std::ostream& errors)
    : options_(options),
      output_(output),
      errors_(errors),
      interruption_{.check = [this] { checkSignals(); }, .sleep = sleepFor},
      progress_(errors, isatty(STDERR_FILENO) == 1),
      boxes_(errors, interruption_),
      fileName_(options.log),
      outlet_(options.outlet, interruption_, errors),
      program_(outlet_.hardware(), {.boxes = boxes_,
                                    .fileDialogs = fileName_,
                                    .pointer = pointer_,
                                    .loop = outlet_.loop()}) {
    outlet_.wireFor(program_.session());
    boxes_.printing = [this] {
        progress_.clear();
        output_.flush();
    };
    boxes_.ended = [this] { multiple().abandon(); };
}

void Run::checkSignals() {
    if (isOver_)
        return;
    if (EndSignals::received()) {
        isOver_ = true;
        throw Interrupted{};
    }
    if (report_ && !boxes_.asking())
        showProgress();
}

int Run::run() {
    try {
        const bool good = prepare() && play();
        return finish(good ? 0 : 1);
    } catch (const Interrupted&) {
        constexpr int signalBase = 128; // as shells tell of a program that a signal has ended
        return finish(signalBase + EndSignals::received().value_or(0));
    } catch (const Failure& failure) {
        progress_.clear();
        fmt::print(errors_, "{}\n", failure.what());
        return finish(1);
    }
}

bool Run::prepare() {
    if (!open())
        return false;
    forms().get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    program_.engine().requireCarriedLength();
    chooseCommands();
    switchLog();
    return !boxes_.hasEnded();
}

/// A file that does not choose the dongle, or finds none, goes to the parallel port, which is set
/// up before the file is opened for it.
bool Run::open() {
    program_.Main();
    openConfiguration(program_, options_.file);
    if (!boxes_.hasEnded() && !program_.engine().usesDongle()) {
        forms().get<forms::Button>("frmConfigureSPI.Btn_ParallelPort").click();
        if (!boxes_.hasEnded())
            openConfiguration(program_, options_.file);
    }
    return !boxes_.hasEnded();
}

void Run::chooseCommands() {
    if (!options_.batch)
        return;
    auto& batches = forms().get<forms::ComboBox>("frmMain.cmbBatches");
    const std::vector<std::string>& names = batches.items();
    const auto found = std::find(names.begin(), names.end(), *options_.batch);
    if (found == names.end())
        throw unknownBatch(*options_.batch, names);
    batches.select(static_cast<int>(found - names.begin()));
}

/// The log is on for who wants it saved and off for all others: a full one would end the run.
void Run::switchLog() {
    auto& log = forms().get<forms::CheckBox>("frmConfigureSPI.chkEnableLog");
    if (log.checked() == options_.log.empty())
        log.click();
}

bool Run::play() {
    report_ = std::make_unique<RunReport>(program_, outlet_.clock(), output_, options_.json);
    if (options_.waveform.any())
        program_.waveform().start();
    // Words follow each other without a turn of the loop, which a signal would count in.
    const Subscription starting =
        program_.engine().wordStarting.follow([this] { interruption_.check(); });
    const Subscription progress = multiple().progressChanged.follow([this] { moved(); });
    auto& send = forms().get<forms::Button>("frmMain.cmdSendOnce");
    for (int pass = 1; pass <= options_.times; ++pass) {
        interruption_.check();
        report_->beginPass(pass);
        send.click();
        if (boxes_.hasEnded())
            return false;
        ++wholePasses_;
    }
    return true;
}

void Run::moved() {
    if (outputIsTerminal_)
        progress_.clear(); // what is printed next stands in its place
    const std::optional<RunProgress>& now = multiple().progress();
    if (now && now->waitUntil)
        output_.flush();
}

void Run::showProgress() {
    progress_.offer([this] { return progressText(); });
}

std::string Run::progressText() {
    std::string text = fmt::format("pass {} of {}", wholePasses_ + 1, options_.times);
    if (const std::optional<RunProgress>& now = multiple().progress())
        text += fmt::format(", line {} of {}", now->line + 1, now->lines);
    text += fmt::format(", {} words", report_->words());
    constexpr std::int64_t second = 1'000'000'000;
    if (const std::int64_t left = multiple().remainingWait(); left > 0)
        text += fmt::format(", waits {} s", (left + second - 1) / second);
    return text;
}

int Run::finish(int code) {
    isOver_ = true;
    progress_.clear();
    program_.waveform().stop(); // the levels of rest are no part of a word that was cut off
    program_.end();
    if (report_) {
        save(code);
        report_->end(wholePasses_, code);
    }
    if (!output_.flush() && code == 0)
        return 1;
    return code;
}

void Run::save(int& code) {
    try {
        saveWaveform(program_, options_.waveform, errors_);
        saveLog();
    } catch (const Failure& failure) {
        fmt::print(errors_, "{}\n", failure.what());
        code = std::max(code, 1);
    }
}

void Run::saveLog() {
    if (options_.log == "-") {
        const LogLines& lines = program_.mainForm().log.lines();
        for (std::size_t i = 0; i < lines.size(); ++i)
            output_ << printable(lines.line(i)) << '\n';
    } else if (!options_.log.empty()) {
        program_.mainForm().log.cmdSaveLogSingle_Click();
    }
}

} // namespace

CLI::App& addRunCommand(CLI::App& app, RunOptions& options) {
    CLI::App& run = *app.add_subcommand(
        "run", "Play the commands of a configuration file, and print the words");
    run.add_option("FILE", options.file, "A configuration file (*.spi)")->required();
    run.add_option("--batch", options.batch, "Play this Batch instead of the Commands To Send")
        ->type_name("NAME");
    run.add_option("--times", options.times, "Play them so many times")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"))
        ->capture_default_str();
    run.add_option("--log", options.log, "Keep the Session Log and save it, - to print it")
        ->type_name("FILE|-");
    addWaveformOptions(run, options.waveform);
    run.add_flag("--json", options.json, "Print objects of JSON, one a line");
    const std::function<void()> checkOutlet =
        addOutletOptions(run, options.outlet,
                         "Whether a dongle is plugged into the virtual bench; the file chooses "
                         "whether it is used");
    run.final_callback([&options, checkOutlet] {
        checkOutlet();
        if (options.outlet.bench.empty() && !options.outlet.bus.empty())
            throw CLI::ValidationError("--bus", "needs --bench; the file chooses the bus");
        if (options.json && options.log == "-")
            throw CLI::ValidationError("--log", "with --json needs a file");
    });
    return run;
}

int runRunCommand(const RunOptions& options, std::ostream& output, std::ostream& errors) {
    return Run(options, output, errors).run();
}

} // namespace bitlux
