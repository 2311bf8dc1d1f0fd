#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// The note beside the field of the word length.
struct WordLengthNote {
    std::string text; ///< a sentence without a full stop; may be empty
    bool fits = true; ///< the bus can carry words of this length
};

/// What Apply makes of the text in the field, where Apply itself shows no message, and which
/// lengths the bus can carry.
[[nodiscard]] WordLengthNote wordLengthNote(std::string_view typed, bool onDongle);

} // namespace bitlux
