#include "bench/zt72516/refresh_service.h"

#include "platform/dongle_commands.h"

#include <array>

#include <fmt/format.h>

namespace bitlux::zt72516 {

namespace {

constexpr std::uint64_t refreshWord = 0x47000000;
constexpr std::uint64_t readCodeWord = 0x07000000;
constexpr int wordBits = 32;
constexpr int wordType = 1;

constexpr std::int64_t millisecond = 1'000'000;
constexpr std::array<std::int64_t, 10> periods{1, 2, 3, 5, 10, 50, 100, 500, 1000, 5000};
constexpr std::array<const char*, 4> modeNames{"Simple", "Advanced 1", "Advanced 2", "Advanced 4"};

} // namespace

std::optional<UsbFrame> RefreshService::take(const UsbFrame& frame, DongleBus& bus) {
    if (!isCommand(frame, dongle::watchdog72516))
        return std::nullopt;
    const UsbFrame answer{0, frame[1]};
    if (frame[3] == 0) {
        period_ = 0;
        return answer;
    }
    const std::size_t mode = frame[3] - std::size_t{dongle::watchdogFirstMode};
    if (mode >= modeNames.size() || frame[4] >= periods.size())
        return answer;
    mode_ = static_cast<zt72518::RefreshMode>(mode);
    period_ = periods[frame[4]] * millisecond;
    due_ = bus.now();
    return answer;
}

void RefreshService::serve(DongleBus& bus) {
    while (due() <= bus.now()) {
        refresh(bus);
        due_ += period_;
    }
}

void RefreshService::refresh(DongleBus& bus) const {
    if (mode_ == zt72518::RefreshMode::Simple) {
        bus.exchange(refreshWord, wordBits, wordType);
        return;
    }
    const std::uint64_t inverted = ~bus.exchange(readCodeWord, wordBits, wordType);
    for (const std::uint8_t mask : zt72518::refreshSteps(mode_))
        bus.exchange(refreshWord | (inverted & mask), wordBits, wordType);
}

std::vector<Reading> RefreshService::readings() const {
    return {{"Dongle", "Watchdog",
             period_ == 0
                 ? "off"
                 : fmt::format("{} every {} ms", modeNames[static_cast<std::size_t>(mode_)],
                               period_ / millisecond)}};
}

} // namespace bitlux::zt72516
