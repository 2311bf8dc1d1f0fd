#pragma once

namespace bitlux::test {

/// The file of a chip of 15-bit words, lamp_chip.toml.
extern const char* const lampChip;

} // namespace bitlux::test
