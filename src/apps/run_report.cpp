#include "apps/run_report.h"

#include "apps/json_text.h"
#include "platform/printable.h"
#include "sending/command_line.h"

#include <fmt/format.h>

namespace bitlux {

RunReport::RunReport(Program& program, const Clock& clock, std::ostream& output, bool json)
    : WordReport(program, clock, output, json) {
    if (json)
        progress_ = program.mainForm().multiple.progressChanged.follow([this] { progressed(); });
}

void RunReport::progressed() {
    if (!progress()) {
        line_.reset();
    } else if (progress()->waitUntil) {
        waitBegins(command(), *progress()->waitUntil - clock().nanoseconds());
    } else if (line_ != progress()->line) {
        line_ = progress()->line;
        lineBegins(command());
    }
}

void RunReport::lineBegins(const std::string& line) {
    if (!isInstruction(line))
        return;
    const CommandTokens tokens = splitCommand(line);
    if (tokens[1] == "Pause")
        printObject(fmt::format(R"("kind":"pause",{})", place(line)));
    else if (tokens[1] == "Set")
        printObject(fmt::format(R"("kind":"pin",{},"pin":{},"level":"{}","known":{})", place(line),
                                jsonString(tokens[3]), tokens[2] == "HIGH:" ? "high" : "low",
                                program().mainForm().extraPins.has(tokens[3])));
}

void RunReport::waitBegins(const std::string& line, std::int64_t nanoseconds) {
    constexpr std::int64_t nanosecondsOfMillisecond = 1'000'000;
    printObject(fmt::format(R"("kind":"wait",{},"duration_ms":{})", place(line),
                            nanoseconds / nanosecondsOfMillisecond));
}

const std::optional<RunProgress>& RunReport::progress() const {
    return program().mainForm().multiple.progress();
}

std::string RunReport::command() const {
    return progress() ? program().mainForm().commands.lstCommandsToSend.line(progress()->line) : "";
}

std::string RunReport::lineText() const {
    constexpr std::size_t most = 80;
    return progress()
               ? fmt::format("line {}, \"{}\"", progress()->line + 1, printable(command(), most))
               : "";
}

bool RunReport::isAtPin() const {
    const std::string line = command();
    return isInstruction(line) && splitCommand(line)[1] == "Set";
}

std::string RunReport::place() const {
    return place(command());
}

std::string RunReport::place(const std::string& line) const {
    return fmt::format(R"("pass":{},"line":{},"command":{},"ms":{:.3f})", pass(),
                       progress() ? progress()->line + 1 : 0, jsonString(line), milliseconds());
}

} // namespace bitlux
