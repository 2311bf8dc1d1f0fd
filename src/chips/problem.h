#pragma once

#include <string>
#include <vector>

namespace bitlux::chips {

/// A position in a chip's file, counted from 1; 0 where there is none.
struct Place {
    int line = 0;
    int column = 0;
};

/// A problem of a chip's file.
struct Problem {
    Place at;
    std::string text;   ///< what is wrong
    std::string advice; ///< how to correct it
};

using Problems = std::vector<Problem>;

/// As "lamp.toml:12:5:bit 14 lies outside the register. Give it at least 15 bits." Text from the
/// file is made safe for a terminal.
std::string describe(const Problem& problem, const std::string& file);

} // namespace bitlux::chips
