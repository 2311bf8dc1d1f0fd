#pragma once

#include "panels/common/panel_surroundings.h"
#include "panels/common/service_note.h"

#include <cstdint>

namespace bitlux {

/// The dongle sends a word of one byte to the chip again and again, or stops.
struct ByteService {
    std::uint8_t chip = 0; ///< that the dongle knows the service by
    int state = 0;         ///< 0 stops it
    int word = 0;
    int period = 0; ///< as the chip's service counts it
};

/// Tells the dongle, and `note` what became of it; nothing without one. Raises Failure (Overflow)
/// for what is no byte.
void tellByteService(const PanelSurroundings& outside, const ByteService& service,
                     ServiceNote& note);

} // namespace bitlux
