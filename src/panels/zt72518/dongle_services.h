#pragma once

#include "session/session.h"
#include "transfer/dongle_link.h"

#include <cstdint>

/// Commands by which the dongle serves a chip of the family. Without a dongle they do nothing;
/// where one does not answer, the link has failed.
namespace bitlux::zt72518 {

/// Starts or stops the watchdog: its mode and 8, or 32 to stop, and the number of its time. Takes
/// up and clears USBFrameTopBit, as the next one does.
void sendWatchdog(Session& session, DongleLink& link, std::uint8_t mode, std::uint8_t time);
/// The pulse of current: 16 for on, 0 for off, its high time in ms and the number of its low time.
void sendWatchdogCurrent(Session& session, DongleLink& link, std::uint8_t on, std::uint8_t highTime,
                         std::uint8_t lowTime);
/// Burns what the bytes in the elements 8 and 0 of WordToSend tell, with data out low for so many
/// steps. Waits without limit.
void sendTrimming(Session& session, DongleLink& link, std::uint8_t txdLow);
/// Puts the dongle into test mode. One that does not answer, or that is gone, is no failure.
void enterTestMode(Session& session, DongleLink& link);

} // namespace bitlux::zt72518
