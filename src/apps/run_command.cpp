#include "apps/run_command.h"

#include "apps/examples.h"
#include "apps/expected_answers.h"
#include "apps/line_verdicts.h"
#include "apps/run_report.h"
#include "apps/word_source.h"
#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/forms/near_names.h"
#include "platform/printable.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <set>
#include <vector>

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

constexpr std::size_t longestInMessage = 80; ///< in a message

Failure unknownBatch(const std::string& name, const std::vector<std::string>& names) {
    std::string text = fmt::format("There is no Batch \"{}\"", printable(name, longestInMessage));
    std::vector<std::string> near = forms::nearNames(name, names);
    for (std::string& nearName : near)
        nearName = fmt::format("\"{}\"", printable(nearName, longestInMessage));
    if (names.empty())
        text += "; the file has none";
    else if (!near.empty())
        text += fmt::format("; near: {}", fmt::join(near, ", "));
    return {Failure::Kind::OutOfRange, text + "."};
}

/// A bit of a hexadecimal number.
bool isOne(const std::string& digits, std::size_t bit) {
    constexpr std::size_t bitsOfDigit = 4;
    const std::size_t fromEnd = bit / bitsOfDigit + 1;
    return fromEnd <= digits.size() &&
           (hexDigit(digits[digits.size() - fromEnd]) >> bit % bitsOfDigit & 1) != 0;
}

class Run : public CommandRun {
public:
    Run(const RunOptions& options, std::ostream& output, std::ostream& errors)
        : CommandRun(options.command, output, errors), options_(options) {}

private:
    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override;
    [[nodiscard]] std::string where() const override;
    [[nodiscard]] std::string progressText() override;
    [[nodiscard]] int verdict() const override { return verdict_; }

    void readExpected();
    void mismatched(const std::string& line, const std::string& text);
    void saveReport();

    [[nodiscard]] MultipleRun& multiple() { return program().mainForm().multiple; }
    void chooseCommands();
    /// Enters it in the field of the first page, or in its bits, depending on the display.
    void enterPinWord(const std::string& word);
    /// Once for each line.
    void tellMissingPin(std::size_t line, const std::string& name);

    const RunOptions& options_;
    const RunReport* report_ = nullptr;
    Subscription lineBegins_;
    Subscription pinMissing_;
    ExpectedLines expected_;
    std::optional<LineVerdicts> verdicts_; ///< while words are sent
    int verdict_ = 0;
    bool isStopped_ = false;
    std::set<std::size_t> toldLines_; ///< lines with a pin that does not exist
};

bool Run::prepare() {
    boxes().passesPauses = options_.passesPauses;
    if (!openFile(options_.file))
        return false;
    program().forms().get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    chooseCommands();
    if (options_.pinWord)
        enterPinWord(*options_.pinWord);
    readExpected();
    return true;
}

void Run::readExpected() {
    if (options_.expect.empty())
        return;
    expected_ = ExpectedLines::read(options_.expect, program().session().SPIWordLength);
    const forms::ListBox& list = program().mainForm().commands.lstCommandsToSend;
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < list.count(); ++i)
        lines.push_back(list.line(i));
    expected_.demandIn(lines);
}

void Run::mismatched(const std::string& line, const std::string& text) {
    verdict_ = differsError;
    warn(fmt::format("Word {}, {}: {}", report_->words(), line, text));
    isStopped_ = options_.stops;
    if (isStopped_)
        multiple().abandon();
}

void Run::saveReport() {
    if (options_.junit.empty() || !verdicts_)
        return;
    verdicts_->finish();
    verdicts_->saveJUnit(options_.junit, options_.batch.value_or(options_.file));
}

void Run::enterPinWord(const std::string& word) {
    SingleWordPage& page = program().mainForm().singleWord;
    const Session& session = program().session();
    std::string digits;
    try {
        digits = fittingDigits(word, static_cast<std::size_t>(session.SPIWordLength));
    } catch (const Failure& failure) {
        throw WrongUse(fmt::format("--pin-word \"{}\": {}", printable(word, longestInMessage),
                                   failure.what()));
    }
    if (session.DisplayHex != 0)
        return page.txtHexWordToSend.setText(digits);
    page.cmdAll0Single_Click();
    const int bits = std::min<int>(session.SPIWordLength, SingleWordPage::bitColumns);
    for (int bit = 0; bit < bits; ++bit)
        if (isOne(digits, static_cast<std::size_t>(bit)))
            page.cmdSI_single_Click(bit);
}

