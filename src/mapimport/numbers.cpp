#include "mapimport/numbers.h"

#include "platform/conversions.h"

#include <algorithm>
#include <limits>
#include <string>

namespace bitlux::mapimport {

namespace {

constexpr int binary = 2;
constexpr int decimal = 10;
constexpr int hexadecimal = 16;

/// Digits after the prefix of their base.
struct Digits {
    std::string_view text;
    int base = decimal;
};

bool isPrefix(std::string_view text, char letter) {
    return text.size() > 1 && text[0] == '0' && (text[1] | ' ') == letter;
}

/// "8'hFF" of SystemVerilog, from the quote on.
std::optional<Digits> verilogDigits(std::string_view text) {
    text.remove_prefix(1);
    if (text.starts_with('s') || text.starts_with('S'))
        text.remove_prefix(1);
    if (text.empty())
        return std::nullopt;
    const std::string_view digits = text.substr(1);
    switch (text.front() | ' ') {
    case 'h':
        return Digits{digits, hexadecimal};
    case 'd':
        return Digits{digits, decimal};
    case 'o':
        return Digits{digits, 8};
    case 'b':
        return Digits{digits, binary};
    default:
        return std::nullopt;
    }
}

std::optional<Digits> digitsOf(std::string_view text, Notation notation) {
    if (text.starts_with('+'))
        text.remove_prefix(1);
    if (text.starts_with('#'))
        return Digits{text.substr(1), notation == Notation::Svd ? binary : hexadecimal};
    if (isPrefix(text, 'x'))
        return Digits{text.substr(2), hexadecimal};
    if (notation == Notation::Svd)
        return isPrefix(text, 'b') ? Digits{text.substr(2), binary} : Digits{text};
    const std::size_t quote = text.find('\'');
    return quote == std::string_view::npos ? Digits{text} : verilogDigits(text.substr(quote));
}

/// What a letter at the end of a number multiplies it by, as a shift; 0 for none.
int scaleOf(char letter) {
    constexpr std::string_view letters = "kmgt";
    constexpr int step = 10;
    const std::size_t place = letters.find(static_cast<char>(letter | ' '));
    return place == std::string_view::npos ? 0 : step * (static_cast<int>(place) + 1);
}

} // namespace

std::optional<std::uint64_t> numberFrom(std::string_view text, Notation notation) {
    std::optional<Digits> digits = digitsOf(text, notation);
    if (!digits || digits->text.empty())
        return std::nullopt;
    const int scale = scaleOf(digits->text.back());
    if (scale != 0)
        digits->text.remove_suffix(1);
    std::string plain(digits->text);
    if (notation == Notation::IpXact)
        plain.erase(std::remove(plain.begin(), plain.end(), '_'), plain.end());
    const auto number = wholeNumber<std::uint64_t>(plain, digits->base);
    if (!number || *number > std::numeric_limits<std::uint64_t>::max() >> scale)
        return std::nullopt;
    return *number << scale;
}

std::optional<Pattern> patternFrom(std::string_view text, Notation notation) {
    if (const std::optional<std::uint64_t> number = numberFrom(text, notation))
        return Pattern{*number};
    const std::optional<Digits> digits = digitsOf(text, notation);
    constexpr std::size_t most = 64;
    if (!digits || digits->base != binary || digits->text.empty() || digits->text.size() > most)
        return std::nullopt;
    Pattern pattern;
    for (const char digit : digits->text) {
        const bool isEither = (digit | ' ') == 'x' || digit == '?';
        if (!isEither && digit != '0' && digit != '1')
            return std::nullopt;
        pattern.value = pattern.value << 1 | (digit == '1' ? 1 : 0);
        pattern.either = pattern.either << 1 | (isEither ? 1 : 0);
    }
    return pattern;
}

} // namespace bitlux::mapimport
