#pragma once

#include "apps/standard_input.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The hexadecimal digits of a word in a usual notation: "A5C3", "0xA5C3", "A5_C3". Nothing for any
/// other text.
std::optional<std::string> wordDigits(std::string_view text);

/// The digits of a word of this number of bits. Raises Failure: Conversion when the text is no
/// number, OutOfRange when it has more bits.
std::string fittingDigits(std::string_view text, std::size_t length);

/// The argument for the words of the standard input.
inline constexpr std::string_view standardInputWords = "-";

/// The words for a command; those of the standard input are separated by blanks and line ends.
class WordSource {
public:
    struct Word {
        std::string text;  ///< as it was given
        std::string place; ///< its name, with its line in the standard input
    };

    /// Both outlive this.
    WordSource(const std::vector<std::string>& words, StandardInput& input)
        : words_(words), input_(input) {}

    /// A word in a message, as `Word 2, "A5"`.
    static std::string name(std::uint64_t number, std::string_view text);

    /// The next word; waits for the standard input. Nothing when there are no more.
    std::optional<Word> next();

private:
    std::optional<std::string> nextOfInput();

    const std::vector<std::string>& words_;
    StandardInput& input_;
    std::size_t index_ = 0;
    std::uint64_t count_ = 0;
    std::uint64_t line_ = 0;
    std::deque<std::string> ofLine_;
};

} // namespace bitlux
