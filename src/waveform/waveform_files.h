#pragma once

#include "waveform/word_record.h"

#include <deque>
#include <string>

namespace bitlux {

// Both files show the lines of all words in real time, including the idle time between the words,
// with the extra pins that changed. They are replaced as a whole. Raise Failure: File when they
// cannot be written, OutOfRange when there is no word.

/// A value change dump (IEEE 1364) with times in nanoseconds. DO is x before its first sample.
void exportVcd(const std::deque<WordRecord>& words, const std::string& fileName);

/// The result of writing a sample file.
struct SampledWords {
    std::size_t words = 0; ///< number of words in the file: all, or the last ones
    std::int64_t tick = 0; ///< nanoseconds between two samples
    bool exact = true;     ///< every edge is at its time; else at the previous sample
};

/// A sigrok session (.sr). The sample rate is the lowest at which every edge is exact. A recording
/// that would need more than `mostSamples` bytes of samples gets a lower rate that still separates
/// the edges, and then loses its oldest words. DO, which has no unknown level here, has the level
/// of its first sample before it.
SampledWords exportSr(const std::deque<WordRecord>& words, const std::string& fileName,
                      std::size_t mostSamples = std::size_t{1} << 26U);

} // namespace bitlux
