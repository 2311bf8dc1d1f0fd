#include "apps/expected_lines.h"

#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "chips/document.h"
#include "chips/table_reader.h"
#include "platform/documents/parser_guard.h"
#include "platform/failure.h"
#include "platform/printable.h"
#include "registers/names.h"

#include <charconv>
#include <optional>
#include <set>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

using chips::Node;
using chips::Problems;

std::optional<std::size_t> lineNumber(const std::string& key) {
    std::size_t number = 0;
    const char* end = key.data() + key.size();
    const auto [stop, error] = std::from_chars(key.data(), end, number);
    return error == std::errc{} && stop == end && number > 0 ? std::optional(number) : std::nullopt;
}

/// Calls `use` with each key and its pattern.
template <typename Use>
void readPatterns(const Node& section, int bits, Problems& problems, Use use) {
    const Node::Table* table = section.table();
    if (table == nullptr)
        return;
    chips::TableReader reader(section, problems);
    for (const Node::Entry& entry : *table)
        try {
            const std::string text = reader.required(entry.key);
            if (!text.empty())
                use(entry, AnswerPattern::parse(text, bits));
        } catch (const Failure& failure) {
            problems.push_back({entry.value.at, failure.what(), "Correct the pattern."});
        }
}

} // namespace

ExpectedLines ExpectedLines::read(const std::string& fileName, int bits) {
    ExpectedLines result;
    result.fileName_ = fileName;
    chips::ChipText file = chips::readChipText(fileName);
    Problems problems = std::move(file.problems);
    if (std::optional<chips::Problem> problem = documents::unbearable(file.text); problem)
        problems.push_back(*std::move(problem));
    const std::optional<Node> document =
        problems.empty() ? chips::parseDocument(file.text, problems) : std::nullopt;
    if (document) {
        chips::TableReader reader(*document, problems);
        readPatterns(reader.section("quick_commands"), bits, problems,
                     [&result](const Node::Entry& entry, AnswerPattern pattern) {
                         result.byName_.emplace(entry.key, std::move(pattern));
                     });
        readPatterns(reader.section("lines"), bits, problems,
                     [&](const Node::Entry& entry, AnswerPattern pattern) {
                         if (const std::optional<std::size_t> line = lineNumber(entry.key))
                             result.byLine_.emplace(*line - 1, std::move(pattern));
                         else
                             problems.push_back({entry.value.keyAt, "this is no number of a line",
                                                 "Lines are counted from 1."});
                     });
    }
    if (!problems.empty())
        throw Failure(Failure::Kind::File, chips::describe(problems, fileName));
    return result;
}

const AnswerPattern* ExpectedLines::patternOf(std::size_t line, const std::string& command) const {
    if (const auto found = byLine_.find(line); found != byLine_.end())
        return &found->second;
    const auto found = byName_.find(command);
    return found == byName_.end() ? nullptr : &found->second;
}

void ExpectedLines::demandIn(const std::vector<std::string>& lines) const {
    constexpr std::size_t longestName = 4096;
    const auto fail = [this](const std::string& text) {
        throw Failure(Failure::Kind::File,
                      fmt::format("{}: {}", printable(fileName_, longestName), text));
    };
    const std::set<std::string> distinct(lines.begin(), lines.end());
    for (const auto& [name, pattern] : byName_)
        if (!distinct.contains(name))
            fail(unknownName("Quick Command among the lines", name,
                             {distinct.begin(), distinct.end()})
                     .what());
    for (const auto& [line, pattern] : byLine_)
        if (line >= lines.size())
            fail(fmt::format("there is no line {}, the last one is {}", line + 1, lines.size()));
}

} // namespace bitlux
