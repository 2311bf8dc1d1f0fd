#pragma once

#include <span>
#include <string_view>

namespace bitlux::chips {

/// A chip of the product: its file as a text embedded by the build. What lists of devices show is
/// stored separately, so that they need not parse the text.
struct EmbeddedChip {
    struct Device {
        std::string_view name;
        std::string_view description;
    };

    std::string_view name;
    std::span<const Device> devices;
    std::string_view text;
};

/// In the order of their names.
std::span<const EmbeddedChip> embeddedChips();

} // namespace bitlux::chips
