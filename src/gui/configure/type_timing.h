#pragma once

#include "transfer/clocking_type.h"

#include <vector>

namespace bitlux::gui {

/// A short word of one SPI type on the bus: the writes of the word engine, evenly spaced, and a
/// chip that follows the edges of the type. Times are in writes, each half a bit; the word begins
/// after some idle time.
struct TypeTiming {
    static constexpr int bits = 4;
    static constexpr int end = 15; ///< leaves the longest type as much idle time as before the word
    static constexpr int noBit = -1;

    struct ClockEdge {
        int at;
        Edge edge;
        bool valid;   ///< the chip takes data; false without chip select
        bool toggled; ///< the chip changes data; false without chip select
    };
    /// The data is stable; `bit` counts from the least significant one, or is noBit.
    struct Window {
        int from;
        int to;
        int bit;
    };
    struct Read {
        double at; ///< next to the write that comes before or after it
        int bit;   ///< the bit that is sampled
    };

    int selected = 0;
    int deselected = 0;
    std::vector<ClockEdge> clock;
    std::vector<Window> dataIn;  ///< zero outside
    std::vector<Window> dataOut; ///< while chip select is asserted
    std::vector<Read> reads;
};

[[nodiscard]] TypeTiming typeTiming(const ClockingType& type, bool msbFirst = true);

} // namespace bitlux::gui
