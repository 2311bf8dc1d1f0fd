#include "apps/replay_command.h"

#include "apps/examples.h"
#include "apps/expected_answers.h"
#include "apps/json_text.h"
#include "journal/journal_player.h"
#include "journal/journal_reader.h"
#include "journal/journal_update.h"
#include "platform/failure.h"
#include "sending/answer_pattern.h"

#include <filesystem>
#include <optional>
#include <system_error>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace bitlux {

namespace {

using Difference = JournalPlayer::Difference;

std::string shown(const std::optional<std::string>& answer) {
    return answer.value_or("no answer");
}

std::string jsonAnswer(const std::optional<std::string>& answer) {
    return answer ? jsonString(*answer) : "null";
}

/// Only in JSON each word is printed, with the line of the journal and the answer there.
class ReplayReport : public WordReport {
public:
    using WordReport::WordReport;

    const JournalEntry* entry = nullptr; ///< that is being played

private:
    void printWord() override {
        if (isJson())
            WordReport::printWord();
    }
    [[nodiscard]] std::string moreOfWord() const override {
        const auto& word = std::get<JournalWord>(entry->content);
        return fmt::format(R"(,"line":{},"then":{})", entry->line, jsonAnswer(word.received));
    }
};

class Replay : public CommandRun {
public:
    Replay(const ReplayOptions& options, const JournalSurvey& survey, bool busIsChosen,
           std::ostream& output, std::ostream& errors)
        : CommandRun(options.command, output, errors),
          options_(options),
          survey_(survey),
          busIsChosen_(busIsChosen),
          player_(partsOf()) {}

private:
    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override;
    [[nodiscard]] int verdict() const override {
        return player_.differences() > 0 && !options_.updates ? differsError : 0;
    }
    [[nodiscard]] std::string where() const override;

    JournalPlayer::Parts partsOf();
    bool choose(Bus bus);
    void playAll();
    void report(const Difference& difference);
    void tellFirst(const Difference& difference);
    void tellCount();

