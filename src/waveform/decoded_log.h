#pragma once

#include "registers/word_decoder.h"
#include "transfer/word_engine.h"
#include "waveform/word_data.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace bitlux {

/// The words that the engine keeps as a table: when each was sent, on which bus, and what it and
/// its answer mean to a chip. Rows have the numbers of the words; a text is made when it is asked
/// for.
class DecodedLog {
public:
    enum class Column : std::uint8_t { Time, Bus, Word, Answer, Meaning, AnswerMeaning };
    static constexpr int columns = 6;

    /// The engine outlives it.
    explicit DecodedLog(const WordEngine& engine) : engine_(engine) {}

    /// Whose words they are; null for no chip.
    void decodeBy(std::shared_ptr<const WordDecoder> decoder) { decoder_ = std::move(decoder); }

    /// Number of the first row, and of the one after the last.
    [[nodiscard]] std::size_t first() const;
    [[nodiscard]] std::size_t end() const;
    /// Head of a column.
    [[nodiscard]] static const char* title(Column column);
    /// Milliseconds since the first word of the log, hexadecimal digits, the meaning; empty where a
    /// word means nothing to the chip. Where the chip answers with the next word, an answer belongs
    /// to the word before.
    [[nodiscard]] std::string text(std::size_t row, Column column) const;
    /// What was sent and received in a row.
    [[nodiscard]] WordData data(std::size_t row) const;

    /// Replaces a file by the table: comma-separated values with the heads in the first line, words
    /// with "0x". Raises Failure (File).
    void saveCsv(const std::string& fileName) const;

private:
    [[nodiscard]] std::string meaningOf(std::size_t row, Column column) const;
    [[nodiscard]] DecodedWord answered(std::size_t row) const;

    const WordEngine& engine_;
    std::shared_ptr<const WordDecoder> decoder_;
};

} // namespace bitlux
