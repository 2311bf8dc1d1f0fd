#pragma once

#include "bench/cycle.h"
#include "bench/reading.h"
#include "bench/shift_device.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Lines of a chip beside the bus, as a dongle samples them.
struct ChipLines {
    bool interrupt = false;
    bool reset = false;
};

/// Something that the user of the bench turns on and off at a chip: a flag, a pin, a fault.
struct ChipSwitch {
    std::string group;
    std::string name; ///< once in its group
};

/// The model of a chip: beside its pins it has time, lines, and what a user may do to it.
class Chip : public ShiftDevice {
public:
    Chip* chip() override { return this; }

    /// The bench has come to `now`, in nanoseconds; what was due by then happens. Called before
    /// anything else reaches the chip; a time that is over counts as the present one.
    virtual void timeIs(std::int64_t now) = 0;
    /// Adds to the phase of the bench at that time. Words that are drawn at random do not count.
    virtual void addPhase(Phase& phase) const = 0;
    /// The bench left out whole cycles: all times move on, and nothing else has changed.
    virtual void skip(std::int64_t duration) = 0;

    [[nodiscard]] virtual ChipLines lines() const = 0;

    /// The same list for the whole life of the chip.
    [[nodiscard]] virtual const std::vector<ChipSwitch>& switches() const = 0;
    [[nodiscard]] virtual bool isOn(std::size_t index) const = 0;
    virtual void turn(std::size_t index, bool on) = 0;

    /// State for people to look at, always in the same order.
    [[nodiscard]] virtual std::vector<Reading> readings() const = 0;
};

/// Index of the switch "GROUP/NAME", or of a NAME that only one group has; capitals do not matter.
/// Raises Failure (OutOfRange) that names similar ones for any other text.
std::size_t switchNamed(const Chip& chip, std::string_view name);

} // namespace bitlux
