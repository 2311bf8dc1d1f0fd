#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// The bits of a hexadecimal text, four for each digit, preceded by a blank: "A5" is " 1010 0101".
/// Characters that are not digits are skipped.
std::string HEXtoBIN(std::string_view digits);

} // namespace bitlux