    const ReplayOptions& options_;
    const JournalSurvey& survey_;
    bool busIsChosen_; ///< by the command line
    JournalPlayer player_;
    ReplayReport* lines_ = nullptr;
    std::size_t line_ = 0;   ///< that is being played, 0 for none
    JournalAnswers answers_; ///< that are others
};

JournalPlayer::Parts Replay::partsOf() {
    JournalPlayer::Parts parts{.session = program().session(),
                               .engine = program().engine(),
                               .dongle = program().dongle(),
                               .pins = program().pins(),
                               .clock = clock(),
                               .waitUntil = {},
                               .chooseBus = {}};
    if (!options_.isFast)
        parts.waitUntil = [this](std::int64_t time) { waitUntil(time); };
    if (!busIsChosen_)
        parts.chooseBus = [this](bool onDongle) { choose(onDongle ? Bus::Dongle : Bus::Port); };
    return parts;
}

bool Replay::choose(Bus bus) {
    if (!useBus(bus))
        return false;
    applyWordSettings(program(), {}); // as the port is there with it only
    return !boxes().hasEnded();
}

bool Replay::prepare() {
    const Bus ofJournal = survey_.settings.onDongle ? Bus::Dongle : Bus::Port;
    if (!choose(busIsChosen_ ? *options().outlet.chosenBus() : ofJournal))
        return false;
    line_ = 1;
    player_.begin(survey_.settings);
    player_.differs.subscribe([this](const Difference& difference) { report(difference); });
    return true;
}

std::unique_ptr<WordReport> Replay::makeReport() {
    auto report =
        std::make_unique<ReplayReport>(program(), clock(), output(), options().outputs.json);
    lines_ = report.get();
    return report;
}

std::string Replay::where() const {
    return line_ > 0 ? fmt::format("{}, line {}: ", options_.file, line_) : "";
}

bool Replay::sendPass() {
    // A word that fails is an answer too; its message is shown once.
    boxes().passesMessages = true;
    const FailureBoxes::Run run(program().engine().failures());
    playAll();
    tellCount();
    if (options_.updates && !answers_.empty())
        updateJournal(options_.file, answers_);
    return true;
}

void Replay::playAll() {
    JournalReader reader(options_.file);
    reader.next(); // the settings, which hold since prepare()
    for (auto entry = reader.next(); entry; entry = reader.next()) {
        line_ = entry->line;
        lines_->entry = &*entry;
        player_.play(*entry);
        if (std::holds_alternative<JournalWord>(entry->content))
            program().mainForm().log.logWord(false);
    }
    line_ = 0;
    lines_->entry = nullptr;
    if (survey_.isCutOff)
        warn("The last line of the journal was cut off, and is left out.");
}

void Replay::report(const Difference& difference) {
    if (options_.updates)
        answers_[difference.line] = difference.now;
    if (lines_->isJson())
        lines_->printObject(
            fmt::format(R"("kind":"difference","line":{},"word":{},"sent":{},"then":{},"now":{})",
                        difference.line, difference.word, jsonString(difference.sent),
                        jsonAnswer(difference.then), jsonAnswer(difference.now)));
    else if (player_.differences() == 1)
        tellFirst(difference);
}

void Replay::tellFirst(const Difference& difference) {
    std::string text =
        fmt::format("Line {}, {} {}: {}, and the journal has {}", difference.line,
                    difference.word > 0 ? fmt::format("word {},", difference.word) : "command",
                    difference.sent, shown(difference.now), shown(difference.then));
    if (difference.word > 0 && difference.then && difference.now)
        text += "\n" + AnswerPattern::parse("0x" + *difference.then, difference.bits)
                           .comparison(program().session().WordReceived);
    lines_->printLine(text);
}

void Replay::tellCount() {
    if (lines_->isJson())
        lines_->printObject(fmt::format(R"("kind":"replay","words":{},"differences":{})",
                                        player_.words(), player_.differences()));
    else
        lines_->printLine(
            fmt::format("{} words, {} differences{}", player_.words(), player_.differences(),
                        options_.updates && !answers_.empty() ? ", now in the journal" : ""));
}

/// A journal must not be recorded into the one that is read.
void demandOtherFile(const ReplayOptions& options) {
    std::error_code error;
    if (std::filesystem::equivalent(options.file, options.command.outputs.journal, error))
        throw Failure(Failure::Kind::File, "--journal: this is the journal that is replayed.");
}

} // namespace

CLI::App& addReplayCommand(CLI::App& app, ReplayOptions& options) {
    CLI::App& replay = *app.add_subcommand(
        "replay", "Send a journal again and compare the answers; exit code 3 if they differ");
    replay.add_option("FILE", options.file, "A journal (*.jsonl)")->required();
    replay.add_flag("--fast", options.isFast, "Without the pauses of the journal");
    replay.add_flag("--update", options.updates, "Put the new answers into the journal");
    replay.final_callback(addCommandOptions(
        replay, options.command,
        "Send through the dongle or the parallel port; without it as the journal was recorded"));
    addExamples(replay,
                {"bitlux replay board.jsonl", "bitlux replay board.jsonl --bench zt72516 --fast",
                 "bitlux replay board.jsonl --update"});
    return replay;
}

int runReplayCommand(const ReplayOptions& options, std::ostream& output, std::ostream& errors) {
    demandOtherFile(options);
    const JournalSurvey survey = surveyJournal(options.file);
    ReplayOptions chosen = options;
    OutletOptions& outlet = chosen.command.outlet;
    const bool busIsChosen = outlet.chosenBus().has_value();
    if (!busIsChosen)
        outlet.bus = survey.usesDongle ? "dongle" : "port";
    return Replay(chosen, survey, busIsChosen, output, errors).run();
}

} // namespace bitlux
