#include "bench/zt72518/timers.h"

#include <array>
#include <cstddef>

namespace bitlux::zt72518 {

namespace {

constexpr std::int64_t microsecond = 1000;
constexpr std::int64_t millisecond = 1000 * microsecond;

unsigned field(std::uint8_t value, unsigned lowBit, unsigned width) {
    return (static_cast<unsigned>(value) >> lowBit) & ((1U << width) - 1);
}

/// One of two times, doubled as often as the three bits from `prescaler` tell.
std::int64_t oneOfTwo(std::uint8_t value, unsigned choice, unsigned prescaler, std::int64_t first,
                      std::int64_t second) {
    return (field(value, choice, 1) != 0 ? second : first) * millisecond
           << field(value, prescaler, 3);
}

} // namespace

std::int64_t watchdogPeriod(std::uint8_t timer0) {
    constexpr std::int64_t half = 500 * microsecond;
    return (5 + field(timer0, 3, 2)) * half << field(timer0, 0, 3);
}

std::int64_t flashPeriod(std::uint8_t timer2) {
    return oneOfTwo(timer2, 7, 4, 48, 256);
}

std::int64_t stopPeriod(std::uint8_t timer2) {
    return oneOfTwo(timer2, 7, 4, 12, 16);
}

std::int64_t forcedWakeUpPeriod(std::uint8_t timer2) {
    return oneOfTwo(timer2, 3, 0, 48, 64);
}

std::int64_t currentLimit(std::uint8_t timer0) {
    return (3 + field(timer0, 7, 1)) * millisecond << field(timer0, 5, 2);
}

std::int64_t resetDuration(std::uint8_t initVreg) {
    constexpr std::array<std::int64_t, 4> durations{1, 5, 10, 20};
    return durations[static_cast<std::size_t>(field(initVreg, 3, 2))] * millisecond;
}

} // namespace bitlux::zt72518
