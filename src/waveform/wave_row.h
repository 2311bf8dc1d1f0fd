#pragma once

#include "waveform/waveform.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bitlux {

/// Words one after the other on one axis, for display: each with its own times, and the idle
/// intervals between them all with the same width. A position on the axis is in nanoseconds from
/// the begin of the first word.
struct WaveRow {
    struct Word {
        Waveform waveform;
        std::int64_t at = 0;    ///< its begin on the axis
        std::int64_t begin = 0; ///< when it began, in nanoseconds after the first word
    };

    WaveRow() = default;
    explicit WaveRow(std::vector<Waveform> waveforms);

    std::vector<Word> words;
    std::vector<WaveLine> lines; ///< CS, CLK, DI, DO, then each extra pin that changed
    std::int64_t gap = 0;        ///< width of the idle intervals
    std::int64_t longest = 0;    ///< duration of the longest word, in nanoseconds

    [[nodiscard]] std::int64_t end() const { return words.empty() ? 0 : endOf(words.size() - 1); }
    [[nodiscard]] std::int64_t endOf(std::size_t word) const {
        return words[word].at + words[word].waveform.end;
    }
    /// Nanoseconds between a word and the one before it; 0 for the first.
    [[nodiscard]] std::int64_t idleBefore(std::size_t word) const;
    /// The word at a position, or the last one before it. Requires a word.
    [[nodiscard]] std::size_t wordAt(std::int64_t at) const;
    /// The time of a position, in nanoseconds after the first word began.
    [[nodiscard]] std::int64_t timeAt(std::int64_t at) const;

private:
    void addLines(std::size_t word);
    WaveLine& lineFor(const Waveform& waveform, std::size_t line);
};

} // namespace bitlux
