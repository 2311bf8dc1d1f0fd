#pragma once

#include <cstdint>
#include <string_view>

namespace bitlux {

inline constexpr int bitsOfDigit = 4; ///< hexadecimal

/// The number of a hexadecimal value of a sequence; blanks are ignored, and no digits mean 0.
/// Raises Failure (Conversion) for any other character and (Overflow) for more than `bits` bits, 1
/// to 64.
std::uint64_t hexValue(std::string_view text, int bits);

} // namespace bitlux
