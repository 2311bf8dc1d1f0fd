#include "bench/bench_clock.h"

namespace bitlux {

void PacedClock::spend(std::int64_t duration) {
    const std::int64_t end = nanoseconds() + duration;
    while (nanoseconds() < end) {
    }
}

} // namespace bitlux
