#pragma once

#include <string>
#include <string_view>

namespace bitlux {

/// The bits of a hexadecimal text, four for each digit with a blank in front: "A5" is
/// " 1010 0101". Characters that are no digits are left out.
std::string HEXtoBIN(std::string_view digits);

} // namespace bitlux
