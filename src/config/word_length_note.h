#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// What is told beside the field of the word length.
struct WordLengthNote {
    std::string text; ///< a sentence without a full stop; empty when there is nothing to tell
    bool fits = true; ///< the bus can take words of this length
};

/// What Apply makes of the text in the field, where it does not say so itself, and which lengths
/// the bus takes.
[[nodiscard]] WordLengthNote wordLengthNote(std::string_view typed, bool onDongle);

} // namespace bitlux
