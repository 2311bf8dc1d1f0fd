#pragma once

#include "bench/chip.h"
#include "bench/zt72518/state.h"

#include <vector>

namespace bitlux::zt72518 {

/// What a user of the bench may turn, and the bit that stands for it.
struct SwitchTable {
    std::vector<ChipSwitch> switches;
    std::vector<Bit> bits;
};

/// Made once, from the captions of the flag rows; bits without a caption have no switch.
const SwitchTable& switchTable();

} // namespace bitlux::zt72518
