#pragma once

#include <concepts>
#include <cstdint>

namespace bitlux {

/// A 16-bit flag that is compared with ConstOn, which is 1. It is not a Boolean: True is a
/// different number than ConstOn, and neither converts to the other.
class Flag {
public:
    constexpr Flag() = default;
    constexpr explicit Flag(std::same_as<std::int16_t> auto value) : value_(value) {}

    [[nodiscard]] constexpr std::int16_t value() const { return value_; }
    constexpr bool operator==(const Flag&) const = default;

private:
    std::int16_t value_ = 0;
};

inline constexpr Flag ConstOn{std::int16_t{1}};
inline constexpr Flag ConstOff{std::int16_t{0}};

/// Levels of pins and register bits.
inline constexpr std::int16_t ConstHigh = 1;
inline constexpr std::int16_t ConstLow = 0;

} // namespace bitlux
