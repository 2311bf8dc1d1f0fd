#pragma once

#include "waveform/waveform.h"

#include <deque>
#include <span>

namespace bitlux {

/// Several words on one time axis, for a file.
struct WaveChanges {
    struct Change {
        std::int64_t at;
        std::size_t line;
        Level to;
    };
    struct Line {
        std::string name; ///< unique among the lines, printable and without blanks
        Level before;
    };

    /// Converts the words from `first` on, at least one. Words never overlap: one that would begin
    /// before the end of another begins at that end.
    WaveChanges(const std::deque<WordRecord>& words, std::size_t first);

    std::vector<Line> lines;          ///< CS, CLK, DI, DO, then every extra pin that changed
    std::vector<Change> changes;      ///< in order; times are nanoseconds, the first is 0
    std::vector<std::int64_t> begins; ///< of the words
    std::int64_t end = 0;             ///< of the last word
    bool asCommanded = false;         ///< at least one word went through the dongle

private:
    void append(const Waveform& waveform);
    std::size_t lineOf(const Waveform& waveform, std::size_t line);
    std::string freeName(const std::string& name) const;

    std::vector<std::string> names_; ///< of the lines, as shown to the user
    std::vector<Level> levels_;
};

} // namespace bitlux
