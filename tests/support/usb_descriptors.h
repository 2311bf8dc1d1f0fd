#pragma once

#include "support/temporary_folder.h"

#include <string>
#include <string_view>
#include <vector>

#include <fmt/format.h>

namespace bitlux::test {

using namespace std::string_view_literals;

/// Descriptors as a device sends them, numbers in the device's byte order.
inline constexpr std::string_view deviceDescriptor =
    "\x12\x01\x00\x02\x00\x00\x00\x40\x34\x12\xcd\xab\x00\x01\x01\x02\x00\x01"sv;
inline constexpr std::string_view vendorInterface = "\x09\x04\x00\x00\x02\xff\x00\x00\x00"sv;
inline constexpr std::string_view bulkIn = "\x07\x05\x81\x02\x40\x00\x00"sv;
inline constexpr std::string_view bulkOut = "\x07\x05\x02\x02\x40\x00\x00"sv;
inline constexpr std::string_view interruptIn = "\x07\x05\x81\x03\x08\x00\x0a"sv;
inline constexpr std::string_view interruptOut = "\x07\x05\x02\x03\x08\x00\x0a"sv;

inline std::string join(const std::vector<std::string_view>& parts) {
    std::string whole;
    for (const std::string_view part : parts)
        whole += part;
    return whole;
}

/// A configuration with its head, whose length covers `parts`.
inline std::string configuration(int value, const std::vector<std::string_view>& parts) {
    const std::string rest = join(parts);
    std::string head("\x09\x02\x00\x00\x01\x00\x00\x80\x32", 9);
    head[2] = static_cast<char>((rest.size() + head.size()) % 256);
    head[3] = static_cast<char>((rest.size() + head.size()) / 256);
    head[5] = static_cast<char>(value);
    return head + rest;
}

/// The descriptors of a dongle.
inline std::string dongleDescriptors() {
    return join({deviceDescriptor, configuration(1, {vendorInterface, bulkIn, bulkOut})});
}

/// Writes a device into a folder that replaces the kernel's list.
inline void plugIn(const TemporaryFolder& folder, const std::string& place, int address,
                   std::string_view descriptors) {
    folder.write(place + "/busnum", "1\n");
    folder.write(place + "/devnum", fmt::format("{}\n", address));
    folder.write(place + "/idVendor", "1234\n");
    folder.write(place + "/idProduct", "abcd\n");
    folder.write(place + "/bConfigurationValue", "1\n");
    folder.write(place + "/product", "Word dongle\n");
    folder.write(place + "/descriptors", descriptors);
}

} // namespace bitlux::test
