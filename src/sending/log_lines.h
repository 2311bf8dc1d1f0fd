#pragma once

#include "platform/forms/line_source.h"
#include "sending/word_text.h"

#include <array>
#include <bitset>
#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace bitlux {

/// Display format of words.
enum class WordDisplay : std::uint8_t { Binary, Hex, None };

/// The lines of the Session Log. Words are stored raw and formatted when displayed, so that a word
/// costs the same in a full log as in an empty one.
class LogLines : public forms::LineSource {
public:
    /// Adds the five lines of a word; both spans have one element per bit.
    void addWord(WordBits sent, WordBits received, WordDisplay display);
    void addText(std::string line);
    void clear();
    /// Drops the oldest words until at most this many lines remain.
    void keepLast(std::size_t lines);
    /// The five lines of a word.
    static std::vector<std::string> textOf(WordBits sent, WordBits received, WordDisplay display);

    /// The word that was sent, of the word that a line belongs to; empty for a line of text.
    [[nodiscard]] std::vector<std::int16_t> sentAt(std::size_t index) const;

    [[nodiscard]] std::size_t size() const override { return end_ - begin_; }
    [[nodiscard]] std::string line(std::size_t index) const override;

private:
    static constexpr std::size_t linesOfWord = 5;
    static constexpr std::size_t rawBits = 160;

    struct RawWord {
        std::bitset<rawBits> sent;
        std::bitset<rawBits> received;
        std::uint8_t length;
        WordDisplay display;
    };
    /// One word, or lines kept as text when there are any.
    struct Entry {
        std::size_t firstLine; ///< numbers continue when older lines are dropped
        RawWord word;
        std::vector<std::string> text;
    };

    static std::vector<std::string> textOf(const RawWord& word);
    [[nodiscard]] const Entry& entryAt(std::size_t number) const;
    void add(const RawWord& word, std::vector<std::string> text, std::size_t lines);

    std::deque<Entry> entries_;
    std::size_t begin_ = 0; ///< number of the first line that is left
    std::size_t end_ = 0;   ///< after the last
};

} // namespace bitlux
