#include "engine_rig.h"

#include <map>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A second, plain reading of the clocking types, written without the tables of the engine: pins
/// by name, one line of text a type.
class Model {
public:
    explicit Model(const Session& session) : session_(session) {
        level_["CS"] = session.CSIdleLevel;
        level_["DI"] = session.DIZeroLevel;
        level_["CLK"] = idleClock();
    }

    std::string send() {
        static const std::map<int, std::string> programs{{1, "LHR"}, {2, "HLR"}, {3, "HLR"},
                                                         {4, "LHR"}, {5, "RLH"}, {6, "RHL"},
                                                         {7, "RHL"}, {8, "RLH"}};
        const int last = session_.SPIWordLength - 1;
        write({{"CS", session_.CSAssertLevel}});
        if (session_.SPIType == 5)
            write({{"CLK", 1}});
        if (session_.SPIType == 7)
            write({{"CLK", 0}});
        for (int n = 0; n <= last; ++n) {
            const int i = session_.MSBFirst == ConstOn ? last - n : n;
            level_["DI"] = session_.WordToSend[static_cast<std::size_t>(i)] == 1
                               ? session_.DIOneLevel
                               : session_.DIZeroLevel;
            std::string program = programs.at(session_.SPIType);
            if (session_.SPIType == 5 && i == last)
                program = "RL";
            for (const char step : program)
                if (step == 'R')
                    log_ += " R379";
                else
                    write({{"CLK", step == 'H' ? 1 : 0}});
        }
        if (session_.SPIType == 1 || session_.SPIType == 3)
            write({{"CLK", idleClock()}, {"DI", session_.DIZeroLevel}});
        if (session_.SPIType == 7)
            write({{"CS", session_.CSIdleLevel}});
        write({{"CS", session_.CSIdleLevel}, {"DI", session_.DIZeroLevel}, {"CLK", idleClock()}});
        return log_.substr(1);
    }

private:
    [[nodiscard]] int idleClock() const { return "00110011"[session_.SPIType - 1] - '0'; }

    void write(const std::map<std::string, int>& changes) {
        for (const auto& [pin, level] : changes)
            level_[pin] = level;
        const int value = level_["CS"] << session_.CSPin | level_["DI"] << session_.DIPin |
                          level_["CLK"] << session_.ClockPin;
        log_ += fmt::format(" {:02X}", value);
    }

    const Session& session_;
    std::map<std::string, int> level_;
    std::string log_;
};

void setPolarities(Session& session, bool csHigh, bool dataInverted) {
    session.CSAssertLevel = csHigh ? 1 : 0;
    session.CSIdleLevel = csHigh ? 0 : 1;
    session.DIOneLevel = dataInverted ? 0 : 1;
    session.DIZeroLevel = dataInverted ? 1 : 0;
}

TEST(WordEngine, AgreesWithASecondReadingForAllShapes) {
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
                    ASSERT_EQ(rig.send(), Model(rig.session).send())
                        << "type " << type << ", MSB first " << order.value() << ", " << length
                        << " bits, polarities " << polarities;
                }
}

} // namespace
} // namespace bitlux::test
