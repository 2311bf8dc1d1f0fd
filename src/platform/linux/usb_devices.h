#pragma once

#include "platform/linux/dongle_numbers.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux {

/// A USB device with the pipes of a dongle: its interface 0 is vendor-specific and has an IN
/// endpoint 0x81 and an OUT endpoint 0x02, each bulk or interrupt. This alone does not make it a
/// dongle.
struct UsbCandidate {
    enum class Transfer : std::uint8_t { Bulk, Interrupt };

    UsbNumbers numbers;
    int bus = 0;        ///< number of the bus
    int address = 0;    ///< on the bus; a new one each time it is plugged in
    std::string name;   ///< its product name, or empty
    std::string serial; ///< its serial number, or empty
    std::string folder; ///< its folder in sysfs
    Transfer in = Transfer::Bulk;
    Transfer out = Transfer::Bulk;
};

/// Looks for candidates in what the kernel has already read of the devices, without accessing them.
/// `devices` is the folder of the kernel's list. A device that is unplugged meanwhile, or whose
/// descriptors are damaged, is left out.
std::vector<UsbCandidate> findUsbCandidates(const std::string& devices = "/sys/bus/usb/devices");

/// The device node, as "/dev/bus/usb/001/004".
std::string usbNode(const UsbCandidate& candidate);

inline constexpr std::uint8_t dongleInEndpoint = 0x81;
inline constexpr std::uint8_t dongleOutEndpoint = 0x02;

} // namespace bitlux
