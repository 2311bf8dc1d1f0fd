#include "transfer/pin_layer.h"

#include "transfer/clocking_type.h"

#include <array>

namespace bitlux {

namespace {

/// Bit numbers of the pins "1" to "17": data register on pins 2 to 9, control register on 1, 14,
/// 16 and 17, status register on 10 to 13 and 15.
constexpr std::array<std::int16_t, 17> bitOfPin{0, 0, 1, 2, 3, 4, 5, 6, 7, 6, 7, 5, 4, 1, 3, 2, 3};
constexpr std::array<std::string_view, 17> pinNames{
    "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12", "13", "14", "15", "16", "17"};

} // namespace

std::int16_t ConvertPin(std::string_view pin) {
    for (std::size_t i = 0; i < pinNames.size(); ++i)
        if (pinNames[i] == pin)
            return bitOfPin[i];
    return 0;
}

void PinLayer::ToggleDataPort() {
    driveUsedPins();
    write(*port_, session_.LPTPortAddress, session_.DataPortPins.value());
    port_->complete();
    written.raise(PinRegister::Data);
}

void PinLayer::ToggleControlPort() {
    driveUsedPins();
    const auto address = static_cast<std::int16_t>(session_.LPTPortAddress + controlRegister);
    write(*port_, address, session_.ControlPortPins.value());
    port_->complete();
    written.raise(PinRegister::Control);
}

void PinLayer::driveUsedPins() {
    if (port_->collects())
        port_->drive(usedDataPins(session_), usedControlPins(session_));
}

void PinLayer::rest() {
    PortPins<8>& pins = session_.DataPortPins;
    pins.setLevel(session_.CSPin, session_.CSIdleLevel);
    pins.setLevel(session_.DIPin, session_.DIZeroLevel);
    pins.setLevel(session_.ClockPin, clockingType(session_.SPIType).idle == ConstHigh
                                         ? session_.ClockHighLevel
                                         : session_.ClockLowLevel);
    ToggleDataPort();
}

void PinLayer::startRecording(WireListener& listener, const Clock& clock) {
    stopRecording();
    listener_.emplace(Listener{listener, clock});
    recording_.emplace(*port_, listener, clock);
    port_ = &*recording_;
}

void PinLayer::stopRecording() {
    if (recording_) {
        port_ = &recording_->recorded();
        recording_.reset();
        listener_.reset();
    }
}

void PinLayer::use(ParallelPort& port) {
    if (!recording_) {
        port_ = &port;
        return;
    }
    recording_.emplace(port, listener_->listener, listener_->clock);
    port_ = &*recording_;
}

} // namespace bitlux
