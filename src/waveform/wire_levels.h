#pragma once

#include "waveform/word_record.h"

namespace bitlux {

/// The content of a dongle's frame with a word.
struct CommandedWord {
    explicit CommandedWord(const UsbFrame& frame);

    int length;              ///< bits
    int type;                ///< 1 to 8
    bool changesPins;        ///< the extra pins get the levels of the frame
    std::uint16_t extraPins; ///< bits 0 to 4: Data 0 to Data 4; 5 to 8: Control 0 to 3
    bool selectedWhenHigh;
    bool dataInOneIsHigh;
    bool dataOutOneIsHigh;
    std::int64_t halfPeriod; ///< of the clock, in nanoseconds
};

/// The n-th bit of a frame in the order of transfer, from 0; 0 beyond the frame.
bool bitOf(const UsbFrame& frame, int n);

/// Copies the levels after a record to those before the next.
void carryLevels(const WordRecord& record, WordRecord& next);

} // namespace bitlux
