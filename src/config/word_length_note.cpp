#include "config/word_length_note.h"

#include "platform/conversions.h"
#include "platform/failure.h"

#include <optional>

#include <fmt/format.h>

namespace bitlux {

namespace {

struct Length {
    double wanted;
    int bits; ///< that it becomes
};

/// Nothing for a number that no length can be.
std::optional<Length> lengthOf(std::string_view typed) {
    try {
        const double wanted = val(typed);
        if (const int bits = toInt16(wanted); bits >= 0)
            return Length{wanted, bits};
    } catch (const Failure&) { // Apply raises it too
    }
    return {};
}

bool takesLength(const Length& length, bool onDongle) {
    constexpr int longestOnDongle = 40;
    constexpr int longestOnPort = 160;
    if (length.bits < 1 || length.wanted > (onDongle ? longestOnDongle : longestOnPort))
        return false;
    return !onDongle || length.bits % 8 == 0;
}

} // namespace

WordLengthNote wordLengthNote(std::string_view typed, bool onDongle) {
    const std::optional<Length> length = lengthOf(typed);
    const bool fits = length && takesLength(*length, onDongle);
    std::string text;
    if (length && fmt::format("{}", length->bits) != typed)
        text = fmt::format("Will be {} bits", length->bits);
    if (onDongle || !fits)
        text += fmt::format("{} {} takes {}", text.empty() ? "The" : "; the",
                            onDongle ? "dongle" : "port",
                            onDongle ? "8, 16, 24, 32 and 40" : "1 to 160");
    return {text, fits};
}

} // namespace bitlux
