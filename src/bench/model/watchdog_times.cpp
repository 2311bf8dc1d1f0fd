#include "bench/model/watchdog_times.h"

#include "platform/time_units.h"

#include <array>

namespace bitlux {

namespace {

/// One of two times in milliseconds, doubled as often as the lower `doublings` bits say.
std::int64_t oneOfTwo(std::uint64_t field, int doublings, std::int64_t first, std::int64_t second) {
    const std::uint64_t mask = (std::uint64_t{1} << doublings) - 1;
    return ((field >> doublings & 1) != 0 ? second : first) * millisecond << (field & mask);
}

} // namespace

std::int64_t watchdogPeriod(std::uint64_t field) {
    const auto halves = static_cast<std::int64_t>(5 + (field >> 3 & 3));
    return halves * (millisecond / 2) << (field & 7);
}

std::int64_t flashPeriod(std::uint64_t field) {
    return oneOfTwo(field, 3, 48, 256);
}

std::int64_t lowPowerPeriod(std::uint64_t field) {
    return oneOfTwo(field, 3, 12, 16);
}

std::int64_t forcedWakeUpPeriod(std::uint64_t field) {
    return oneOfTwo(field, 3, 48, 64);
}

std::int64_t currentLimit(std::uint64_t field) {
    return oneOfTwo(field, 2, 3, 4);
}

std::int64_t resetDuration(std::uint64_t field) {
    constexpr std::array<std::int64_t, 4> durations{1, 5, 10, 20};
    return durations[field & 3] * millisecond;
}

} // namespace bitlux
