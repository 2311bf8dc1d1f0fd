#include "engine_rig.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Word = std::vector<std::int16_t>;

TEST(WordEngine, MakesTheAccessesOfEachType) {
    // Bit 1 is a one, bit 0 a zero. Bytes: chip select 1, data in 2, clock 4.
    const Rows<int, Flag, const char*> cases{
        {1, ConstOn, "00 02 06 R379 00 04 R379 00 01"},
        {1, ConstOff, "00 00 04 R379 02 06 R379 00 01"},
        {2, ConstOn, "00 06 02 R379 04 00 R379 01"},
        {2, ConstOff, "00 04 00 R379 06 02 R379 01"},
        {3, ConstOn, "04 06 02 R379 04 00 R379 04 05"},
        {3, ConstOff, "04 04 00 R379 06 02 R379 04 05"},
        {4, ConstOn, "04 02 06 R379 00 04 R379 05"},
        {4, ConstOff, "04 00 04 R379 02 06 R379 05"},
        {5, ConstOn, "00 04 R379 02 R379 00 04 01"}, // no rising edge after the first bit
        {5, ConstOff, "00 04 R379 00 04 R379 02 01"},
        {6, ConstOn, "00 R379 06 02 R379 04 00 01"},
        {6, ConstOff, "00 R379 04 00 R379 06 02 01"},
        {7, ConstOn, "04 00 R379 06 02 R379 04 00 01 05"},
        {7, ConstOff, "04 00 R379 04 00 R379 06 02 03 05"},
        {8, ConstOn, "04 R379 02 06 R379 00 04 05"},
        {8, ConstOff, "04 R379 00 04 R379 02 06 05"},
    };
    for (const auto& [type, msbFirst, accesses] : cases) {
        EngineRig rig(type, msbFirst, {0, 1});
        EXPECT_EQ(rig.send(), accesses) << "type " << type << " MSB " << msbFirst.value();
    }
}

TEST(WordEngine, KeepsTheOtherPinsOfTheRegister) {
    EngineRig rig(2, ConstOn, {1});
    rig.session.DataPortPins.setLevel(7, ConstHigh);
    EXPECT_EQ(rig.send(), "80 86 82 R379 81");
    EXPECT_EQ(rig.session.DataPortPins.value(), 0x81);
}

TEST(WordEngine, DecodesThePinByItsPolarity) {
    // Reads in the order 1, 0, 0, 1 of both bits 5 and 3; MSB first, so element 3 is the first.
    for (const auto& [pin, high, low, received] :
         Rows<std::int16_t, std::int16_t, std::int16_t, Word>{{5, 1, 0, {1, 0, 0, 1}},
                                                              {3, 1, 0, {1, 0, 0, 1}},
                                                              {4, 1, 0, {0, 0, 0, 0}},
                                                              {5, 0, 1, {0, 1, 1, 0}}}) {
        EngineRig rig(1, ConstOn, {0, 0, 0, 0});
        rig.session.DOPin = pin;
        rig.session.DOHighValue = high;
        rig.session.DOLowValue = low;
        rig.port.answer = [](int read) { return read == 0 || read == 3 ? 0x28 : 0x80; };
        rig.send();
        EXPECT_EQ(rig.session.WordReceived, received) << "pin " << pin << " high " << high;
        EXPECT_EQ(rig.session.PortStatusSamples, (Word{0x28, 0x80, 0x80, 0x28}));
    }
}

