#include "engine_rig.h"

#include <array>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A second, plain reading of a type: what is written before the first bit, for a one, for a zero
/// and after the last bit, as sums of chip select 1, data in 2 and clock 4; R reads.
constexpr std::array<std::array<const char*, 4>, 8> readings{{{"0", "26R", "04R", "01"},
                                                              {"0", "62R", "40R", "1"},
                                                              {"4", "62R", "40R", "45"},
                                                              {"4", "26R", "04R", "5"},
                                                              {"04", "R26", "R04", "1"},
                                                              {"0", "R62", "R40", "1"},
                                                              {"40", "R62", "R40", "15"},
                                                              {"4", "R26", "R04", "5"}}};

std::string secondReading(const Session& session) {
    const auto& [before, one, zero, behind] =
        readings.at(static_cast<std::size_t>(session.SPIType - 1));
    std::string steps = before;
    const int last = session.SPIWordLength - 1;
    for (int n = 0; n <= last; ++n) {
        const int i = session.MSBFirst == ConstOn ? last - n : n;
        const bool isOne = session.WordToSend[static_cast<std::size_t>(i)] == 1;
        steps += isOne ? one : zero;
        if (session.SPIType == 5 && i == last) // which has no rising edge
            steps.replace(steps.size() - 2, 2, isOne ? "2" : "0");
        if (session.SPIType == 7 && n == last && isOne) // data in returns to rest after chip select
            steps += '3';
    }
    const bool isSkipped = session.SPIType == 7 && steps.back() == '3';
    std::string log;
    for (const char step : steps + (isSkipped ? behind + 1 : behind)) {
        const int pins = step - '0';
        const auto at = [](bool level, int pin) { return level ? 1 << pin : 0; };
        const int value = at(((pins & 1) != 0) == (session.CSIdleLevel == 1), session.CSPin) |
                          at(((pins & 2) != 0) == (session.DIOneLevel == 1), session.DIPin) |
                          at((pins & 4) != 0, session.ClockPin);
        log += step == 'R' ? " R379" : fmt::format(" {:02X}", value);
    }
    return log.substr(1);
}

void setPolarities(Session& session, bool csHigh, bool dataInverted) {
    session.CSAssertLevel = csHigh ? 1 : 0;
    session.CSIdleLevel = csHigh ? 0 : 1;
    session.DIOneLevel = dataInverted ? 0 : 1;
    session.DIZeroLevel = dataInverted ? 1 : 0;
}

TEST(WordEngine, AgreesWithAnIndependentModelForAllShapes) {
    std::mt19937 random(20261121);
    const int lengths[] = {1, 2, 3, 7, 8, 9, 16, 31, 32, 33, 40, 41, 64, 127, 159, 160};
    for (int type = 1; type <= 8; ++type)
        for (const Flag order : {ConstOn, ConstOff})
            for (const int length : lengths)
                for (int polarities = 0; polarities < 4; ++polarities) {
                    std::vector<std::int16_t> word(static_cast<std::size_t>(length));
                    for (auto& bit : word)
                        bit = static_cast<std::int16_t>(random() & 1U);
                    EngineRig rig(type, order, word);
                    rig.session.CSPin = 6;
                    rig.session.DIPin = 3;
                    rig.session.ClockPin = 0;
                    setPolarities(rig.session, (polarities & 1) != 0, (polarities & 2) != 0);
                    rig.session.DataPortPins = {};
                    rig.pins.rest();
                    rig.port.log.clear();
                    ASSERT_EQ(rig.send(), secondReading(rig.session))
                        << "type " << type << ", MSB first " << order.value() << ", " << length
                        << " bits, polarities " << polarities;
                }
}

} // namespace
} // namespace bitlux::test
