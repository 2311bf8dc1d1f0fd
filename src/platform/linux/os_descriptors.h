#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// A request to a device on its control pipe.
struct ControlQuestion {
    std::uint8_t type = 0; ///< bmRequestType, always of the direction in
    std::uint8_t request = 0;
    std::uint16_t value = 0;
    std::uint16_t index = 0;
    std::uint16_t length = 0; ///< of the longest answer accepted
};

/// Sends a request to a device. Nothing when the device does not answer, or refuses.
using AskDevice = std::function<std::optional<std::vector<std::uint8_t>>(const ControlQuestion&)>;

/// The classes that a device names for its interface 0 in its Microsoft OS descriptors, of version
/// 1.0 or 2.0. Most name none; damaged descriptors name none either. `usbVersion` is the USB
/// version that the device reports, such as 0x0201: older devices are not queried for version 2.0.
std::vector<std::string> deviceInterfaceClasses(const AskDevice& ask, std::uint16_t usbVersion);

} // namespace bitlux
