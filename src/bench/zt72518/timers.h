#pragma once

#include <cstdint>

namespace bitlux::zt72518 {

/// Times in nanoseconds as the bits of a register set them.
std::int64_t watchdogPeriod(std::uint8_t timer0);
std::int64_t flashPeriod(std::uint8_t timer2);
std::int64_t stopPeriod(std::uint8_t timer2);
std::int64_t forcedWakeUpPeriod(std::uint8_t timer2);
/// A pulse of current in stop mode that is longer wakes the chip.
std::int64_t currentLimit(std::uint8_t timer0);
std::int64_t resetDuration(std::uint8_t initVreg);

/// The first refresh after a reset must come within it.
inline constexpr std::int64_t normalRequestPeriod = 256'000'000;

} // namespace bitlux::zt72518
