#include "panels/common/hex_value.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <string>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t longestShown = 40;
constexpr int mostBits = 64;

} // namespace

std::uint64_t hexValue(std::string_view text, int bits) {
    std::uint64_t value = 0;
    for (const char character : text) {
        if (character == ' ')
            continue;
        const int digit = hexDigit(character);
        if (digit < 0)
            throw Failure(Failure::Kind::Conversion,
                          fmt::format("The value \"{}\" is no hexadecimal number",
                                      printable(text, longestShown)));
        const bool full = value >> (mostBits - bitsOfDigit) != 0;
        value = value << bitsOfDigit | static_cast<unsigned>(digit);
        if (full || (bits < mostBits && value >> bits != 0))
            throw Failure(Failure::Kind::Overflow,
                          fmt::format("The value \"{}\" is more than {} bits",
                                      printable(text, longestShown), bits));
    }
    return value;
}

} // namespace bitlux
