#pragma once

#include "bench/model/model_part.h"

#include <memory>

namespace bitlux::zt72537 {

/// The peculiarities of the chip: its modes, the watchdog, interrupts, wake-ups, and the dongle's
/// clear words.
///
/// Power comes up in Normal. The watchdog waits for the first clear word, there and after each
/// reset and wake-up. The resistor of the bench is 20 kOhm, a period of 10 ms, times the prescaler
/// as it is at a clear. The first half of a period is too early for the next clear: that, and a
/// period that is over, resets the chip. A reset takes 5 ms, in which the chip does not listen, and
/// clears the registers that are written. TIMCR holds prescaler and interval apart.
///
/// WDWO is on in the second half of a period, WDOFF while no period runs; a read of WDSR clears
/// WDERR and WDTO. All other flags stay until they are turned off. ISR has the lowest pending code.
/// Over-temperature is all four flags of a side. A mask that is set holds the interrupt back. What
/// woke the chip is pending until ISR is read.
///
/// Stop listens, and any word for Normal ends it. Sleep does neither; what ends it is followed by a
/// reset. With an interval the chip wakes itself after it; with a high side on and inputs enabled
/// it samples these each time instead, and wakes for one that is on. Otherwise an enabled input
/// wakes the chip as it turns on. LIN always does.
std::unique_ptr<ModelPart> makePart(ModelStore& store);

} // namespace bitlux::zt72537
