#include "platform/linux/linux_hardware.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

/// The list of dongles in a message.
std::string described(const std::vector<UsbCandidate>& dongles) {
    std::vector<std::string> texts;
    for (const UsbCandidate& dongle : dongles)
        texts.push_back(dongle.serial.empty() ? "one without a number"
                                              : printable(dongle.serial, longestSerial));
    return texts.empty() ? "no dongle that could be opened is plugged in"
                         : fmt::format("there is {}", fmt::join(texts, ", "));
}

} // namespace

LinuxHardware::LinuxHardware(HardwareChoice choice)
    : choice_(std::move(choice)),
      usb_(choice_.dongles ? UsbPlaces{} : UsbPlaces{.devices = {}}, choice_.serial),
      adapters_({}, choice_.adapters) {
    if (choice_.port)
        chosen_.emplace(ports_, *choice_.port);
}

void LinuxHardware::demandChosen(std::string_view deviceInterfaceClass) {
    if (chosen_)
        chosen_->demand();
    adapters_.demandChosen();
    if (choice_.serial.empty())
        return;
    const std::vector<UsbCandidate> dongles = DongleSearch(UsbPlaces{}).find(deviceInterfaceClass);
    if (std::none_of(dongles.begin(), dongles.end(),
                     [&](const UsbCandidate& dongle) { return dongle.serial == choice_.serial; }))
        throw Failure(Failure::Kind::LinkFailed,
                      fmt::format("There is no dongle with the serial number {}; {}.",
                                  printable(choice_.serial, longestSerial), described(dongles)));
}

ParallelPort& LinuxHardware::port() {
    if (chosen_)
        return *chosen_;
    return ports_;
}

} // namespace bitlux
