#pragma once

#include <array>
#include <cstdint>
#include <string_view>

/// Numbers in the frames of the dongle: byte 1 has the command, its data starts at byte 3.
namespace bitlux::dongle {

/// Sends a word of one byte periodically: the kind of chip in byte 6, the word in byte 4, the
/// period in byte 5, and the state in byte 3; 0 stops it.
inline constexpr std::uint8_t serveByte = 4;
inline constexpr std::uint8_t serve72361 = 1;
inline constexpr std::uint8_t serve72537 = 2;

inline constexpr std::uint8_t readLines = 5;
inline constexpr std::uint8_t testMode = 13; ///< with the key in byte 2
inline constexpr std::uint8_t testModeKey = 127;
inline constexpr std::uint8_t trimming = 37;

inline constexpr std::uint8_t watchdog = 21;
inline constexpr std::uint8_t watchdog72516 = 22;    ///< with mode and time, or zeros to stop
inline constexpr std::uint8_t watchdogFirstMode = 8; ///< the mode is added to it
inline constexpr std::uint8_t watchdogStop = 32;
/// Times between refreshes, by index.
inline constexpr std::array<std::string_view, 10> watchdogTimes{
    "1ms", "2ms", "3ms", "5ms", "10ms", "50ms", "100ms", "500ms", "1s", "5s"};
inline constexpr std::uint8_t watchdogCurrent = 69;
inline constexpr std::uint8_t watchdogCurrentOn = 16;

/// Frames of the byte-wide link, with a word's length in byte 0, the lines in byte 2 and the byte
/// in byte 3.
inline constexpr std::uint8_t pspiLength = 8;
inline constexpr std::uint8_t pspi = 4;
inline constexpr std::uint8_t pspiHasByte = 4; ///< of byte 2; beside it NSTB in bit 0, EN in bit 1

inline constexpr std::uint8_t triggerBit = 0x80; ///< of byte 0

} // namespace bitlux::dongle
