#pragma once

#include "chips/zt72518/flags.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace bitlux::zt72518 {

/// Registers whose content the model itself acts upon, by address.
enum Register : std::uint8_t {
    RamA = 1,
    RamB = 2,
    InitVreg = 5,
    InitWdog = 6,
    InitMisc = 8,
    SpecialMode = 9,
    Timer0 = 10,
    Timer2 = 12,
    WatchdogRefresh = 13,
    Mode = 14,
    Regulator = 15,
    Can = 16,
    InputOutput = 17,
    Interrupts = 18,
    Lin1 = 19,
    Lin2 = 20,
};
inline constexpr std::size_t registerCount = 21;

/// Bytes of things that are set from inside and outside: flags first, in the order of flagRows.
enum Row : std::uint8_t {
    RegulatorLow,
    CanLow,
    InputOutputLow,
    SafeInterrupt,
    Lin1Low,
    Lin2Low,
    RegulatorHigh,
    CanHigh,
    InputOutputHigh,
    SafeReset,
    Pins,
    Identity,
    Faults,
};
inline constexpr std::size_t flagRowCount = Pins;
inline constexpr std::size_t rowCount = Faults + 1;

/// The flags of a row. Those of the mode are no flags to set: the model makes them.
constexpr const oldchips::zt72518::FlagRow& flagRow(std::size_t row) {
    return row < RegulatorHigh ? oldchips::zt72518::lowFlagRows[row + 1]
                               : oldchips::zt72518::highFlagRows[row - RegulatorHigh + 1];
}

struct Bit {
    Row row;
    int bit;
};

inline constexpr Bit spiError{InputOutputLow, 5};
inline constexpr Bit interruptOnRequest{SafeInterrupt, 7};
inline constexpr Bit wokenByCurrent{RegulatorHigh, 0};
inline constexpr Bit resetBySpi{InputOutputHigh, 1};
inline constexpr Bit sleepBySpi{InputOutputHigh, 2};
inline constexpr Bit wokenByTimer{InputOutputHigh, 4};
inline constexpr Bit wokenByChipSelect{InputOutputHigh, 5};
inline constexpr Bit refreshFailed{SafeReset, 0};
inline constexpr Bit resetAgain{SafeReset, 1};

inline constexpr Bit pinReset{Pins, 0};
inline constexpr Bit pinInterrupt{Pins, 1};
inline constexpr Bit safeActive{Pins, 2};
inline constexpr Bit debug{Pins, 3};
inline constexpr int firstInputOutput = 4; ///< bit of Pins

inline constexpr Bit silent{Faults, 0};
inline constexpr Bit stuckHigh{Faults, 1};
inline constexpr Bit flagsStay{Faults, 2};
inline constexpr Bit noWatchdog{Faults, 3};

/// What the parts of the model share.
struct State {
    std::array<std::uint8_t, registerCount> registers{};
    std::array<std::uint8_t, rowCount> rows{};

    [[nodiscard]] bool has(Bit bit) const { return ((rows[bit.row] >> bit.bit) & 1) != 0; }
    void set(Bit bit, bool on = true) {
        const auto mask = static_cast<std::uint8_t>(1U << static_cast<unsigned>(bit.bit));
        rows[bit.row] =
            static_cast<std::uint8_t>(on ? rows[bit.row] | mask : rows[bit.row] & ~mask);
    }
};

/// A flag that says why the chip woke, or would wake.
constexpr bool isWakeUp(Bit bit) {
    constexpr std::array<std::uint8_t, flagRowCount> wakeUps{0,    0x80, 0, 0,    0x40,
                                                             0x40, 0x01, 0, 0xF0, 0};
    return bit.row < flagRowCount && ((wakeUps[bit.row] >> bit.bit) & 1) != 0;
}

} // namespace bitlux::zt72518
