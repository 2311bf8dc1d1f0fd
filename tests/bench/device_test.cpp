#include "bench/simulated_port.h"
#include "platform/failure.h"
#include "support/test_bench.h"

#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// How a word is transferred: all that must make no difference to a device.
struct Shape {
    int type = 1;
    bool msbFirst = true;
    bool csHigh = false;
    bool diInverted = false;
    bool doInverted = false;
    int length = 8;

    friend std::ostream& operator<<(std::ostream& out, const Shape& shape) {
        return out << "type " << shape.type << (shape.msbFirst ? ", MSB first" : ", LSB first")
                   << (shape.csHigh ? ", CS high" : "") << (shape.diInverted ? ", DI inverted" : "")
                   << (shape.doInverted ? ", DO inverted" : "");
    }
};

std::vector<Shape> allShapes() {
    std::vector<Shape> shapes;
    for (int type = 1; type <= 8; ++type)
        for (unsigned choice = 0; choice < 16; ++choice)
            shapes.push_back({.type = type,
                              .msbFirst = (choice & 1U) != 0,
                              .csHigh = (choice & 2U) != 0,
                              .diInverted = (choice & 4U) != 0,
                              .doInverted = (choice & 8U) != 0});
    return shapes;
}

/// The program with a device on the parallel port.
class DeviceRig : public TestBench {
public:
    DeviceRig(const std::string& device, const Shape& shape,
              const std::vector<std::string>& replies = {})
        : TestBench(device, replies) {
        configure(std::to_string(shape.length));
        session().SPIType = static_cast<std::int16_t>(shape.type);
        session().MSBFirst = shape.msbFirst ? ConstOn : ConstOff;
        session().CSAssertLevel = shape.csHigh ? ConstHigh : ConstLow;
        session().CSIdleLevel = shape.csHigh ? ConstLow : ConstHigh;
        session().DIOneLevel = shape.diInverted ? ConstLow : ConstHigh;
        session().DIZeroLevel = shape.diInverted ? ConstHigh : ConstLow;
        session().DOHighValue = shape.doInverted ? 0 : 1;
        session().DOLowValue = shape.doInverted ? 1 : 0;
        program.pins().rest();
    }

    /// Sends a word and returns the answer.
    unsigned exchange(unsigned word) {
        session().WordToSend.resize(static_cast<std::size_t>(session().SPIWordLength));
        for (std::size_t bit = 0; bit < session().WordToSend.size(); ++bit)
            session().WordToSend[bit] = static_cast<std::int16_t>((word >> bit) & 1U);
        program.engine().SendSPI();
        unsigned answer = 0;
        for (std::size_t bit = 0; bit < session().WordReceived.size(); ++bit)
            answer |= static_cast<unsigned>(session().WordReceived[bit]) << bit;
        return answer;
    }
};

TEST(Device, EchoAnswersWithThePreviousWordInEveryTypeAndOrder) {
    for (const Shape& shape : allShapes()) {
        if (shape.type == 5 && shape.msbFirst)
            continue;
        DeviceRig rig("echo", shape);
        EXPECT_EQ(rig.exchange(0xA5), 0x00U) << shape;
        EXPECT_EQ(rig.exchange(0xC3), 0xA5U) << shape;
        EXPECT_EQ(rig.exchange(0x01), 0xC3U) << shape;
        EXPECT_EQ(rig.exchange(0x80), 0x01U) << shape;
    }
}

TEST(Device, EchoMissesABitWhereTheClockMissesAnEdge) {
    // Type 5 leaves out the rising edge after the most significant bit, and with it the falling
    // edge of the next: that bit is not taken in, and on the way back the one after it is seen
    // twice. A5 is taken in as 1100101 and comes back as 11100101.
    DeviceRig rig("echo", {.type = 5});
    EXPECT_EQ(rig.exchange(0xA5), 0x00U);
    EXPECT_EQ(rig.exchange(0xC3), 0xE5U);
    EXPECT_EQ(rig.exchange(0x7F), 0x83U);
    EXPECT_EQ(rig.exchange(0x00), 0x7FU);
}

