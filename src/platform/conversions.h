#pragma once

#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace bitlux {

/// The number at the beginning of a text, skipping blanks; 0 when there is none. "12.5 V" is 12.5,
/// " 1 6" is 16, "1e3" and "1d3" are 1000, "&HFF" is 255, "abc" is 0. A number beyond the range of
/// a double raises Failure (Overflow).
double val(std::string_view text);

/// The number that the whole text is, such as "12.5" or "1e3". A text that is no number, also one
/// with blanks, raises Failure (Conversion), one beyond the range of a double Failure (Overflow).
double toNumber(std::string_view text);

/// The number that the whole text is, in digits of this base, with a minus sign at most; nothing
/// for any other text and for a number that does not fit.
template <typename Number>
std::optional<Number> wholeNumber(std::string_view text, int base = 10) {
    Number number = 0;
    const char* const end = text.data() + text.size();
    std::from_chars_result result{};
    if constexpr (std::is_floating_point_v<Number>)
        result = std::from_chars(text.data(), end, number);
    else
        result = std::from_chars(text.data(), end, number, base);
    return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

/// Round to the nearest integer, ties to even; raise Failure (Overflow) beyond the range.
std::int16_t toInt16(double value);
std::int32_t toInt32(double value);

/// Upper-case hexadecimal without leading zeros; "0" for 0.
std::string hex(std::uint64_t value);

/// The value of a hexadecimal digit of either case, -1 for any other character.
constexpr int hexDigit(char c) noexcept {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

} // namespace bitlux
