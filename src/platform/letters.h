#pragma once

#include <algorithm>
#include <string_view>

namespace bitlux {

/// The small letter for a capital one of ASCII; any other character as it is.
constexpr char smallLetter(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// Whether two texts are equal but for the case of ASCII letters.
constexpr bool equalIgnoringCase(std::string_view a, std::string_view b) noexcept {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return smallLetter(x) == smallLetter(y); });
}

} // namespace bitlux
