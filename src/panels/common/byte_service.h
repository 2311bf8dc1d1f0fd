#pragma once

#include "panels/common/panel_surroundings.h"
#include "panels/common/service_note.h"

#include <cstdint>

namespace bitlux {

/// The dongle sends a word of one byte to the chip periodically, or stops.
struct ByteService {
    std::uint8_t chip = 0; ///< number of the service in the dongle
    int state = 0;         ///< 0 stops it
    int word = 0;
    int period = 0; ///< in the unit of the chip's service
};

/// Sends the command to the dongle, and the result to `note`; no effect without a dongle. Raises
/// Failure (Overflow) for a value that is not a byte.
void commandByteService(const PanelSurroundings& outside, const ByteService& service,
                        ServiceNote& note);

} // namespace bitlux
