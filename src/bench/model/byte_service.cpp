#include "bench/model/byte_service.h"

#include "platform/dongle_commands.h"
#include "platform/time_units.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int serviceBits = 8;
constexpr std::uint8_t off = 0;

/// A word whose data leaves the last byte of the frame free.
bool isShortWord(const UsbFrame& frame) {
    constexpr int lengthBits = 0x3F;
    constexpr int longest = 32;
    const int length = frame[0] & lengthBits;
    return length > 0 && length <= longest;
}

} // namespace

std::optional<UsbFrame> ByteService::take(const UsbFrame& frame, DongleBus& bus) {
    if (chip_.stoppedByWords && isShortWord(frame) && frame.back() == 1)
        due_.clear();
    if (!isCommand(frame, dongle::serveByte) || frame[6] != chip_.number)
        return std::nullopt;
    command(frame, bus.now());
    return UsbFrame{0, frame[1]};
}

void ByteService::command(const UsbFrame& frame, std::int64_t now) {
    if (frame[3] != off && frame[3] != chip_.on)
        return;
    word_ = frame[4];
    period_ = frame[5] * chip_.step;
    if (frame[3] == off || period_ == 0)
        due_.clear();
    else
        due_.set(due_.isSet() ? std::min(due_.at(), now + period_) : now);
}

void ByteService::serve(DongleBus& bus) {
    for (; due_.isDue(bus.now()); due_.set(due_.at() + period_))
        bus.exchange(word_, serviceBits, chip_.type);
}

void ByteService::addPhase(Phase& phase, std::int64_t now) const {
    due_.addPhase(phase, now);
    phase.insert(phase.end(), {word_, period_});
}

std::vector<Reading> ByteService::readings() const {
    return {{"Dongle", "Watchdog",
             due_.isSet() ? fmt::format("{:02X} every {} ms", word_,
                                        static_cast<double>(period_) / double{millisecond})
                          : "off"}};
}

} // namespace bitlux
