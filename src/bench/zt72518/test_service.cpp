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
    constexpr std::uint64_t firstWord = 0x4200;
    constexpr std::uint64_t secondWord = 0x4400;
    constexpr int wordBits = 16;
    constexpr int wordType = 2;
    bus.exchange(firstWord | frame[3], wordBits, wordType);
    bus.exchange(secondWord | frame[4], wordBits, wordType);
    if (mode_.on)
        mode_.trimming = fmt::format("{:02X} {:02X}, TXD low {}", state_.value(Register::RamA),
                                     state_.value(Register::RamB), frame[5]);
}

} // namespace bitlux::zt72518
