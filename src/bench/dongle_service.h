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
    /// The moment at which things happen, in nanoseconds.
    [[nodiscard]] virtual std::int64_t now() const = 0;
};

/// Something that the dongle does for one kind of device: commands in frames of their own, and what
/// it goes on doing by itself. The device on the lines brings it, and outlives it.
class DongleService {
public:
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    virtual ~DongleService() = default;

    /// Every frame passes here first, words as well. Carries out a command of this service and
    /// returns the answer; nothing for any other frame, which then goes on.
    virtual std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) = 0;

    /// When it has to do something next, in nanoseconds.
    [[nodiscard]] virtual std::int64_t due() const { return never; }
    /// Does what is due; `due` lies in the future then.
    virtual void serve(DongleBus&) {}
    /// Adds to the phase of the bench at `now`.
    virtual void addPhase(Phase&, std::int64_t /*now*/) const {}
    /// The bench left out whole cycles: all times move on.
    virtual void skip(std::int64_t /*duration*/) {}

    /// For people to look at, always the same ones.
    [[nodiscard]] virtual std::vector<Reading> readings() const { return {}; }
};

/// A frame without a word, whose byte 1 tells the command.
inline bool isCommand(const UsbFrame& frame, std::uint8_t command) {
    constexpr std::uint8_t lengthBits = 0x3F;
    return (frame[0] & lengthBits) == 0 && frame[1] == command;
}

using DongleServices = std::vector<std::unique_ptr<DongleService>>;

} // namespace bitlux
