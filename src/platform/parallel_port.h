#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace bitlux {

/// The eight operations on the I/O ports of a PC parallel port, and a ninth that ends a word.
/// Everything that drives pins goes through this interface, so that a real, a simulated and a
/// recording port are interchangeable.
///
/// A port has three byte registers: data at its base address, status at base + 1 (read only),
/// control at base + 2. Addresses are 16-bit, values are the low byte of a 16-bit integer.
///
/// Reads and writes report nothing in their results. An implementation that finds its port unusable
/// throws Failure (PortUnusable) with a sentence that says what to do.
///
/// A port may collect accesses and make them all in complete(). Its Inp returns a placeholder for
/// the status register, and takeSamples() the value.
class ParallelPort {
public:
    virtual ~ParallelPort() = default;

    /// Reads one byte from an I/O port.
    virtual std::int32_t Inp(std::int16_t address) = 0;
    /// Writes the low byte of `value` to an I/O port.
    virtual void Outp(std::int16_t address, std::int16_t value) = 0;
    /// Opens direct access to the ports from `first` to `last`; used around each write in fast
    /// mode.
    virtual void EnablePorts(std::int16_t first, std::int16_t last) = 0;
    /// Closes the access that EnablePorts opened.
    virtual void DisablePorts(std::int16_t first, std::int16_t last) = 0;
    /// Base address of LPT1 to LPT3, 0 when there is none.
    virtual std::int16_t GetLPTPortAddress(std::int16_t number) = 0;
    /// 1 switches fast mode (direct port I/O) on, 0 off.
    virtual void SetFastMode(std::int32_t mode) { fastMode_ = mode; }
    /// Called after the accesses of a word or of a change of pins. Throws when the port was lost
    /// and none of them reported it.
    virtual void complete() {}
    /// Replaces the placeholders in `values` by what complete() has read; leaves all other values.
    virtual void takeSamples(std::span<std::int16_t> /*values*/) {}
    /// Which pins are in use, as bits of the data and the control register. A port that can do so
    /// leaves all others undriven, from the next complete() on.
    virtual void drive(std::uint8_t /*dataPins*/, std::uint8_t /*controlPins*/) {}

    // These two are read before and after every write, so they cost a load and no call.

    /// True on a system that needs a driver for port access.
    [[nodiscard]] bool IsWinNT() const noexcept { return needsDriver_; }
    /// 1 when fast mode is on.
    [[nodiscard]] std::int32_t GetFastMode() const noexcept { return fastMode_; }
    /// Nanoseconds from one write to the next on a port that collects accesses; 0 on one that makes
    /// each at once.
    [[nodiscard]] std::int64_t collectedPace() const noexcept { return collectedPace_; }
    [[nodiscard]] bool collects() const noexcept { return collectedPace_ != 0; }

protected:
    explicit ParallelPort(bool needsDriver, std::int64_t collectedPace = 0)
        : needsDriver_(needsDriver), collectedPace_(collectedPace) {}
    /// `pace` is above 0.
    void setCollectedPace(std::int64_t pace) { collectedPace_ = pace; }
    ParallelPort(const ParallelPort&) = default;
    ParallelPort& operator=(const ParallelPort&) = default;

private:
    std::int32_t fastMode_ = 0;
    bool needsDriver_;
    std::int64_t collectedPace_;
};

/// The placeholder for a status that a port has collected, by its number since the last complete(),
/// from 0 to 32,767. Values of a register are not negative.
constexpr std::int16_t samplePlaceholder(std::size_t number) {
    return static_cast<std::int16_t>(-1 - static_cast<int>(number));
}
/// The number of a placeholder.
constexpr std::size_t placeholderNumber(std::int16_t placeholder) {
    return static_cast<std::size_t>(-1 - placeholder);
}

/// Offsets of the registers from the base address of a port.
inline constexpr std::int16_t dataRegister = 0;
inline constexpr std::int16_t statusRegister = 1;
inline constexpr std::int16_t controlRegister = 2;

/// The base addresses that parallel ports traditionally have.
inline constexpr std::int16_t address3BC = 0x3BC;
inline constexpr std::int16_t address378 = 0x378;
inline constexpr std::int16_t address278 = 0x278;

} // namespace bitlux
