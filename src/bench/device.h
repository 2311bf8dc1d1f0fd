#pragma once

#include "bench/bus_shape.h"
#include "bench/chip_source.h"
#include "bench/dongle_service.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Levels of the three lines that go into a device.
struct DeviceInputs {
    bool chipSelect = false;
    bool clock = false;
    bool dataIn = false;
};

class Chip;

/// A device on the virtual bench, seen from its pins.
class Device {
public:
    virtual ~Device() = default;

    /// Lines have changed, all in the same moment.
    virtual void inputsChanged(const DeviceInputs& inputs, const BusShape& shape) = 0;
    /// Level of the data output.
    [[nodiscard]] virtual bool dataOut() const = 0;
    /// The data output has just been sampled.
    virtual void sampled() {}
    /// The device as a chip, when it is the model of one.
    virtual Chip* chip() { return nullptr; }
    /// The dongle's service for this device, in its initial state.
    virtual DongleServices dongleServices() { return {}; }
};

/// An answer of the device "scripted": element i is bit i, missing elements are 0.
using Reply = std::vector<bool>;

/// Bits of a hexadecimal text of any length; raises Failure (Conversion) for any other text.
Reply replyFromHex(std::string_view text);

/// Devices by name:
///   none         nothing on the bus, the data output floats high
///   loopback     the data output follows data in
///   echo         answers with the previous word, 0 at first; shifts on the edges in force
///   stuck-high   the data output stays high
///   stuck-low    the data output stays low
///   scripted     answers each word with the next of `replies`, or once more the last
///   zt72517      a model of that chip, which knows no words, see zt72517/zt72517.h
///   any other    a model of the chip that `chips` has for it, see model/chip_model.h
/// Raises Failure (OutOfRange) for an unknown name, and what `chips` raises.
std::unique_ptr<Device> makeDevice(std::string_view name, const std::vector<Reply>& replies = {},
                                   const ChipSource& chips = embeddedChipSource());

/// The names that makeDevice accepts.
std::vector<std::string> deviceNames(const ChipSource& chips = embeddedChipSource());

/// A one-line description of a device for the user; empty for an unknown name.
std::string deviceDescription(std::string_view name,
                              const ChipSource& chips = embeddedChipSource());

} // namespace bitlux
