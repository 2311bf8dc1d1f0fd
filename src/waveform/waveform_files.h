#pragma once

#include "waveform/word_record.h"

#include <deque>
#include <string>

namespace bitlux {

// Both files show the lines of all words in real time, idle stretches between the words included,
// with the extra pins that moved. They are replaced as a whole. Raise Failure: File when they
// cannot be written, OutOfRange when there is no word.

/// A value change dump (IEEE 1364) with times in nanoseconds. DO is x before its first sample.
void exportVcd(const std::deque<WordRecord>& words, const std::string& fileName);

/// What became of a sample file.
struct SampledWords {
    std::size_t words = 0; ///< how many are in the file: all, or the last ones
    std::int64_t tick = 0; ///< nanoseconds between two samples
    bool exact = true;     ///< every edge stands at its time; else at the sample before
};

/// A sigrok session (.sr). The sample rate is the lowest at which every edge is exact. A recording
/// that would take more than `mostSamples` bytes of samples gets a lower one that keeps the edges
/// apart, and then loses its oldest words. DO, which has no unknown level here, stands at that of
/// its first sample before.
SampledWords exportSr(const std::deque<WordRecord>& words, const std::string& fileName,
                      std::size_t mostSamples = std::size_t{1} << 26U);

} // namespace bitlux
