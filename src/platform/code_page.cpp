#include "platform/code_page.h"

#include "platform/failure.h"
#include "platform/printable.h"
#include "platform/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr unsigned char firstOwn = 0x80; // bytes 80 to 9F have characters from all over
constexpr unsigned char firstLatin = 0xA0;

constexpr std::array<char32_t, 32> ownCharacters{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(),
                       [](char c) { return static_cast<unsigned char>(c) < firstOwn; });
}

/// Adds a character below 10000 hexadecimal.
void appendUtf8(std::string& text, char32_t character) {
    const auto bits = [character](unsigned shift) {
        return static_cast<char>(0x80U | ((character >> shift) & 0x3FU));
    };
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += static_cast<char>(0xC0U | (character >> 6U));
        text += bits(0);
    } else {
        text += static_cast<char>(0xE0U | (character >> 12U));
        text += bits(6);
        text += bits(0);
    }
}

/// Every character of the code page beyond ASCII, in UTF-8, by its byte.
std::array<std::string, 128> encodedCharacters() {
    std::array<std::string, 128> result;
    for (unsigned i = 0; i < result.size(); ++i) {
        const unsigned byte = firstOwn + i;
        appendUtf8(result.at(i), byte < firstLatin ? ownCharacters.at(i) : char32_t{byte});
    }
    return result;
}

} // namespace

std::string toUtf8(std::string_view codePageText) {
    if (isAscii(codePageText))
        return std::string(codePageText);
    std::string text;
    for (const char c : codePageText) {
        const auto byte = static_cast<unsigned char>(c);
        appendUtf8(text, byte < firstOwn || byte >= firstLatin ? char32_t{byte}
                                                               : ownCharacters.at(byte - firstOwn));
    }
    return text;
}

std::string toCodePage(std::string_view utf8Text) {
    if (isAscii(utf8Text))
        return std::string(utf8Text);
    static const std::array<std::string, 128> characters = encodedCharacters();
    std::string text;
    for (std::size_t i = 0; i < utf8Text.size();) {
        const std::size_t length = std::max<std::size_t>(utf8Length(utf8Text[i]), 1);
        const std::string_view character = utf8Text.substr(i, length);
        i += character.size();
        if (static_cast<unsigned char>(character.front()) < firstOwn) {
            text += character;
            continue;
        }
        const auto* const found = std::find(characters.begin(), characters.end(), character);
        if (found == characters.end())
            throw Failure(Failure::Kind::Conversion,
                          fmt::format("the character \"{}\" is not in the code page Windows-1252",
                                      printable(character, 8)));
        text += static_cast<char>(firstOwn + (found - characters.begin()));
    }
    return text;
}

} // namespace bitlux
