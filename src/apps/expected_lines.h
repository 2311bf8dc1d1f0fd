#pragma once

#include "sending/answer_pattern.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace bitlux {

/// What the answers of a run have to be, from a TOML file:
///
///     [quick_commands]
///     "read id" = "5AXX"    # each time this Quick Command is sent
///     [lines]
///     3 = "0b1X0X"          # the third line of the Batch, or of the Commands To Send
class ExpectedLines {
public:
    ExpectedLines() = default;
    /// Reads the file for words of so many bits. Raises Failure (File) that lists all that is
    /// wrong, with line and column.
    static ExpectedLines read(const std::string& fileName, int bits);

    [[nodiscard]] bool empty() const { return byName_.empty() && byLine_.empty(); }
    /// Of a line, counted from 0; its number goes before its name. Null when nothing is expected.
    [[nodiscard]] const AnswerPattern* patternOf(std::size_t line,
                                                 const std::string& command) const;
    /// Raises Failure (File), with similar names, when a name or a number is none of these lines.
    void demandIn(const std::vector<std::string>& lines) const;

private:
    std::string fileName_;
    std::map<std::string, AnswerPattern> byName_;
    std::map<std::size_t, AnswerPattern> byLine_;
};

} // namespace bitlux
