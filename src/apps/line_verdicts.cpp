#include "apps/line_verdicts.h"

#include "platform/printable.h"
#include "platform/text_file.h"
#include "sending/command_line.h"
#include "sending/word_text.h"

#include <algorithm>
#include <sstream>

#include <fmt/format.h>
#include <pugixml.hpp>

namespace bitlux {

namespace {

constexpr double nanosecondsOfSecond = 1e9;
constexpr std::size_t longestVerdictName = 200;

std::string seconds(std::int64_t nanoseconds) {
    return fmt::format("{:.6f}", static_cast<double>(nanoseconds) / nanosecondsOfSecond);
}

std::string nameOf(const LineVerdicts::Case& any) {
    return fmt::format("line {}: {}", any.line + 1, printable(any.command, longestVerdictName));
}

void addCase(pugi::xml_node suite, const LineVerdicts::Case& any, const std::string& suiteName) {
    pugi::xml_node node = suite.append_child("testcase");
    node.append_attribute("classname")
        .set_value(fmt::format("{}.pass {}", suiteName, any.pass).c_str());
    node.append_attribute("name").set_value(nameOf(any).c_str());
    node.append_attribute("time").set_value(seconds(any.end - any.begin).c_str());
    if (any.mismatch.empty())
        return;
    pugi::xml_node failure = node.append_child("failure");
    failure.append_attribute("message").set_value(
        any.mismatch.substr(0, any.mismatch.find('\n')).c_str());
    failure.text().set(any.mismatch.c_str());
}

} // namespace

LineVerdicts::LineVerdicts(Program& program, const Clock& clock, const ExpectedLines& expected)
    : program_(program),
      clock_(clock),
      expected_(expected),
      subscriptions_{program.mainForm().multiple.progressChanged.follow([this] { progressed(); }),
                     program.engine().wordTransferred.follow([this] { word(); })} {}

void LineVerdicts::progressed() {
    const std::optional<RunProgress>& now = program_.mainForm().multiple.progress();
    if (!now)
        return finish();
    if (isOpen_ && cases_.back().line == now->line && cases_.back().pass == pass_)
        return;
    finish();
    isOpen_ = true;
    cases_.push_back({.pass = pass_,
                      .line = now->line,
                      .command = program_.mainForm().commands.lstCommandsToSend.line(now->line),
                      .begin = clock_.nanoseconds(),
                      .mismatch = {}});
}

void LineVerdicts::finish() {
    if (isOpen_)
        cases_.back().end = clock_.nanoseconds();
    isOpen_ = false;
}

void LineVerdicts::word() {
    if (!isOpen_ || isInstruction(cases_.back().command))
        return; // a pin of the dongle goes with a word that nobody asked for
    Case& present = cases_.back();
    const AnswerPattern* pattern = expected_.patternOf(present.line, present.command);
    if (pattern == nullptr)
        return;
    const std::vector<std::int16_t>& answer = program_.session().WordReceived;
    if (pattern->matches(answer))
        return;
    present.mismatch = fmt::format("{} is not {}\n{}", hexText(answer), pattern->text(),
                                   pattern->comparison(answer));
    if (mismatched)
        mismatched(fmt::format("line {}, \"{}\"", present.line + 1,
                               printable(present.command, longestVerdictName)),
                   present.mismatch);
}

bool LineVerdicts::areGood() const {
    return std::all_of(cases_.begin(), cases_.end(),
                       [](const Case& any) { return any.mismatch.empty(); });
}

void LineVerdicts::saveJUnit(const std::string& fileName, const std::string& suiteName) const {
    pugi::xml_document document;
    pugi::xml_node suite = document.append_child("testsuites").append_child("testsuite");
    const auto failures = std::count_if(cases_.begin(), cases_.end(),
                                        [](const Case& any) { return !any.mismatch.empty(); });
    suite.append_attribute("name").set_value(printable(suiteName, longestVerdictName).c_str());
    suite.append_attribute("tests").set_value(cases_.size());
    suite.append_attribute("failures").set_value(failures);
    const std::int64_t duration = cases_.empty() ? 0 : cases_.back().end - cases_.front().begin;
    suite.append_attribute("time").set_value(seconds(duration).c_str());
    for (const Case& any : cases_)
        addCase(suite, any, printable(suiteName, longestVerdictName));
    std::ostringstream text;
    document.save(text, "  ");
    replaceFile(fileName, text.str());
}

} // namespace bitlux
