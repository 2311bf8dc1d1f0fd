#include "platform/printable.h"

#include "platform/utf8.h"

#include <algorithm>
#include <cstdint>

namespace bitlux {

namespace {

std::uint8_t byteAt(std::string_view text, std::size_t i) {
    return static_cast<std::uint8_t>(text[i]);
}

/// Bytes of the character at the start of a text that is not empty; 0 where there is none to show.
std::size_t shownLength(std::string_view text) {
    const std::uint8_t lead = byteAt(text, 0);
    const std::size_t length = utf8Length(text.front());
    if (length > text.size() || lead < 0x20 || lead == 0x7F)
        return 0;
    for (std::size_t i = 1; i < length; ++i)
        if ((byteAt(text, i) & 0xC0) != 0x80)
            return 0;
    const std::uint8_t second = length > 1 ? byteAt(text, 1) : 0;
    const bool isControl = lead == 0xC2 && second < 0xA0;
    const bool isNone = (lead == 0xE0 && second < 0xA0) || (lead == 0xED && second >= 0xA0) ||
                        (lead == 0xF0 && second < 0x90) || (lead == 0xF4 && second >= 0x90);
    return isControl || isNone ? 0 : length;
}

} // namespace

std::string printable(std::string_view text, std::size_t most) {
    std::string shown;
    while (!text.empty()) {
        const std::size_t length = shownLength(text);
        const std::size_t taken = std::max<std::size_t>(length, 1);
        if (shown.size() + taken > most)
            return shown + "...";
        shown += length == 0 ? "?" : text.substr(0, length);
        text.remove_prefix(taken);
    }
    return shown;
}

} // namespace bitlux
