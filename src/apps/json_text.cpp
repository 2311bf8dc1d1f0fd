#include "apps/json_text.h"

#include <cstdint>

#include <fmt/format.h>

namespace bitlux {

std::string jsonString(std::string_view text) {
    std::string result = "\"";
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<std::uint8_t>(c);
        // The control characters after ASCII are two bytes; terminals interpret them too.
        const auto next = static_cast<std::uint8_t>(i + 1 < text.size() ? text[i + 1] : 0);
        if (c == '"' || c == '\\') {
            (result += '\\') += c;
        } else if (byte < 0x20 || byte == 0x7F) {
            result += fmt::format("\\u{:04x}", byte);
        } else if (byte == 0xC2 && next >= 0x80 && next < 0xA0) {
            result += fmt::format("\\u{:04x}", next);
            ++i;
        } else {
            result += c;
        }
    }
    return result += '"';
}

} // namespace bitlux
