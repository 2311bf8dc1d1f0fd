#include "panels/zt72518/dongle_services.h"

#include "platform/dongle_commands.h"
#include "transfer/dongle_frame.h"

#include <utility>

namespace bitlux::zt72518 {

namespace {

/// With the pulse on the trigger output that the next frame was asked for.
UsbFrame triggered(std::uint8_t number, Session& session) {
    UsbFrame frame = commandFrame(number);
    if (std::exchange(session.USBFrameTopBit, false))
        frame[0] = dongle::triggerBit;
    return frame;
}

} // namespace

void sendWatchdog(Session& session, DongleLink& link, std::uint8_t mode, std::uint8_t time) {
    if (!session.USBReady)
        return;
    UsbFrame frame = triggered(dongle::watchdog, session);
    frame[3] = mode;
    frame[4] = time;
    UsbFrame answer{};
    link.exchange(frame, answer, DongleLink::Wait::Limited);
}

void sendWatchdogCurrent(Session& session, DongleLink& link, std::uint8_t on, std::uint8_t highTime,
                         std::uint8_t lowTime) {
    if (!session.USBReady)
        return;
    UsbFrame frame = triggered(dongle::watchdogCurrent, session);
    frame[3] = on;
    frame[5] = highTime;
    frame[6] = lowTime;
    UsbFrame answer{};
    link.exchange(frame, answer, DongleLink::Wait::Limited);
}

void sendTrimming(Session& session, DongleLink& link, std::uint8_t txdLow) {
    if (!session.USBReady)
        return;
    UsbFrame frame = commandFrame(dongle::trimming);
    frame[3] = static_cast<std::uint8_t>(session.WordToSend.at(8));
    frame[4] = static_cast<std::uint8_t>(session.WordToSend.at(0));
    frame[5] = txdLow;
    UsbFrame answer{};
    link.exchange(frame, answer, DongleLink::Wait::Unlimited);
}

void enterTestMode(Session& session, DongleLink& link) {
    if (!session.USBReady)
        return;
    UsbFrame frame = commandFrame(dongle::testMode);
    frame[2] = dongle::testModeKey;
    UsbFrame answer{};
    link.exchange(frame, answer, DongleLink::Wait::Quiet);
}

} // namespace bitlux::zt72518
