#pragma once

#include "platform/parallel_port.h"
#include "transfer/clocking_type.h"

#include <cstdint>
#include <vector>

namespace bitlux::perf {

/// The least that can be done to send a word: the port calls of a clocking type in a plain loop,
/// with every byte known beforehand.
class BareLoop {
public:
    BareLoop(ParallelPort& port, int type, bool msbFirst, int length);
    void send();

private:
    ParallelPort& port_;
    const ClockingType& type_;
    int length_;
    int leading_;  ///< writes before the first bit
    int trailing_; ///< writes after the last bit
    bool firstBitShort_;
    bool lastBitShort_;
    std::vector<std::uint8_t> bytes_;
    std::vector<std::int16_t> samples_;
};

} // namespace bitlux::perf
