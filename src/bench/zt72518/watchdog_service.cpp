#include "bench/zt72518/watchdog_service.h"

#include "platform/dongle_commands.h"
#include "platform/time_units.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr RefreshService::Chip family{
    .command = dongle::watchdog,
    .stop = dongle::watchdogStop,
    .refresh = 0x5A00,
    .readCode = 0x1B00,
    .bits = 16,
    .type = 2,
    .modes = {"Simple WD", "Enhanced 1", "Enhanced 2", "Enhanced 4"}};

constexpr std::array<std::int64_t, 9> pauses{30, 50, 100, 200, 500, 1000, 2000, 5000, 10000};

} // namespace

WatchdogService::WatchdogService(ModeMachine& machine) : machine_(machine), refreshes_(family) {}

std::optional<UsbFrame> WatchdogService::take(const UsbFrame& frame, DongleBus& bus) {
    if (!isCommand(frame, dongle::watchdogCurrent))
        return refreshes_.take(frame, bus);
    commandCurrent(frame, bus.now());
    return UsbFrame{0, frame[1]};
}

void WatchdogService::commandCurrent(const UsbFrame& frame, std::int64_t now) {
    if (frame[3] != dongle::watchdogCurrentOn)
        return pulseEnds_.clear();
    if (frame[6] >= pauses.size())
        return;
    pulse_ = frame[5] * millisecond;
    pause_ = pauses[frame[6]] * millisecond;
    pulseEnds_.set(now + pulse_);
}

std::int64_t WatchdogService::due() const {
    return std::min(refreshes_.due(), pulseEnds_.at());
}

void WatchdogService::serve(DongleBus& bus) {
    refreshes_.serve(bus);
    for (; pulseEnds_.isDue(bus.now()); pulseEnds_.set(pulseEnds_.at() + pause_ + pulse_))
        machine_.drawCurrent(pulse_);
}

void WatchdogService::addPhase(Phase& phase, std::int64_t now) const {
    refreshes_.addPhase(phase, now);
    pulseEnds_.addPhase(phase, now);
}

void WatchdogService::skip(std::int64_t duration) {
    refreshes_.skip(duration);
    pulseEnds_.skip(duration);
}

std::vector<Reading> WatchdogService::readings() const {
    std::vector<Reading> all = refreshes_.readings();
    all.push_back({"Dongle", "Current",
                   pulseEnds_.isSet() ? fmt::format("{} ms every {} ms", pulse_ / millisecond,
                                                    (pause_ + pulse_) / millisecond)
                                      : "off"});
    return all;
}

} // namespace bitlux::zt72518
