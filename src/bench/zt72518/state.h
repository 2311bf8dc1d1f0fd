#pragma once

#include "bench/model/model_store.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace bitlux::zt72518 {

/// Registers whose content the model itself acts upon.
enum class Register : std::uint8_t {
    RamA,
    RamB,
    InitVreg,
    InitWdog,
    InitMisc,
    Timer0,
    Timer2,
    Regulator,
    Can,
    InputOutput,
    Lin1,
    Lin2,
};
inline constexpr std::array<const char*, 12> registerTitles{
    "RAM A",   "RAM B",     "Init Vreg", "Init Wdog", "Init Misc", "Timer 0",
    "Timer 2", "Regulator", "CAN",       "I/O",       "LIN 1",     "LIN 2"};

/// Bytes that the chip and the user set: flags first, then the pins.
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
    Faults,
};
inline constexpr std::size_t flagRowCount = Pins;
inline constexpr std::size_t rowCount = Faults + 1;

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

inline constexpr Bit noWatchdog{Faults, 0};

/// What the parts of the model share: the registers and flags of the store, by meaning, and the
/// pins.
class State {
public:
    /// `store` outlives this. Raises Failure (File) when the chip lacks a register or flags.
    explicit State(ModelStore& store);
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    [[nodiscard]] std::uint8_t value(Register which) const {
        return static_cast<std::uint8_t>(*registers_[static_cast<std::size_t>(which)]);
    }
    [[nodiscard]] bool has(Bit bit) const { return (*rows_[bit.row] >> bit.bit & 1) != 0; }
    void set(Bit bit, bool on = true) { StateBit{rows_[bit.row], bit.bit}.set(on); }
    /// Any bit of a row.
    [[nodiscard]] bool lit(Row row) const { return *rows_[row] != 0; }
    std::uint64_t& row(Row row) { return *rows_[row]; }

    /// A flag that says why the chip woke, or would wake.
    [[nodiscard]] bool isWakeUp(const StateBit& bit) const;
    [[nodiscard]] bool anyWakeUp() const;

    /// Pins and faults; the store has the others.
    void addPhase(Phase& phase) const {
        phase.push_back(static_cast<std::int64_t>(pins_));
        phase.push_back(static_cast<std::int64_t>(faults_));
    }

private:
    std::array<std::uint64_t*, registerTitles.size()> registers_{};
    std::array<std::uint64_t*, rowCount> rows_{};
    std::uint64_t pins_ = 0;
    std::uint64_t faults_ = 0;
};

} // namespace bitlux::zt72518
