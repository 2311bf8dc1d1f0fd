#include "platform/clock.h"

#include <chrono>

namespace bitlux {

std::int64_t SystemClock::nanoseconds() const {
    return std::chrono::duration_cast<std::chrono::nanoseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

} // namespace bitlux
