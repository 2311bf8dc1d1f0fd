#include "apps/json_text.h"

#include <cstdint>

#include <fmt/format.h>

namespace bitlux {

std::string jsonString(std::string_view text) {
    std::string result = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            (result += '\\') += c;
        else if (static_cast<std::uint8_t>(c) < 0x20)
            result += fmt::format("\\u{:04x}", c);
        else
            result += c;
    }
    return result += '"';
}

} // namespace bitlux
