#include "platform/documents/problem.h"

#include "platform/printable.h"

#include <fmt/format.h>

namespace bitlux::documents {

std::string describe(const Problem& problem, const std::string& file) {
    constexpr std::size_t longestName = 4096;
    constexpr std::size_t longestText = 400;
    std::string place = printable(file, longestName);
    if (problem.at.line > 0)
        place += fmt::format(":{}:{}", problem.at.line, problem.at.column);
    return fmt::format("{}: {}. {}", place, printable(problem.text, longestText),
                       printable(problem.advice, longestText));
}

} // namespace bitlux::documents
