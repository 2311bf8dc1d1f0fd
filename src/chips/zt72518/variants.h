#pragma once

#include "chips/register_map.h"

#include <array>
#include <string_view>

/// The variants of the ZT7251x family and what each of them lacks.
namespace bitlux::oldchips::zt72518 {

/// Captions of the selection; the first two tell the dongle's version, the others are variants.
inline constexpr std::array<std::string_view, 8> selectionCaptions{"Original BusTether version",
                                                                   "BusTether version for 72518",
                                                                   "ZT72518D",
                                                                   "ZT72518S",
                                                                   "ZT72511",
                                                                   "ZT72514",
                                                                   "ZT72514D",
                                                                   "ZT72514S"};
inline constexpr int firstVariant = 2;
inline constexpr int variantCount = 6;

/// Variants by bits: bit v for the v-th, the ZT72518D being the first.
using VariantSet = unsigned;
inline constexpr VariantSet v518D = 1U << 0;
inline constexpr VariantSet v518S = 1U << 1;
inline constexpr VariantSet v511 = 1U << 2;
inline constexpr VariantSet v514 = 1U << 3;
inline constexpr VariantSet v514D = 1U << 4;
inline constexpr VariantSet v514S = 1U << 5;

/// Controls of one name, `first` to `last` of an array, that are enabled on some variants and
/// disabled on the others. Whatever no row names stays as it is.
struct VariantControls {
    std::string_view name;
    VariantSet on = 0;
    int first = -1; ///< -1 for all of the name
    int last = -1;
};
extern const std::array<VariantControls, 39> variantControls;

/// A box of the diagram that is enabled and ticked on some variants, disabled and clear on others.
struct VariantBox {
    int box = 0;
    VariantSet on = 0;
};
extern const std::array<VariantBox, 5> variantBoxes;

/// A label that says something on some variants and "-" on those that no row of it names.
struct VariantCaption {
    ControlName label;
    std::string_view caption;
    VariantSet on = 0;
};
extern const std::array<VariantCaption, 20> variantCaptions;

} // namespace bitlux::oldchips::zt72518
