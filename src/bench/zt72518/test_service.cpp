#include "bench/zt72518/test_service.h"

#include "platform/dongle_commands.h"

#include <fmt/format.h>

namespace bitlux::zt72518 {

std::optional<UsbFrame> TestService::take(const UsbFrame& frame, DongleBus& bus) {
    if (isCommand(frame, dongle::trimming))
        trim(frame, bus);
    else if (isCommand(frame, dongle::testMode) && frame[2] == dongle::testModeKey)
        mode_.on = true;
    else
        return std::nullopt;
    return UsbFrame{0, frame[1]};
}

void TestService::trim(const UsbFrame& frame, DongleBus& bus) {
    constexpr std::uint64_t firstTest = 0x4200;
    constexpr std::uint64_t secondTest = 0x4400;
    constexpr int length = 16;
    constexpr int spiType = 2;
    bus.exchange(firstTest | frame[3], length, spiType);
    bus.exchange(secondTest | frame[4], length, spiType);
    if (mode_.on)
        mode_.trimming = fmt::format("{:02X} {:02X}, TXD low {}", state_.value(Register::RamA),
                                     state_.value(Register::RamB), frame[5]);
}

} // namespace bitlux::zt72518
