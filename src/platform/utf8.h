#pragma once

#include <cstddef>
#include <cstdint>

namespace bitlux {

/// Bytes of a UTF-8 character that begins with this one; 0 for a byte that begins none.
constexpr std::size_t utf8Length(char first) noexcept {
    const auto lead = static_cast<std::uint8_t>(first);
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

} // namespace bitlux
