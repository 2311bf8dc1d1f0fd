#include "platform/linux/adapter_settings.h"

#include "platform/conversions.h"
#include "platform/documents/document.h"
#include "platform/documents/parser_guard.h"
#include "platform/linux/file_start.h"
#include "platform/linux/user_folder.h"
#include "platform/printable.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

using documents::Node;
using documents::Problems;

/// More than any file written by hand; limits the time for a wrong one.
constexpr std::size_t mostSettingsBytes = 65536;

/// Reads the table of one adapter.
class SectionReading {
public:
    explicit SectionReading(Problems& problems) : problems_(problems) {}

    AdapterWishes read(const Node& section) {
        const Node::Table* const table = section.table();
        if (table == nullptr)
            report(section, "this is no table of an adapter",
                   "Begin it with the serial number in brackets, as [A50285BI].");
        else
            for (const auto& [key, value] : *table)
                take(key, value);
        return std::move(wishes_);
    }

private:
    void take(const std::string& key, const Node& value) {
        if (key == "channel")
            takeChannel(value);
        else if (key == "clock")
            takeClock(value);
        else if (key == "keep_lines")
            takeKeeping(value);
        else if (const std::optional<int> pin = wholeNumber<int>(key))
            takePin(*pin, value);
        else
            report(value, fmt::format("there is no key `{}` here", key),
                   "The keys are pins from 1 to 17, channel, clock and keep_lines.", value.keyAt);
    }

    void takeChannel(const Node& value) {
        const std::string* const text = value.text();
        if (text != nullptr && text->size() == 1 && *text >= "A" && *text <= "D")
            wishes_.channel = text->front() - 'A';
        else
            report(value, "`channel` is no channel of a chip",
                   R"(Write "A" or "B", on an FT4232H also "C" or "D".)");
    }

    void takeClock(const Node& value) {
        const std::int64_t* const number = value.number();
        if (number != nullptr && *number > 0 && *number <= std::numeric_limits<int>::max())
            wishes_.clock = static_cast<int>(*number);
        else
            report(value, "`clock` is no number of bytes a second",
                   "Write it as 500_000, without quotes.");
    }

    void takeKeeping(const Node& value) {
        const bool* const truth = value.truth();
        if (truth != nullptr)
            wishes_.keepsLines = *truth;
        else
            report(value, "`keep_lines` is neither true nor false", "Write true or false.");
    }

    void takePin(int pin, const Node& value) {
        const std::string* const text = value.text();
        const bool isLine = text != nullptr && text->size() == 2 && *text >= "D0" && *text <= "D7";
        AdapterWiring& wiring = wishes_.wiring ? *wishes_.wiring : wishes_.wiring.emplace();
        if (!isLine)
            report(value, fmt::format("pin {} gets no line", pin),
                   R"(Write one from "D0" to "D7".)");
        else if (!wiring.connect(pin, text->back() - '0'))
            report(value, fmt::format("pin {} cannot get the line {}", pin, *text),
                   "The pins with a signal are 1 to 17, and each has a line of its own.");
    }

    void report(const Node& node, std::string text, std::string advice,
                std::optional<documents::Place> at = std::nullopt) {
        problems_.push_back({at.value_or(node.at), std::move(text), std::move(advice)});
    }

    Problems& problems_;
    AdapterWishes wishes_;
};

} // namespace

AdapterSettings::AdapterSettings(const std::vector<std::string>& fileNames) {
    for (const std::string& fileName : fileNames)
        read(fileName);
}

std::vector<std::string> AdapterSettings::files() {
    std::vector<std::string> names{"/etc/bitlux-forge/adapters.conf"};
    if (const std::string folder = userFolder(); !folder.empty())
        names.push_back(folder + "/adapters.conf");
    return names;
}

void AdapterSettings::read(const std::string& fileName) {
    const FileStart file = readFileStart(fileName, mostSettingsBytes);
    if (file.error == ENOENT || file.error == ENOTDIR)
        return;
    Problems problems;
    if (file.error != 0)
        problems.push_back({{},
                            fmt::format("it cannot be read ({})", std::strerror(file.error)),
                            "Check that you may read it."});
    else if (!file.isWhole)
        problems.push_back({{}, "it is longer than 64 KiB", "Shorten it."});
    else if (std::optional<documents::Problem> problem = documents::unbearable(file.bytes))
        problems.push_back(*std::move(problem));
    std::optional<Node> document;
    if (problems.empty())
        document = documents::parseDocument(file.bytes, problems);
    if (!problems.empty()) {
        unread_ = describe(problems.front(), fileName);
        problems_.push_back(unread_);
        return;
    }
    for (const Node::Entry& entry : *document->table()) {
        std::erase_if(sections_, [&](const Section& any) { return any.name == entry.key; });
        Section& made = sections_.emplace_back();
        made.name = entry.key;
        made.wishes = SectionReading(problems).read(entry.value);
        if (!problems.empty())
            made.wishes.problem = describe(problems.front(), fileName);
        for (const documents::Problem& problem : std::exchange(problems, {}))
            problems_.push_back(describe(problem, fileName));
    }
}

AdapterWishes AdapterSettings::of(std::string_view name) const {
    const auto found = std::find_if(sections_.begin(), sections_.end(),
                                    [=](const Section& any) { return any.name == name; });
    AdapterWishes wishes = found == sections_.end() ? AdapterWishes() : found->wishes;
    if (!unread_.empty())
        wishes.problem = unread_;
    return wishes;
}

} // namespace bitlux
