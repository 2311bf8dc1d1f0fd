#include "apps/word_source.h"

#include "platform/conversions.h"
#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// The number of bits of the number with these digits, without leading zeros.
std::size_t bitsOfDigits(std::string_view digits) {
    const auto* const first =
        std::find_if(digits.begin(), digits.end(), [](char c) { return c != '0'; });
    if (first == digits.end())
        return 0;
    std::size_t bits = 4 * static_cast<std::size_t>(digits.end() - first - 1);
    for (int digit = hexDigit(*first); digit != 0; digit /= 2)
        ++bits;
    return bits;
}

} // namespace

std::optional<std::string> wordDigits(std::string_view text) {
    if (text.starts_with("0x") || text.starts_with("0X"))
        text.remove_prefix(2);
    std::string digits;
    char before = '_';
    for (const char c : text) {
        if (c == '_' ? before == '_' : hexDigit(c) < 0)
            return std::nullopt;
        if (c != '_')
            digits += c;
        before = c;
    }
    return before == '_' ? std::nullopt : std::optional(digits);
}

std::string fittingDigits(std::string_view text, std::size_t length) {
    const std::optional<std::string> digits = wordDigits(text);
    if (!digits)
        throw Failure(Failure::Kind::Conversion, "This is no hexadecimal number.");
    if (const std::size_t bits = bitsOfDigits(*digits); bits > length)
        throw Failure(Failure::Kind::OutOfRange,
                      fmt::format("This has {} bits, and a word here has {}.", bits, length));
    return *digits;
}

std::optional<WordSource::Word> WordSource::next() {
    while (index_ < words_.size()) {
        const std::string& text = words_[index_];
        if (text != standardInputWords) {
            ++index_;
            return Word{.text = text, .place = name(++count_, text)};
        }
        if (const std::optional<std::string> word = nextOfInput())
            return Word{.text = *word,
                        .place = fmt::format("{}, line {} of the standard input",
                                             name(++count_, *word), line_)};
        ++index_;
    }
    return std::nullopt;
}

std::optional<std::string> WordSource::nextOfInput() {
    while (ofLine_.empty()) {
        const std::optional<std::string> line = input_.line();
        if (!line)
            return std::nullopt;
        ++line_;
        std::istringstream words(*line);
        for (std::string word; words >> word;)
            ofLine_.push_back(word);
    }
    std::string word = std::move(ofLine_.front());
    ofLine_.pop_front();
    return word;
}

std::string WordSource::name(std::uint64_t number, std::string_view text) {
    constexpr std::size_t most = 60;
    return fmt::format("Word {}, \"{}\"", number, printable(text, most));
}

} // namespace bitlux
