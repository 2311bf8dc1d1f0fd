#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace bitlux {

/// The kinds of watchdog refresh, in the order of the field that selects them.
enum class RefreshMode : std::uint8_t { Simple, Enhanced1, Enhanced2, Enhanced4 };

inline constexpr std::array<std::uint8_t, 1> simpleSteps{0x00};
inline constexpr std::array<std::uint8_t, 1> enhanced1Steps{0xFF};
inline constexpr std::array<std::uint8_t, 2> enhanced2Steps{0xF0, 0x0C};
inline constexpr std::array<std::uint8_t, 4> enhanced4Steps{0xC0, 0x30, 0x0C, 0x03};

/// The words that make a refresh: each carries the bits of its mask of the inverted random word.
constexpr std::span<const std::uint8_t> refreshSteps(RefreshMode mode) {
    switch (mode) {
    case RefreshMode::Enhanced1:
        return enhanced1Steps;
    case RefreshMode::Enhanced2:
        return enhanced2Steps;
    case RefreshMode::Enhanced4:
        return enhanced4Steps;
    default:
        return simpleSteps;
    }
}

} // namespace bitlux
