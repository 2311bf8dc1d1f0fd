#include "bench/model/refresh_service.h"

#include "platform/dongle_commands.h"
#include "platform/time_units.h"

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::array<std::int64_t, 10> periods{1, 2, 3, 5, 10, 50, 100, 500, 1000, 5000};

} // namespace

std::optional<UsbFrame> RefreshService::take(const UsbFrame& frame, DongleBus& bus) {
    if (!isCommand(frame, chip_.command))
        return std::nullopt;
    const UsbFrame answer{0, frame[1]};
    const std::size_t mode = frame[3] - std::size_t{dongle::watchdogFirstMode};
    if (frame[3] == chip_.stop) {
        due_.clear();
    } else if (mode < chip_.modes.size() && frame[4] < periods.size()) {
        mode_ = static_cast<RefreshMode>(mode);
        period_ = periods[frame[4]] * millisecond;
        due_.set(bus.now());
    }
    return answer;
}

void RefreshService::serve(DongleBus& bus) {
    for (; due_.isDue(bus.now()); due_.set(due_.at() + period_))
        refresh(bus);
}

void RefreshService::refresh(DongleBus& bus) const {
    if (mode_ == RefreshMode::Simple) {
        bus.exchange(chip_.refresh, chip_.bits, chip_.type);
        return;
    }
    const std::uint64_t inverted = ~bus.exchange(chip_.readCode, chip_.bits, chip_.type);
    for (const std::uint8_t mask : refreshSteps(mode_))
        bus.exchange(chip_.refresh | (inverted & mask), chip_.bits, chip_.type);
}

std::vector<Reading> RefreshService::readings() const {
    return {{"Dongle", "Watchdog",
             due_.isSet()
                 ? fmt::format("{} every {} ms", chip_.modes[static_cast<std::size_t>(mode_)],
                               period_ / millisecond)
                 : "off"}};
}

} // namespace bitlux
