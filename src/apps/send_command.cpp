#include "apps/send_command.h"

#include "apps/examples.h"
#include "apps/json_text.h"
#include "apps/opened_file.h"
#include "apps/word_source.h"
#include "platform/failure.h"
#include "sending/answer_pattern.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace bitlux {

namespace {

/// In JSON each word says what was expected, and whether it came. Lines for people are printed when
/// a word is not sent again.
class SendReport : public WordReport {
public:
    using WordReport::WordReport;

    void printLast() {
        if (!isJson())
            WordReport::printWord();
    }

    const AnswerPattern* expected = nullptr; ///< of the present word

private:
    void printWord() override {
        if (isJson())
            WordReport::printWord();
    }
    [[nodiscard]] std::string moreOfWord() const override {
        if (expected == nullptr)
            return {};
        return fmt::format(R"(,"expected":{},"matches":{})", jsonString(expected->text()),
                           expected->matches(program().session().WordReceived));
    }
};

class SendRun : public CommandRun {
public:
    SendRun(const SendOptions& options, std::ostream& output, std::ostream& errors)
        : CommandRun(options.command, output, errors), options_(options) {}

private:
    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override;
    [[nodiscard]] int verdict() const override { return verdict_; }
    [[nodiscard]] std::string where() const override;

    void checkGivenWords();
    void readPatterns();
    [[nodiscard]] const AnswerPattern* patternOf(std::size_t word) const;
    [[nodiscard]] std::string digitsOf(const std::string& word);
    bool send(const std::string& word);
    bool sendOnce(const std::string& word);
    void tellMismatch(const AnswerPattern& expected);

    const SendOptions& options_;
    std::vector<AnswerPattern> patterns_;
    std::optional<WordSource::Word> word_; ///< the present one
    std::size_t index_ = 0;                ///< of it, from 0
    SendReport* lines_ = nullptr;
    int verdict_ = 0;
};

bool SendRun::prepare() {
    if (!applySettings(options_.shape))
        return false;
    checkGivenWords();
    readPatterns();
    return true;
}

std::unique_ptr<WordReport> SendRun::makeReport() {
    auto report =
        std::make_unique<SendReport>(program(), clock(), output(), options().outputs.json);
    lines_ = report.get();
    return report;
}

void SendRun::readPatterns() {
    for (const std::string& text : options_.expect.patterns)
        try {
            patterns_.push_back(AnswerPattern::parse(text, program().session().SPIWordLength));
        } catch (const Failure& failure) {
            throw WrongUse(std::string("--expect: ") + failure.what());
        }
}

const AnswerPattern* SendRun::patternOf(std::size_t word) const {
    if (patterns_.empty())
        return nullptr;
    return patterns_.size() == 1 ? &patterns_.front() : &patterns_.at(word);
}

/// Finds problems with the words of the command line before the first is sent.
void SendRun::checkGivenWords() {
    std::uint64_t number = 0;
    for (const std::string& text : options_.words) {
        ++number;
        if (text == standardInputWords)
            continue;
        try {
            static_cast<void>(digitsOf(text));
        } catch (const Failure& failure) {
            throw WrongUse(WordSource::name(number, text) + ": " + failure.what());
        }
    }
}

std::string SendRun::digitsOf(const std::string& word) {
    return fittingDigits(word, static_cast<std::size_t>(program().session().SPIWordLength));
}

std::string SendRun::where() const {
    return word_ ? word_->place + ": " : "";
}

bool SendRun::sendPass() {
    WordSource words(options_.words, input());
    index_ = 0;
    for (word_ = words.next(); word_; word_ = words.next(), ++index_)
        if (!send(digitsOf(word_->text)))
            return false;
    return true;
}

bool SendRun::send(const std::string& word) {
    const AnswerPattern* expected = patternOf(index_);
    lines_->expected = expected;
    Retries retries(options_.expect, clock().nanoseconds());
    bool isGood = false;
    do {
        if (!sendOnce(word))
            return false;
        isGood = expected == nullptr || expected->matches(program().session().WordReceived);
    } while (!isGood && retries.mayAskAgain(clock().nanoseconds()));
    lines_->printLast();
    if (!isGood)
        tellMismatch(*expected);
    return true;
}

void SendRun::tellMismatch(const AnswerPattern& expected) {
    verdict_ = differsError;
    const std::vector<std::int16_t>& answer = program().session().WordReceived;
    warn(fmt::format("{}{} is not {}\n{}", where(), hexText(answer), expected.text(),
                     expected.comparison(answer)));
}

bool SendRun::sendOnce(const std::string& word) {
    SingleWordPage& page = program().mainForm().singleWord;
    page.txtHexWordToSend.setText(word);
    page.DoSPISingle();
    return !boxes().hasEnded();
}

void checkPatterns(const SendOptions& options) {
    const std::size_t count = options.expect.patterns.size();
    const bool hasInput = std::find(options.words.begin(), options.words.end(),
                                    standardInputWords) != options.words.end();
    if (count > 1 && (hasInput || count != options.words.size()))
        throw CLI::ValidationError(
            "--expect",
            fmt::format("takes one pattern for all words, or one a word: there are {} "
                        "patterns and {} words",
                        count, hasInput ? "unknown" : std::to_string(options.words.size())));
}

void checkWords(const SendOptions& options) {
    std::uint64_t number = 0;
    for (const std::string& text : options.words) {
        ++number;
        if (text == standardInputWords && options.command.times > 1)
            throw CLI::ValidationError("--repeat", "the standard input can be read once only");
        if (text != standardInputWords && !wordDigits(text))
            throw CLI::ValidationError(WordSource::name(number, text),
                                       "This is no hexadecimal number.");
    }
}

} // namespace

CLI::App& addSendCommand(CLI::App& app, SendOptions& options) {
    CLI::App& send = *app.add_subcommand("send", "Send words and print the answers");
    addWordOptions(send, options.shape);
    send.add_option("--repeat", options.command.times, "Send all words so many times")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description("NUMBER"))
        ->capture_default_str();
    addExpectOptions(send, options.expect);
    const std::function<void()> check = addCommandOptions(
        send, options.command,
        "Send through the dongle or the parallel port; without it through the dongle when there is "
        "one, on the virtual bench through the port");
    send.add_option(
            "WORD", options.words,
            "Hexadecimal words, as A5C3, 0xA5C3 or A5_C3; - for those of the standard input")
        ->required();
    send.final_callback([&options, check] {
        check();
        OutletOptions& outlet = options.command.outlet;
        if (outlet.chosenBus() == Bus::Port)
            outlet.bus = "port";
        checkWords(options);
        checkPatterns(options);
    });
    addExamples(send, {"bitlux send --bits 16 A5C3 0FF0",
                       "bitlux send --bench loopback --bits 16 --type 3 --trace - A5C3"});
    return send;
}

int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors) {
    return SendRun(options, output, errors).run();
}

} // namespace bitlux
