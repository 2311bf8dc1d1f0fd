#include "workbench/bench_wiring.h"

#include "transfer/clocking_type.h"

namespace bitlux {

BusShape busShapeOf(const Session& session, int spiType) {
    const ClockingType& type = clockingType(spiType);
    return {.chipSelectPin = session.CSPin,
            .dataInPin = session.DIPin,
            .clockPin = session.ClockPin,
            .dataOutPin = session.DOPin,
            .selectedWhenHigh = session.CSAssertLevel == ConstHigh,
            .dataInOneIsHigh = session.DIOneLevel == ConstHigh,
            .dataOutOneIsHigh = session.DOHighValue == 1,
            .validOnRising = type.valid == Edge::Rising,
            .toggledOnRising = type.toggled == Edge::Rising,
            .clockIdlesHigh = type.idle == ConstHigh,
            .wordLength = session.SPIWordLength,
            .msbFirst = session.MSBFirst == ConstOn};
}

} // namespace bitlux