void Run::chooseCommands() {
    if (!options_.batch)
        return;
    auto& batches = program().forms().get<forms::ComboBox>("frmMain.cmbBatches");
    const std::vector<std::string>& names = batches.items();
    const auto found = std::find(names.begin(), names.end(), *options_.batch);
    if (found == names.end())
        throw unknownBatch(*options_.batch, names);
    batches.select(static_cast<int>(found - names.begin()));
}

std::unique_ptr<WordReport> Run::makeReport() {
    // A line that sets a pin sends no word, before which a signal would be checked. The report is
    // notified of the line later.
    lineBegins_ = multiple().progressChanged.follow([this] {
        if (multiple().progress())
            interruption().check();
    });
    pinMissing_ = multiple().pinMissing.follow(
        [this](std::size_t line, const std::string& name) { tellMissingPin(line, name); });
    auto report = std::make_unique<RunReport>(program(), clock(), output(), options().outputs.json);
    report_ = report.get();
    if (!options_.expect.empty() || !options_.junit.empty()) {
        verdicts_.emplace(program(), clock(), expected_);
        verdicts_->mismatched = [this](const std::string& line, const std::string& text) {
            mismatched(line, text);
        };
    }
    return report;
}

void Run::tellMissingPin(std::size_t line, const std::string& name) {
    if (toldLines_.insert(line).second)
        warn(fmt::format("Line {}: there is no extra pin \"{}\".", line + 1,
                         printable(name, longestInMessage)));
}

bool Run::sendPass() {
    if (verdicts_)
        verdicts_->beginPass();
    program().forms().get<forms::Button>("frmMain.cmdSendOnce").click();
    saveReport();
    return !boxes().hasEnded() && !isStopped_;
}

std::string Run::where() const {
    if (report_ == nullptr)
        return "";
    if (report_->isSending())
        return fmt::format("Word {}, {}: ", report_->words() + 1, report_->lineText());
    // On the dongle the field may be empty.
    return report_->isAtPin() ? fmt::format("A pin goes with the word of the first page, {}: ",
                                            report_->lineText())
                              : "";
}

std::string Run::progressText() {
    std::string text = fmt::format("pass {} of {}", report_->pass(), options().times);
    if (const std::optional<RunProgress>& now = multiple().progress())
        text += fmt::format(", line {} of {}", now->line + 1, now->lines);
    text += ", " + countText();
    constexpr std::int64_t second = 1'000'000'000;
    if (const std::int64_t left = multiple().remainingWait(); left > 0)
        text += fmt::format(", waits {} s", (left + second - 1) / second);
    return text;
}

} // namespace

CLI::App& addRunCommand(CLI::App& app, RunOptions& options) {
    CLI::App& run = *app.add_subcommand(
        "run", "Play the commands of a configuration file, and print the words");
    run.add_option("FILE", options.file, "A configuration file (*.spi)")->required();
    run.add_option("--batch", options.batch, "Play this Batch instead of the Commands To Send")
        ->type_name("NAME");
    run.add_option("--times", options.command.times, "Play them so many times")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"))
        ->capture_default_str();
    run.add_option("--pin-word", options.pinWord,
                   "The word of the first page, with which extra pins of the dongle change")
        ->type_name("HEX");
    run.add_flag("--yes", options.passesPauses, "Go on at a pause without asking");
    CLI::Option* expect =
        run.add_option("--expect", options.expect,
                       "What answers have to be, by Quick Command or line; exit code 3 otherwise")
            ->type_name("FILE.toml");
    run.add_flag("--stop", options.stops, "End at the first answer that is otherwise")
        ->needs(expect);
    run.add_option("--junit", options.junit, "Write a report with a test case for each line")
        ->type_name("FILE.xml");
    const std::function<void()> check =
        addCommandOptions(run, options.command,
                          "Whether a dongle is plugged into the virtual bench; the file chooses "
                          "whether it is used");
    run.final_callback([&options, check] {
        check();
        if (options.command.outlet.bench.empty() && !options.command.outlet.bus.empty())
            throw CLI::ValidationError("--bus", "needs --bench; the file chooses the bus");
    });
    addExamples(run, {"bitlux run board.spi --batch sweep --times 100 --log log.txt",
                      "bitlux run board.spi --bench echo --json",
                      "bitlux run board.spi --expect expect.toml --junit report.xml"});
    return run;
}

int runRunCommand(const RunOptions& options, std::ostream& output, std::ostream& errors) {
    return Run(options, output, errors).run();
}

} // namespace bitlux
