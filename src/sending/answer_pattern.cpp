#include "sending/answer_pattern.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>
#include <cstddef>
#include <optional>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int bitsOfDigit = 4;
constexpr int bitsOfGroup = 8;
constexpr std::size_t longestText = 200;

std::string shown(std::string_view text) {
    return printable(text, longestText);
}

Failure noPattern(std::string_view text) {
    return {Failure::Kind::Conversion,
            fmt::format("\"{}\" is no pattern: write 5AXX, 0b1X0X or 5A/F0", shown(text))};
}

Failure wrongLength(std::string_view text, std::size_t has, int bits) {
    return {Failure::Kind::OutOfRange,
            fmt::format("The pattern \"{}\" is for {} bits, and the word has {}", shown(text), has,
                        bits)};
}

std::optional<int> digitOf(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    constexpr int ten = 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + ten;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + ten;
    return std::nullopt;
}

bool isAny(char c) {
    return c == 'X' || c == 'x';
}

/// Digits without underscores between them, the last one first; nothing for an empty text.
std::optional<std::string> digitsFromTheEnd(std::string_view text) {
    if (text.empty() || text.front() == '_' || text.back() == '_')
        return std::nullopt;
    std::string digits(text.rbegin(), text.rend());
    std::erase(digits, '_');
    return digits;
}

using Elements = std::vector<std::int16_t>;

/// Elements of four for each digit; `any` for X where that is allowed.
std::optional<Elements> hexElements(std::string_view text, std::optional<std::int16_t> any) {
    const std::optional<std::string> digits = digitsFromTheEnd(text);
    if (!digits)
        return std::nullopt;
    Elements elements;
    for (const char c : *digits) {
        const std::optional<int> digit = digitOf(c);
        if (!digit && !(any && isAny(c)))
            return std::nullopt;
        for (int bit = 0; bit < bitsOfDigit; ++bit)
            elements.push_back(digit ? static_cast<std::int16_t>(*digit >> bit & 1) : *any);
    }
    return elements;
}

std::optional<Elements> binaryElements(std::string_view text, std::int16_t any) {
    const std::optional<std::string> digits = digitsFromTheEnd(text);
    if (!digits)
        return std::nullopt;
    Elements elements;
    for (const char c : *digits) {
        if (c != '0' && c != '1' && !isAny(c))
            return std::nullopt;
        elements.push_back(isAny(c) ? any : static_cast<std::int16_t>(c - '0'));
    }
    return elements;
}

std::string_view withoutPrefix(std::string_view text) {
    return text.starts_with("0x") || text.starts_with("0X") ? text.substr(2) : text;
}

/// A hexadecimal number as long as the word; bits of its first digit that the word lacks are 0 or
/// any.
Elements fitted(std::string_view text, const std::optional<Elements>& elements, int bits) {
    if (!elements)
        throw noPattern(text);
    const auto length = static_cast<std::size_t>(bits);
    const bool isLong = elements->size() >= length && elements->size() < length + bitsOfDigit;
    if (!isLong || std::any_of(elements->begin() + bits, elements->end(),
                               [](std::int16_t element) { return element == 1; }))
        throw wrongLength(text, elements->size(), bits);
    return {elements->begin(), elements->begin() + bits};
}

/// Elements from the most significant one on, eight in a group.
std::string grouped(WordBits elements) {
    std::string text;
    for (std::size_t i = elements.size(); i-- > 0;) {
        const std::int16_t element = elements[i];
        text += element == 0 || element == 1 ? static_cast<char>('0' + element) : 'X';
        if (i > 0 && i % bitsOfGroup == 0)
            text += ' ';
    }
    return text;
}

} // namespace

AnswerPattern AnswerPattern::parse(std::string_view text, int bits) {
    if (text.starts_with("0b") || text.starts_with("0B")) {
        const std::optional<Elements> elements = binaryElements(text.substr(2), any);
        if (!elements)
            throw noPattern(text);
        if (elements->size() != static_cast<std::size_t>(bits))
            throw wrongLength(text, elements->size(), bits);
        return {text, *elements};
    }
    const std::size_t slash = text.find('/');
    if (slash == std::string_view::npos)
        return {text, fitted(text, hexElements(withoutPrefix(text), any), bits)};
    const std::string_view value = withoutPrefix(text.substr(0, slash));
    const std::string_view mask = withoutPrefix(text.substr(slash + 1));
    Elements wanted = fitted(text, hexElements(value, std::nullopt), bits);
    const Elements counts = fitted(text, hexElements(mask, std::nullopt), bits);
    for (std::size_t i = 0; i < wanted.size(); ++i)
        if (counts[i] == 0)
            wanted[i] = any;
    return {text, std::move(wanted)};
}

bool AnswerPattern::matches(WordBits answer) const {
    return std::equal(wanted_.begin(), wanted_.end(), answer.begin(), answer.end(),
                      [](std::int16_t wanted, std::int16_t got) {
                          return (got == 0 || got == 1) && (wanted == any || wanted == got);
                      });
}

std::string AnswerPattern::comparison(WordBits answer) const {
    std::string marks = grouped(wanted_);
    const std::string wanted = marks;
    const std::string got = grouped(answer);
    for (std::size_t i = 0; i < marks.size(); ++i) {
        const bool isSame = i < got.size() && (wanted[i] == got[i] || wanted[i] == 'X');
        marks[i] = isSame ? ' ' : '^';
    }
    marks.erase(marks.find_last_not_of(' ') + 1);
    return fmt::format("  {}  answer\n  {}  expected\n  {}", got, wanted, marks);
}

} // namespace bitlux
