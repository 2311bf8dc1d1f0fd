#include "panels/common/binary_text.h"

#include "platform/conversions.h"

#include <fmt/format.h>

namespace bitlux {

std::string HEXtoBIN(std::string_view digits) {
    std::string bits;
    for (const char digit : digits)
        if (const int value = hexDigit(digit); value >= 0)
            bits += fmt::format(" {:04b}", value);
    return bits;
}

} // namespace bitlux
