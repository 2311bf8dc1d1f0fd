#include "sending/continuous_count.h"

#include <fmt/format.h>

namespace bitlux {

void WordRate::begin(std::int64_t now) {
    since_ = now;
    before_ = 0;
    rate_ = 0;
}

double WordRate::at(std::uint64_t words, std::int64_t now) {
    constexpr std::int64_t span = 500'000'000;
    constexpr double second = 1e9;
    if (now - since_ >= span) {
        rate_ = static_cast<double>(words - before_) * second / static_cast<double>(now - since_);
        since_ = now;
        before_ = words;
    }
    return rate_;
}

std::string countText(std::uint64_t words, double rate) {
    constexpr double fast = 10; // from here on no decimal
    if (rate == 0)
        return fmt::format("{} words", words);
    return fmt::format("{} words, {:.{}f} words/s", words, rate, rate < fast ? 1 : 0);
}

ContinuousCount::ContinuousCount(WordEngine& engine, RunControls& run, const Clock& clock)
    : clock_(clock) {
    run.continuousBegins.subscribe([this] {
        words_ = 0;
        rate_.begin(clock_.nanoseconds());
        text_.clear();
    });
    engine.wordTransferred.subscribe([this, &run] {
        if (run.continuous())
            ++words_;
    });
}

const std::string& ContinuousCount::text() {
    constexpr std::int64_t interval = 250'000'000;
    const std::int64_t now = clock_.nanoseconds();
    if (text_.empty() || now - made_ >= interval) {
        made_ = now;
        text_ = countText(words_, rate_.at(words_, now));
    }
    return text_;
}

} // namespace bitlux
