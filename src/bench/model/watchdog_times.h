#pragma once

#include <cstdint>

/// Times of system-basis chips in nanoseconds, as fields of their registers set them. The lower
/// bits of a field say how often a time is doubled, the upper bits select the time; bits above the
/// field are ignored.
namespace bitlux {

/// Five bits: 2.5, 3, 3.5 or 4 ms, doubled up to seven times.
std::int64_t watchdogPeriod(std::uint64_t field);
/// Four bits: 48 or 256 ms.
std::int64_t flashPeriod(std::uint64_t field);
/// Four bits: 12 or 16 ms.
std::int64_t lowPowerPeriod(std::uint64_t field);
/// Four bits: 48 or 64 ms.
std::int64_t forcedWakeUpPeriod(std::uint64_t field);
/// Three bits: 3 or 4 ms. A pulse of current in low power that is longer wakes the chip.
std::int64_t currentLimit(std::uint64_t field);
/// Two bits: 1, 5, 10 or 20 ms.
std::int64_t resetDuration(std::uint64_t field);

} // namespace bitlux
