#pragma once

#include "platform/clock.h"
#include "platform/event.h"
#include "sending/run_controls.h"
#include "transfer/word_engine.h"

#include <cstdint>
#include <string>

namespace bitlux {

/// Computes a rate from a count of words and its time. It is updated every half second, so that it
/// can be read.
class WordRate {
public:
    void begin(std::int64_t now);
    /// Words per second; 0 in the first half second.
    [[nodiscard]] double at(std::uint64_t words, std::int64_t now);

private:
    std::int64_t since_ = 0;
    std::uint64_t before_ = 0;
    double rate_ = 0;
};

/// "12345 words, 678 words/s"; the rate is omitted while it is 0.
[[nodiscard]] std::string countText(std::uint64_t words, double rate);

/// Counts the words of the active continuous run.
class ContinuousCount {
public:
    /// All outlive it.
    ContinuousCount(WordEngine& engine, RunControls& run, const Clock& clock);

    [[nodiscard]] std::uint64_t words() const { return words_; }
    /// Text with count and rate; changes at most four times a second.
    [[nodiscard]] const std::string& text();

private:
    const Clock& clock_;
    std::uint64_t words_ = 0;
    WordRate rate_;
    std::int64_t made_ = 0; ///< when the text was
    std::string text_;
};

} // namespace bitlux
