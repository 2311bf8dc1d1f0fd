#include "apps/send_command.h"

#include "apps/examples.h"
#include "apps/opened_file.h"
#include "apps/word_source.h"
#include "platform/failure.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace bitlux {

namespace {

class SendRun : public CommandRun {
public:
    SendRun(const SendOptions& options, std::ostream& output, std::ostream& errors)
        : CommandRun(options.command, output, errors), options_(options) {}

private:
    bool prepare() override;
    bool sendPass() override;
    std::unique_ptr<WordReport> makeReport() override {
        return std::make_unique<WordReport>(program(), clock(), output(), options().outputs.json);
    }
    [[nodiscard]] std::string where() const override;

    bool chooseSettings();
    void checkGivenWords();
    [[nodiscard]] std::string digitsOf(const std::string& word);
    bool send(const std::string& word);

    const SendOptions& options_;
    std::optional<WordSource::Word> word_; ///< the present one
};

bool SendRun::prepare() {
    if (!chooseSettings())
        return false;
    applyWordSettings(program(), options_.shape.settings);
    if (boxes().hasEnded())
        return false;
    checkGivenWords();
    return true;
}

bool SendRun::chooseSettings() {
    const std::optional<Bus> bus = options_.command.outlet.chosenBus();
    if (options_.shape.config.empty())
        return chooseBus(program(), bus);
    if (bus != Bus::Dongle)
        return openFile(options_.shape.config);
    openConfiguration(program(), options_.shape.config);
    return !boxes().hasEnded() && chooseBus(program(), bus);
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
    for (word_ = words.next(); word_; word_ = words.next())
        if (!send(digitsOf(word_->text)))
            return false;
    return true;
}

bool SendRun::send(const std::string& word) {
    SingleWordPage& page = program().mainForm().singleWord;
    page.txtHexWordToSend.setText(word);
    page.DoSPISingle();
    return !boxes().hasEnded();
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
    });
    addExamples(send, {"bitlux send --bits 16 A5C3 0FF0",
                       "bitlux send --bench loopback --bits 16 --type 3 --trace - A5C3"});
    return send;
}

int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors) {
    return SendRun(options, output, errors).run();
}

} // namespace bitlux
