#pragma once

#include "transfer/wire_trace.h"

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// Names of the extra pins on bits 0 to 7 of the data register and, from element 8 on, on bits 0 to
/// 3 of the control register; empty where there is no pin.
using ExtraPinNames = std::array<std::string, 12>;

/// The shape and wiring of a word when it was sent. A frame of the dongle contains its own shape:
/// of a word through the dongle only `msbFirst` is used.
struct WordShape {
    bool onDongle = false;
    int length = 0; ///< bits
    int type = 1;   ///< 1 to 8
    bool msbFirst = true;
    bool selectedWhenHigh = false;
    bool dataInOneIsHigh = true;
    bool dataOutOneIsHigh = true;
    std::int16_t address = 0; ///< base of the port
    int chipSelectPin = 0;    ///< bits of the data register
    int clockPin = 0;
    int dataInPin = 0;
    int dataOutPin = 0; ///< bit of the status register
    std::shared_ptr<const ExtraPinNames> extraPins;
};

/// A recorded word: the accesses to the port, or the frame of the dongle and its answer.
struct WordRecord {
    std::uint64_t number = 0; ///< of the word since the recording began, from 1
    WordShape shape;
    bool complete = false; ///< false: the transfer failed, and this is what was sent until then
    bool rebuilt = false;  ///< the accesses are not timed but spread evenly over the word's time
    // Levels before the first access
    std::uint8_t dataBefore = 0;        ///< of the data register
    std::uint8_t controlBefore = 0;     ///< of the control register
    std::uint16_t donglePinsBefore = 0; ///< bits 0 to 4: Data 0 to Data 4; 5 to 8: Control 0 to 3
    /// The accesses before `firstOfWord` were made between the previous word and this one.
    std::vector<WireAccess> accesses;
    std::size_t firstOfWord = 0;
};

} // namespace bitlux
