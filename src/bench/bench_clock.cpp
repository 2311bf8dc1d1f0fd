#include "bench/bench_clock.h"

#include <chrono>
#include <thread>

namespace bitlux {

void PacedClock::spend(std::int64_t duration) {
    const std::int64_t end = nanoseconds() + duration;
    while (nanoseconds() < end) {
    }
}

void PacedClock::idle(std::int64_t duration) {
    std::this_thread::sleep_for(std::chrono::nanoseconds(duration));
}

} // namespace bitlux
