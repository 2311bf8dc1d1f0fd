#pragma once

#include "sending/word_text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// What an answer has to be, some of its bits perhaps of any value.
class AnswerPattern {
public:
    /// Reads a pattern for words of so many bits: hexadecimal digits with X for any digit ("5AXX",
    /// "0x5AXX"), binary ones with X for any bit ("0b1X0X"), or value and mask in hexadecimal,
    /// where a 0 of the mask is any bit ("5A/F0"). Underscores are allowed between digits. Raises
    /// Failure: Conversion for any other text; OutOfRange, with both lengths, for one that is not
    /// as long as the word.
    static AnswerPattern parse(std::string_view text, int bits);

    /// As it was given.
    [[nodiscard]] const std::string& text() const { return text_; }
    [[nodiscard]] int bits() const { return static_cast<int>(wanted_.size()); }
    /// An answer of another length, or with an element that is neither 0 nor 1, does not match.
    [[nodiscard]] bool matches(WordBits answer) const;
    /// Three lines: the answer's bits, the pattern's with X for any, and "^" below each that
    /// differs.
    [[nodiscard]] std::string comparison(WordBits answer) const;

private:
    static constexpr std::int16_t any = -1;

    AnswerPattern(std::string_view text, std::vector<std::int16_t> wanted)
        : text_(text), wanted_(std::move(wanted)) {}

    std::string text_;
    std::vector<std::int16_t> wanted_; ///< element 0 the least significant bit; 0, 1 or `any`
};

} // namespace bitlux
