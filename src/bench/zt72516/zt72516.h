#pragma once

#include "bench/model/model_part.h"

#include <memory>

namespace bitlux::zt72516 {

/// The peculiarities of the chip: its modes, the watchdog, the safe condition, the passcode, and
/// the dongle's refreshes.
///
/// Power comes up in Init with the watchdog inhibited, until the word that ends this or a SAFEb
/// choice other than the first. SPE_MODE takes the complement of the code that was read last, once;
/// a read draws another code. A reset takes the time of VDDrstD, in which the chip does not listen,
/// keeps the registers and ends in Init. A read of address 7 gives the code of enhanced refreshes.
/// SAFEb falls at the reset that WD SAFEb selects, counted since the last refresh; its acknowledge
/// ends that. Low power without VDD listens to nothing; what wakes the chip, by its timer, a word
/// or a flag, leads to Normal. With LPM w RND low power needs the complement of Rand_b. MODE reads
/// the state, Init 1, Flash 2, Normal 3, or the code of low power. Flags stay until they are turned
/// off. Test registers take writes in test mode alone, which another passcode ends. Unused bits are
/// kept like others.
std::unique_ptr<ModelPart> makePart(ModelStore& store);

} // namespace bitlux::zt72516
