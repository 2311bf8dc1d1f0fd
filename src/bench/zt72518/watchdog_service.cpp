#include "bench/zt72518/watchdog_service.h"

#include "platform/dongle_commands.h"

#include <algorithm>
#include <array>
#include <limits>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr std::uint16_t refreshWord = 0x5A00;
constexpr std::uint16_t readRandomWord = 0x1B00;

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::array<std::int64_t, 10> periods{1, 2, 3, 5, 10, 50, 100, 500, 1000, 5000};
constexpr std::array<std::int64_t, 9> pauses{30, 50, 100, 200, 500, 1000, 2000, 5000, 10000};
constexpr std::array<const char*, 4> modeNames{"Simple WD", "Enhanced 1", "Enhanced 2",
                                               "Enhanced 4"};

} // namespace

void WatchdogService::command(const UsbFrame& frame, std::int64_t now) {
    if (frame[1] == dongle::watchdog)
        commandRefresh(frame, now);
    else if (frame[1] == dongle::watchdogCurrent)
        commandCurrent(frame, now);
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

void WatchdogService::serve(std::int64_t until, Chip* chip, const Exchange& exchange) {
    constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();
    for (;;) {
        const std::int64_t refreshDue = period_ > 0 ? refreshDue_ : never;
        const std::int64_t pulseDue = pause_ > 0 ? pulseEnds_ : never;
        const std::int64_t due = std::min(refreshDue, pulseDue);
        if (due > until)
            return;
        if (chip != nullptr)
            chip->timeIs(due);
        if (due == refreshDue) {
            refresh(exchange);
            refreshDue_ += period_;
            continue;
        }
        if (chip != nullptr)
            chip->drawCurrent(pulse_);
        pulseEnds_ += pause_ + pulse_;
    }
}

void WatchdogService::refresh(const Exchange& exchange) const {
    if (mode_ == RefreshMode::Simple) {
        exchange(refreshWord);
        return;
    }
    const int inverted = ~exchange(readRandomWord);
    for (const std::uint8_t mask : refreshSteps(mode_))
        exchange(static_cast<std::uint16_t>(refreshWord | (inverted & mask)));
}

std::string WatchdogService::refreshText() const {
    if (period_ == 0)
        return "off";
    return fmt::format("{} every {} ms", modeNames[static_cast<std::size_t>(mode_)],
                       period_ / millisecond);
}

std::string WatchdogService::currentText() const {
    if (pause_ == 0)
        return "off";
    return fmt::format("{} ms every {} ms", pulse_ / millisecond, (pause_ + pulse_) / millisecond);
}

} // namespace bitlux::zt72518