TEST(Device, LoopbackReturnsTheLevelOfDataIn) {
    // Types 5 to 8 sample before the bit is put on the line, so they see the one before it.
    const std::pair<Shape, unsigned> cases[] = {
        {{.type = 1}, 0xA6},
        {{.type = 2}, 0xA6},
        {{.type = 3, .msbFirst = false}, 0xA6},
        {{.type = 4, .csHigh = true}, 0xA6},
        {{.type = 1, .diInverted = true}, 0x59},
        {{.type = 1, .doInverted = true}, 0x59},
        {{.type = 1, .diInverted = true, .doInverted = true}, 0xA6},
        {{.type = 5}, 0x53},
        {{.type = 6}, 0x53},
        {{.type = 7, .msbFirst = false}, 0x4C},
        {{.type = 8, .msbFirst = false}, 0x4C}};
    for (const auto& [shape, answer] : cases)
        EXPECT_EQ(DeviceRig("loopback", shape).exchange(0xA6), answer) << shape;
}

TEST(Device, StuckLinesStayWhereTheyAre) {
    for (const Shape& shape : allShapes()) {
        const unsigned high = shape.doInverted ? 0x00 : 0xFF;
        EXPECT_EQ(DeviceRig("none", shape).exchange(0xA5), high) << shape;
        EXPECT_EQ(DeviceRig("stuck-high", shape).exchange(0xA5), high) << shape;
        EXPECT_EQ(DeviceRig("stuck-low", shape).exchange(0xA5), high ^ 0xFFU) << shape;
    }
}

TEST(Device, ScriptedAnswersAsGivenInEveryTypeAndOrder) {
    for (const Shape& shape : allShapes()) {
        // As wide as the word, narrower, wider.
        DeviceRig rig("scripted", shape, {"a6", "9", "7F3C"});
        const std::vector<unsigned> answers{rig.exchange(0), rig.exchange(0xFF), rig.exchange(0x55),
                                            rig.exchange(0)};
        EXPECT_EQ(answers, (std::vector<unsigned>{0xA6, 0x09, 0x3C, 0x3C})) << shape;
    }
    EXPECT_EQ(DeviceRig("scripted", {}).exchange(0xFF), 0x00U);
}

TEST(Device, ChipAnswersWithinTheWordThatAsks) {
    // The view is selected by bit 7 of the word, which is when bit 7 of the answer is due.
    for (int type = 1; type <= 4; ++type)
        for (const bool inverted : {false, true}) {
            DeviceRig rig("zt72518d", {.type = type,
                                       .csHigh = inverted,
                                       .diInverted = inverted,
                                       .doInverted = inverted,
                                       .length = 16});
            EXPECT_EQ(rig.exchange(0x6488), 0x0000U) << type;
            EXPECT_EQ(rig.exchange(0x2580), 0x00EAU) << type;
            EXPECT_EQ(rig.exchange(0x2500), 0x0088U) << type;
        }
}

TEST(Device, NamesWhatItDoesNotKnow) {
    for (const char* text : {"", "G", "0x1", "A 5", "-1"})
        EXPECT_THROW(replyFromHex(text), Failure) << '"' << text << '"';
    for (const std::string& name : deviceNames())
        EXPECT_NE(makeDevice(name), nullptr) << name;
    EXPECT_EQ(failureOf([] { makeDevice("Echo"); }),
              "There is no device \"Echo\". Did you mean echo?");
}

TEST(SimulatedPort, HasTheRegistersOfAPort) {
    VirtualClock clock;
    SimulatedPort port(clock, makeDevice("stuck-high"), address278);
    port.setShapeSource([] { return BusShape{.dataOutPin = 4}; });
    port.Outp(0x278, 0x1A5);
    port.Outp(0x279, 0x0F); // the status takes no writes
    port.Outp(0x27A, 0x30C);
    port.Outp(0x378, 0x11); // no port there
    const std::pair<std::int16_t, std::int32_t> registers[] = {
        {0x278, 0xA5}, {0x279, 0x10}, {0x27A, 0x0C}, {0x27B, 0xFF}, {0x277, 0xFF}, {0x378, 0xFF}};
    for (const auto& [address, value] : registers)
        EXPECT_EQ(port.Inp(address), value) << std::hex << address;
    EXPECT_EQ(clock.nanoseconds(), 10 * SimulatedPort::accessTime);
    for (const auto& [number, address] : {std::pair{0, 0}, {1, 0x278}, {2, 0}, {3, 0}, {-1, 0}})
        EXPECT_EQ(port.GetLPTPortAddress(static_cast<std::int16_t>(number)), address) << number;
}

} // namespace
} // namespace bitlux::test
