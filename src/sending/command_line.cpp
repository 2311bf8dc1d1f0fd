#include "sending/command_line.h"

#include "platform/conversions.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

CommandTokens splitCommand(std::string_view line) {
    CommandTokens tokens;
    for (std::size_t i = 0; i + 1 < tokens.size(); ++i) {
        const std::size_t blank = line.find(' ');
        tokens.at(i) = line.substr(0, blank);
        if (blank == std::string_view::npos)
            return tokens;
        line.remove_prefix(blank + 1);
    }
    tokens.back() = line;
    return tokens;
}

bool isInstruction(std::string_view line) {
    return line == "*" || line.starts_with("* ");
}

std::string waitLine(std::string_view number, std::string_view unit) {
    return fmt::format("* Wait {} {}", number, unit);
}

std::optional<std::int32_t> millisecondsOf(std::string_view unit) {
    constexpr std::array<std::pair<std::string_view, std::int32_t>, 5> units{
        {{"ms", 1}, {"s", 1000}, {"min", 60'000}, {"hrs", 3'600'000}, {"days", 86'400'000}}};
    const auto* found = std::find_if(units.begin(), units.end(),
                                     [unit](const auto& row) { return row.first == unit; });
    return found == units.end() ? std::nullopt : std::optional(found->second);
}

std::int32_t waitMilliseconds(std::string_view number, std::int32_t factor) {
    return toInt32(toNumber(number) * factor);
}

} // namespace bitlux
