#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace bitlux {

/// What happens on the bus within one bit.
enum class BusStep : std::uint8_t {
    ClockLow,  ///< a write with the clock low
    ClockHigh, ///< a write with the clock high
    Sample,    ///< a read of the data output
};

enum class Edge : std::uint8_t { Rising, Falling };

/// Writes between the last bit and the one that ends every word.
enum class WordEnding : std::uint8_t {
    Direct,            ///< none
    ClockRestsFirst,   ///< clock idle and data in zero, chip select still asserted
    ChipDeselectFirst, ///< chip select idle, clock still where it is
};

/// How a word is clocked: one row for each of the eight SPI types. Types 5 to 8 are non-standard.
struct ClockingType {
    Edge valid;           ///< the edge on which data is valid
    Edge toggled;         ///< the edge on which data changes
    std::int16_t idle;    ///< level of the clock before and after a word
    std::int16_t leadIn;  ///< level written after chip select, noLeadIn for none
    bool skipsTopElement; ///< the last step is omitted for the element with the highest index
    WordEnding ending;
    std::array<BusStep, 3> steps;

    static constexpr std::int16_t noLeadIn = -1;
};

namespace detail {
using enum BusStep;
using enum Edge;
inline constexpr std::int16_t none = ClockingType::noLeadIn;

// The steps of types 2 and 3, and of 6 and 7, are equal: they differ by the idle level alone. A
// step to the level that the clock already has is still a write.
inline constexpr std::array<ClockingType, 8> clockingTypes{{
    {Rising, Falling, 0, none, false, WordEnding::ClockRestsFirst, {ClockLow, ClockHigh, Sample}},
    {Falling, Rising, 0, none, false, WordEnding::Direct, {ClockHigh, ClockLow, Sample}},
    {Falling, Rising, 1, none, false, WordEnding::ClockRestsFirst, {ClockHigh, ClockLow, Sample}},
    {Rising, Falling, 1, none, false, WordEnding::Direct, {ClockLow, ClockHigh, Sample}},
    {Falling, Falling, 0, 1, true, WordEnding::Direct, {Sample, ClockLow, ClockHigh}},
    {Rising, Rising, 0, none, false, WordEnding::Direct, {Sample, ClockHigh, ClockLow}},
    {Rising, Rising, 1, 0, false, WordEnding::ChipDeselectFirst, {Sample, ClockHigh, ClockLow}},
    {Falling, Falling, 1, none, false, WordEnding::Direct, {Sample, ClockLow, ClockHigh}},
}};
} // namespace detail

/// `type` is 1 to 8.
constexpr const ClockingType& clockingType(int type) {
    return detail::clockingTypes.at(static_cast<std::size_t>(type - 1));
}

/// The common SPI mode (0 to 3) of a type: twice the idle level of the clock, and one more where
/// data is valid on the edge back to it. A type whose data is valid and toggled on the same edge
/// has no mode.
constexpr std::optional<int> spiMode(const ClockingType& type) {
    if (type.valid == type.toggled)
        return std::nullopt;
    const Edge first = type.idle != 0 ? Edge::Falling : Edge::Rising;
    return 2 * type.idle + (type.valid == first ? 0 : 1);
}

} // namespace bitlux
