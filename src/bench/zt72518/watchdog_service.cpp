#include "bench/zt72518/watchdog_service.h"

#include "platform/dongle_commands.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::uint16_t refreshWord = 0x5A00;
constexpr std::uint16_t readRandomWord = 0x1B00;
constexpr int wordBits = 16;
constexpr int wordType = 2;

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::array<std::int64_t, 10> periods{1, 2, 3, 5, 10, 50, 100, 500, 1000, 5000};
constexpr std::array<std::int64_t, 9> pauses{30, 50, 100, 200, 500, 1000, 2000, 5000, 10000};
constexpr std::array<const char*, 4> modeNames{"Simple WD", "Enhanced 1", "Enhanced 2",
                                               "Enhanced 4"};

} // namespace

std::optional<UsbFrame> WatchdogService::take(const UsbFrame& frame, DongleBus& bus) {
    if (!isCommand(frame, dongle::watchdog) && !isCommand(frame, dongle::watchdogCurrent))
        return std::nullopt;
    if (frame[1] == dongle::watchdog)
        commandRefresh(frame, bus.now());
    else
        commandCurrent(frame, bus.now());
    return UsbFrame{0, frame[1]};
}

void WatchdogService::commandRefresh(const UsbFrame& frame, std::int64_t now) {
    if (frame[3] == dongle::watchdogStop) {
        period_ = 0;
        return;
    }
    const std::size_t mode = frame[3] - std::size_t{dongle::watchdogFirstMode};
    if (mode >= modeNames.size() || frame[4] >= periods.size())
        return;
    mode_ = static_cast<RefreshMode>(mode);
    period_ = periods[frame[4]] * millisecond;
    refreshDue_ = now;
}

void WatchdogService::commandCurrent(const UsbFrame& frame, std::int64_t now) {
    if (frame[3] != dongle::watchdogCurrentOn) {
        pause_ = 0;
        return;
    }
    if (frame[6] >= pauses.size())
        return;
    pulse_ = frame[5] * millisecond;
    pause_ = pauses[frame[6]] * millisecond;
    pulseEnds_ = now + pulse_;
}

std::int64_t WatchdogService::due() const {
    return std::min(refreshDue(), pulseDue());
}

void WatchdogService::serve(DongleBus& bus) {
    while (refreshDue() <= bus.now()) {
        refresh(bus);
        refreshDue_ += period_;
    }
    while (pulseDue() <= bus.now()) {
        machine_.drawCurrent(pulse_);
        pulseEnds_ += pause_ + pulse_;
    }
}

void WatchdogService::refresh(DongleBus& bus) const {
    if (mode_ == RefreshMode::Simple) {
        bus.exchange(refreshWord, wordBits, wordType);
        return;
    }
    const std::uint64_t inverted = ~bus.exchange(readRandomWord, wordBits, wordType);
    for (const std::uint8_t mask : refreshSteps(mode_))
        bus.exchange(refreshWord | (inverted & mask), wordBits, wordType);
}

void WatchdogService::addPhase(Phase& phase, std::int64_t now) const {
    phase.push_back(period_ > 0 ? refreshDue_ - now : never);
    phase.push_back(pause_ > 0 ? pulseEnds_ - now : never);
}

void WatchdogService::skip(std::int64_t duration) {
    refreshDue_ += duration;
    pulseEnds_ += duration;
}

std::vector<Reading> WatchdogService::readings() const {
    const std::string refreshes =
        period_ == 0 ? "off"
                     : fmt::format("{} every {} ms", modeNames[static_cast<std::size_t>(mode_)],
                                   period_ / millisecond);
    const std::string current = pause_ == 0 ? "off"
                                            : fmt::format("{} ms every {} ms", pulse_ / millisecond,
                                                          (pause_ + pulse_) / millisecond);
    return {{"Dongle", "Watchdog", refreshes}, {"Dongle", "Current", current}};
}

} // namespace bitlux::zt72518
