#include "apps/word_report.h"

#include "apps/output_failure.h"
#include "sending/word_text.h"

#include <cerrno>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr double nanosecondsOfMillisecond = 1e6;

} // namespace

WordReport::WordReport(Program& program, const Clock& clock, std::ostream& output, bool json)
    : program_(program), clock_(clock), output_(output), json_(json), start_(clock.nanoseconds()) {
    const auto over = [this] { sendingSince_ = never; };
    WordEngine& engine = program.engine();
    subscriptions_ = {engine.wordStarting.follow([this] { sendingSince_ = clock_.nanoseconds(); }),
                      engine.wordTransferred.follow([this] { word(); }),
                      engine.sendFailed.follow(over), program.dongle().failed.follow(over)};
}

void WordReport::word() {
    sendingSince_ = never;
    ++words_;
    printWord();
}

void WordReport::printWord() {
    const Session& session = program_.session();
    const auto length = static_cast<std::size_t>(session.SPIWordLength);
    const std::string sent = hexText(WordBits(session.WordToSend).first(length));
    const std::string received = hexText(session.WordReceived);
    if (json_)
        printObject(
            fmt::format(R"("kind":"word","word":{},{},"sent":"{}","received":"{}","bits":{}{})",
                        words_, place(), sent, received, length, moreOfWord()));
    else
        printLine(fmt::format("{} {}", sent, received));
}

/// A reader of the lines gets each at once.
void WordReport::printLine(const std::string& line) {
    if (printing)
        printing();
    errno = 0;
    output_ << line << '\n';
    if (output_.flush())
        return;
    failOutput();
}

void WordReport::printObject(const std::string& members) {
    printLine(fmt::format("{{{}}}", members));
}

std::int64_t WordReport::sendingFor() const {
    return isSending() ? clock_.nanoseconds() - sendingSince_ : 0;
}

std::string WordReport::place() const {
    return fmt::format(R"("pass":{},"ms":{:.3f})", pass_, milliseconds());
}

double WordReport::milliseconds() const {
    return static_cast<double>(clock_.nanoseconds() - start_) / nanosecondsOfMillisecond;
}

void WordReport::end(int exitCode) {
    if (json_)
        printObject(
            fmt::format(R"("kind":"summary","passes":{},"words":{},"ms":{:.3f},"exit_code":{})",
                        wholePasses_, words_, milliseconds(), exitCode));
}

} // namespace bitlux
