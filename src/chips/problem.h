#pragma once

#include <string>
#include <vector>

namespace bitlux::chips {

/// A place in a chip's file, counted from 1; 0 where there is none.
struct Place {
    int line = 0;
    int column = 0;
};

/// Something that is wrong with a chip's file.
struct Problem {
    Place at;
    std::string text;   ///< what is wrong
    std::string advice; ///< what to do about it
};

using Problems = std::vector<Problem>;

/// As "lamp.toml:12:5: bit 14 lies outside the register. Give it at least 15 bits." What a file may
/// have brought into it can be shown on a terminal.
std::string describe(const Problem& problem, const std::string& file);

} // namespace bitlux::chips
