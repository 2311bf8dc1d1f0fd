#pragma once

#include <span>
#include <string_view>

namespace bitlux::chips {

/// A chip of the product: its file as a text that the build took in.
struct EmbeddedChip {
    std::string_view name;
    std::string_view text;
};

/// In the order of their names.
std::span<const EmbeddedChip> embeddedChips();

} // namespace bitlux::chips