TEST(WordEngine, StopsAtAnElementThatIsNoBit) {
    EngineRig rig(1, ConstOn, {0, 7, 1});
    int failed = 0;
    int transferred = 0;
    rig.engine.sendFailed.subscribe([&failed] { ++failed; });
    rig.engine.wordTransferred.subscribe([&transferred] { ++transferred; });
    rig.session.PortStatusSamples = {9, 9, 9};
    rig.port.answer = [](int) { return 0x20; };
    // The bit before it is out, chip select stays asserted and the clock where it is.
    EXPECT_EQ(rig.send(), "00 02 06 R379");
    EXPECT_EQ(rig.session.DataPortPins.value(), 0x06);
    EXPECT_TRUE(rig.session.LinkFailed);
    EXPECT_EQ(rig.session.WordReceived, (Word{0, 0, 0}));
    EXPECT_EQ(rig.session.PortStatusSamples, (Word{0, 0, 0x20}));
    EXPECT_EQ(failed, 1);
    EXPECT_EQ(transferred, 0);
    EXPECT_EQ(rig.boxes.takeTexts(),
              std::vector<std::string>{"WordToSend(i) is neither a 1 or a 0!!!\r\n"
                                       "Check the USB cable and restart program"});
}

TEST(WordEngine, FailsWithoutABus) {
    EngineRig rig(1, ConstOn, {1, 1});
    rig.session.ParallelPortReady = false;
    rig.session.WordReceived = {1, 1, 1};
    int transferred = 0;
    rig.engine.wordTransferred.subscribe([&transferred] { ++transferred; });
    EXPECT_EQ(rig.send(), "");
    EXPECT_EQ(rig.session.WordReceived, (Word{0, 0}));
    EXPECT_EQ(transferred, 0);
    EXPECT_EQ(rig.boxes.takeTexts(),
              std::vector<std::string>{"No device available to send SPI Data."});
}

TEST(WordEngine, ReportsAPortThatIsLostInAWord) {
    EngineRig rig(1, ConstOn, {0, 1});
    rig.port.failAtWrite = 4; // the first was made before the word
    int failed = 0;
    rig.engine.sendFailed.subscribe([&failed] { ++failed; });
    EXPECT_EQ(rig.send(), "00 02");
    EXPECT_TRUE(rig.session.LinkFailed);
    EXPECT_EQ(failed, 1);
    EXPECT_FALSE(rig.session.WordAnswered);
    EXPECT_EQ(rig.boxes.takeTexts(), std::vector<std::string>{"The port is gone"});
}

TEST(WordEngine, TakesNoAnswerFromAPortThatWasTakenAway) {
    EngineRig rig(1, ConstOn, {0, 1});
    rig.port.answer = [](int) { return 0x20; };
    rig.send();
    EXPECT_TRUE(rig.session.WordAnswered);
    EXPECT_EQ(rig.session.WordReceived, (Word{1, 1}));
    rig.port.isTakenAway = true;
    rig.send();
    EXPECT_FALSE(rig.session.WordAnswered);
    EXPECT_EQ(rig.session.WordReceived, (Word{0, 0}));
    EXPECT_EQ(rig.boxes.takeTexts(), std::vector<std::string>{"The port is gone"});
}

TEST(WordEngine, RefusesWhatCannotBeSentBeforeAnythingMoves) {
    for (const auto& [what, length, type] :
         Rows<const char*, std::int16_t, std::int16_t>{{"no bits", 0, 1},
                                                       {"negative", -3, 1},
                                                       {"too short", 3, 1},
                                                       {"type 0", 2, 0},
                                                       {"type 9", 2, 9}}) {
        EngineRig rig(1, ConstOn, {0, 1});
        rig.session.SPIWordLength = length;
        rig.session.SPIType = type;
        EXPECT_THROW(rig.engine.SendSPI(), Failure) << what;
        EXPECT_EQ(rig.port.log, "") << what;
    }
}

TEST(WordEngine, AsksForDirectAccessAroundEachWriteInFastMode) {
    EngineRig rig(6, ConstOn, {1});
    rig.port.SetFastMode(1);
    EXPECT_EQ(rig.send(), "enable(378,378) 00 disable(378,378) R379 "
                          "enable(378,378) 06 disable(378,378) "
                          "enable(378,378) 02 disable(378,378) "
                          "enable(378,378) 01 disable(378,378)");
}

} // namespace
} // namespace bitlux::test
