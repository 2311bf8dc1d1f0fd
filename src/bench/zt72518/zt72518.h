#pragma once

#include "bench/chip.h"

#include <array>
#include <memory>
#include <string_view>

namespace bitlux::zt72518 {

/// A chip of the family, as a name of the bench.
struct Variant {
    std::string_view name;
    std::uint8_t identity; ///< high view of Interrupts: 5 V, the device, revision 2.1
};

inline constexpr std::array<Variant, 6> variants{{{"zt72518d", 0xEA},
                                                  {"zt72518s", 0xCA},
                                                  {"zt72511", 0xAA},
                                                  {"zt72514", 0x8A},
                                                  {"zt72514d", 0x8A},
                                                  {"zt72514s", 0x8A}}};

/// The chip on words of 16 bits, most significant first; a word of another length is not carried
/// out and sets SPI ERR. The reply belongs to the word during which it is given: its high byte is
/// the status, its low byte what the word reads, or the general flags where it reads nothing. Which
/// view a read wants is told by its bit 7 while bit 7 of the reply stands on the output.
///
/// All variants have all registers. A flag read clears its row. With SPI parity on, a write whose
/// parity is wrong changes nothing and sets SPI ERR; Special Mode and Watchdog Refresh, whose words
/// carry none, are not checked. The watchdog follows Init Wdog, which is 00 at first: simple,
/// without a window. It runs in debug as well.
std::unique_ptr<Chip> makeChip(const Variant& variant);

} // namespace bitlux::zt72518
