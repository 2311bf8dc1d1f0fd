#pragma once

#include "bench/model/model_part.h"

#include <memory>

namespace bitlux::zt72518 {

/// The peculiarities of a chip of the family: its modes, watchdog and wake-ups; the status, which
/// is made of the flags; the random words; parity; views of the chip's state; and the services of
/// the dongle.
///
/// A word of another length sets SPI ERR. With SPI parity on, a write whose parity is wrong changes
/// nothing and sets SPI ERR; Special Mode and Watchdog Refresh, whose words carry none, are not
/// checked. A read without its read bit reads nothing. The watchdog follows Init Wdog, which is 00
/// at first: simple, without a window. It runs in debug as well. All variants have all registers.
std::unique_ptr<ModelPart> makePart(ModelStore& store);

} // namespace bitlux::zt72518
