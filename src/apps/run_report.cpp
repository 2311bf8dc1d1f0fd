#include "apps/run_report.h"

#include "apps/json_text.h"
#include "platform/failure.h"
#include "sending/command_line.h"
#include "sending/word_text.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

constexpr double nanosecondsOfMillisecond = 1e6;

} // namespace

RunReport::RunReport(Program& program, const Clock& clock, std::ostream& output, bool json)
    : program_(program),
      clock_(clock),
      output_(output),
      json_(json),
      start_(clock.nanoseconds()),
      transferred_(program.engine().wordTransferred.follow([this] { word(); })) {
    if (json)
        progress_ = program.mainForm().multiple.progressChanged.follow([this] { progressed(); });
}

void RunReport::word() {
    ++words_;
    const Session& session = program_.session();
    const auto length = static_cast<std::size_t>(session.SPIWordLength);
    const std::string sent = hexText(WordBits(session.WordToSend).first(length));
    const std::string received = hexText(session.WordReceived);
    if (json_)
        fmt::print(output_,
                   R"({{"kind":"word","word":{},{},"sent":"{}","received":"{}","bits":{}}})"
                   "\n",
                   words_, place(command()), sent, received, length);
    else
        fmt::print(output_, "{} {}\n", sent, received);
    if (!output_)
        throw Failure(Failure::Kind::File, "The standard output cannot be written.");
}

void RunReport::progressed() {
    const std::optional<RunProgress>& progress = program_.mainForm().multiple.progress();
    if (!progress) {
        line_.reset();
    } else if (progress->waitUntil) {
        waitBegins(command(), *progress->waitUntil - clock_.nanoseconds());
    } else if (line_ != progress->line) {
        line_ = progress->line;
        lineBegins(command());
    }
}

void RunReport::lineBegins(const std::string& line) {
    if (!isInstruction(line))
        return;
    const CommandTokens tokens = splitCommand(line);
    if (tokens[1] == "Pause")
        fmt::print(output_, "{{\"kind\":\"pause\",{}}}\n", place(line));
    else if (tokens[1] == "Set")
        fmt::print(output_,
                   R"({{"kind":"pin",{},"pin":{},"level":"{}","known":{}}})"
                   "\n",
                   place(line), jsonString(tokens[3]), tokens[2] == "HIGH:" ? "high" : "low",
                   hasPin(tokens[3]));
}

void RunReport::waitBegins(const std::string& line, std::int64_t nanoseconds) {
    fmt::print(output_, "{{\"kind\":\"wait\",{},\"duration_ms\":{}}}\n", place(line),
               nanoseconds / static_cast<std::int64_t>(nanosecondsOfMillisecond));
}

bool RunReport::hasPin(std::string_view name) const {
    const ExtraPinRows& pins = program_.mainForm().extraPins;
    for (const auto& label : pins.lblSetNow)
        if (label->visible() && label->caption() == name)
            return true;
    return false;
}

std::string RunReport::command() const {
    const MainForm& form = program_.mainForm();
    const std::optional<RunProgress>& progress = form.multiple.progress();
    return progress ? form.commands.lstCommandsToSend.line(progress->line) : "";
}

std::string RunReport::place(const std::string& line) const {
    const std::optional<RunProgress>& progress = program_.mainForm().multiple.progress();
    return fmt::format(R"("pass":{},"line":{},"command":{},"ms":{:.3f})", pass_,
                       progress ? progress->line + 1 : 0, jsonString(line), milliseconds());
}

double RunReport::milliseconds() const {
    return static_cast<double>(clock_.nanoseconds() - start_) / nanosecondsOfMillisecond;
}

void RunReport::end(int wholePasses, int exitCode) {
    if (json_)
        fmt::print(output_,
                   R"({{"kind":"summary","passes":{},"words":{},"ms":{:.3f},"exit_code":{}}})"
                   "\n",
                   wholePasses, words_, milliseconds(), exitCode);
}

} // namespace bitlux
