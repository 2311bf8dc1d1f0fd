#include "bench/cycle.h"

#include <utility>

namespace bitlux {

// The kept phase is replaced after 1, 2, 4 and so on: eventually it is part of the cycle, and is
// kept for longer than the cycle takes.
std::int64_t CycleFinder::take(std::int64_t now, Phase phase) {
    if (!kept_.empty() && phase == kept_)
        return now - keptAt_;
    if (kept_.empty() || ++taken_ == limit_) {
        kept_ = std::move(phase);
        keptAt_ = now;
        taken_ = 0;
        limit_ *= 2;
    }
    return 0;
}

} // namespace bitlux
