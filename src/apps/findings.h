#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// One line of the doctor's output.
struct Finding {
    enum class Rank : std::uint8_t { Good, Note, Wrong };

    Rank rank = Rank::Good;
    std::string subject;
    std::string text;
    std::string fix = {};  ///< a command line, or what to do by hand; may be empty
    bool isUsable = false; ///< words can be sent over it now
};

using Findings = std::vector<Finding>;

} // namespace bitlux
