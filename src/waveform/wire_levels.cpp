#include "waveform/wire_levels.h"

#include "transfer/dongle_frame.h"

namespace bitlux {

CommandedWord::CommandedWord(const UsbFrame& frame)
    : length(frame[0] & 0x3F),
      type((frame[1] & 7) + 1),
      changesPins((frame[0] & 0x40) != 0),
      extraPins(static_cast<std::uint16_t>(frame[2] | (frame[0] & 0x80) << 1)),
      selectedWhenHigh((frame[1] & 0x08) != 0),
      dataInOneIsHigh((frame[1] & 0x10) != 0),
      dataOutOneIsHigh((frame[1] & 0x20) != 0) {
    constexpr std::array<std::int64_t, 4> byCode{125, 500, 1000, 8000}; // 4 MHz to 62.5 kHz
    halfPeriod = byCode.at(frame[1] >> 6U);
}

bool bitOf(const UsbFrame& frame, int n) {
    const std::size_t byte = frameData + static_cast<std::size_t>(n / 8);
    return byte < frame.size() && ((frame.at(byte) >> (7 - n % 8)) & 1) != 0;
}

void carryLevels(const WordRecord& record, WordRecord& next) {
    next.dataBefore = record.dataBefore;
    next.controlBefore = record.controlBefore;
    next.donglePinsBefore = record.donglePinsBefore;
    bool data = false; // found
    bool control = false;
    for (auto access = record.accesses.rbegin(); access != record.accesses.rend(); ++access) {
        if (access->kind == WireAccess::Kind::FrameOut) {
            const CommandedWord word(access->frame);
            if (word.changesPins)
                next.donglePinsBefore = word.extraPins;
        } else if (access->kind == WireAccess::Kind::Write) {
            const int offset = access->address - record.shape.address;
            if (offset == dataRegister && !data) {
                next.dataBefore = access->value;
                data = true;
            } else if (offset == controlRegister && !control) {
                next.controlBefore = access->value;
                control = true;
            }
        }
    }
}

} // namespace bitlux
