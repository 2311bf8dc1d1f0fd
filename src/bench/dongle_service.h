#pragma once

#include "bench/cycle.h"
#include "bench/reading.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <vector>

namespace bitlux {

/// The dongle as its services see it.
class DongleBus {
public:
    virtual ~DongleBus() = default;

    /// Clocks a word of the dongle's own through the device, of up to 40 bits and an SPI type of 1
    /// to 8, the most significant bit first; returns the answer.
    virtual std::uint64_t exchange(std::uint64_t word, int bits, int type) = 0;
    /// The time of the current event, in nanoseconds.
    [[nodiscard]] virtual std::int64_t now() const = 0;
};

/// A service of the dongle for one kind of device: commands in special frames, and periodic
/// actions. The connected device provides it, and outlives it.
class DongleService {
public:
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    virtual ~DongleService() = default;

    /// Called first for every frame, including words. Executes a command of this service and
    /// returns the answer; returns nothing for any other frame, which is then processed further.
    virtual std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) = 0;

    /// Time of its next action, in nanoseconds.
    [[nodiscard]] virtual std::int64_t due() const { return never; }
    /// Performs the due action; `due` is in the future afterwards.
    virtual void serve(DongleBus&) {}
    /// Adds to the phase of the bench at `now`.
    virtual void addPhase(Phase&, std::int64_t /*now*/) const {}
    /// The bench skipped whole cycles: moves all times.
    virtual void skip(std::int64_t /*duration*/) {}

    /// Readings for display, always the same ones.
    [[nodiscard]] virtual std::vector<Reading> readings() const { return {}; }
};

/// A frame without a word; byte 1 is the command.
inline bool isCommand(const UsbFrame& frame, std::uint8_t command) {
    constexpr std::uint8_t lengthBits = 0x3F;
    return (frame[0] & lengthBits) == 0 && frame[1] == command;
}

using DongleServices = std::vector<std::unique_ptr<DongleService>>;

} // namespace bitlux
