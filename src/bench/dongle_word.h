#pragma once

#include "bench/bus_shape.h"
#include "bench/device.h"
#include "platform/usb_endpoint.h"

#include <cstddef>
#include <cstdint>

namespace bitlux {

/// Of a frame that carries a word.
inline constexpr std::size_t firstDataByte = 3;

/// A frame as decoded by the dongle.
struct DongleFrame {
    explicit DongleFrame(const UsbFrame& frame);

    int length;       ///< bits, 0 for a command
    bool changesPins; ///< the frame sets the extra pins
    int type;         ///< SPI type, 1 to 8
    bool selectedWhenHigh;
    bool dataInOneIsHigh;
    bool dataOutOneIsHigh;
    std::int64_t bitTime;    ///< nanoseconds
    std::uint16_t extraPins; ///< bit 0 to 8
};

/// Clocks the bits of a frame into the device, bit 7 of the first data byte first, and returns a
/// frame with the received bits in the same positions.
UsbFrame clockWord(const UsbFrame& frame, const BusShape& shape, Device& device);

} // namespace bitlux
