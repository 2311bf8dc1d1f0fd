#pragma once

#include "bench/model/model_part.h"

#include <memory>

namespace bitlux::zt72361 {

/// The peculiarities of the chip and its predecessor: modes, the watchdog, interrupts, wake-ups,
/// and the dongle's writes of timer 1.
///
/// Power comes up in Standby. MCR selects the modes, 5 to 7 in debug mode, 1 to 4 outside it; 0
/// enters debug mode where the chip is, and leaves it. Sleep has to be allowed in RCR. The watchdog
/// runs in Normal, and in Stop where RCR says so, but not in debug mode. A period begins as it
/// starts to run and with each write of timer 1, also one at the very end of the last period; bit 2
/// of the timer does nothing. A period that is over sets WDRST and resets the chip. A reset takes 5
/// ms, in which the chip does not listen, clears the registers that are written, and ends in
/// Standby.
///
/// A read of RCR gives what was written. A read of MCR clears WDRST, a write of CAN with bit 3 the
/// flags of CAN, TIM and LPC; all others stay until they are turned off. INTR has the flags that
/// interrupt, without those whose mask is set. Wake-up flags interrupt as well.
///
/// In Stop and Sleep a wake-up flag wakes the chip as it turns on: one of an input that is
/// sensitive to any level, and that of CAN, asleep with its wake-up enabled. Stop leads to Standby,
/// Sleep to a reset. Sleep does not listen. Timer 2 and LPC are kept and do nothing.
std::unique_ptr<ModelPart> makePart(ModelStore& store);

} // namespace bitlux::zt72361
