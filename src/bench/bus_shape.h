#pragma once

#include <cstdint>
#include <functional>

namespace bitlux {

/// How a device on the virtual bench is wired and clocked. It follows the current settings, as an
/// engineer would wire the chip.
struct BusShape {
    int chipSelectPin = 0; ///< bits of the data register
    int dataInPin = 1;
    int clockPin = 2;
    int dataOutPin = 5; ///< bit of the status register

    bool selectedWhenHigh = false;
    bool dataInOneIsHigh = true;
    bool dataOutOneIsHigh = true;

    bool validOnRising = true;    ///< the clock edge on which data is valid
    bool toggledOnRising = false; ///< the clock edge on which data changes
    bool clockIdlesHigh = false;

    int wordLength = 8; ///< bits
    bool msbFirst = true;
};

/// Returns the current shape at each call.
using BusShapeSource = std::function<BusShape()>;

} // namespace bitlux
