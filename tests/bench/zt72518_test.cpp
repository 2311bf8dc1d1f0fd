#include "dongle_rig.h"

#include "platform/failure.h"

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A chip of the family.
class ChipRig : public DongleRig {
public:
    explicit ChipRig(const std::string& device = "zt72518d") : DongleRig(device, 16, 2) {}

    /// The low byte of the reply.
    unsigned read(unsigned word) { return send(word) & 0xFF; }
    /// Answers the random word with a choice of mode.
    void special(unsigned choice) { send(0x5200 | choice << 6 | (~send(0x1300) & 0x3F)); }
};

TEST(Zt72518, AnswersEachViewOfARegister) {
    ChipRig rig;
    rig.send(0x60C9);
    rig.send(0x62F9);
    EXPECT_EQ(rig.send(0x2180), 0xC0U); // transmitter and receiver of CAN
    rig.turn("Pins/I/O 0");
    EXPECT_EQ(rig.send(0x2380), 0x51U); // 0: its pin, 1: driven low, 2 and 3: high
    rig.send(0x40E8);
    EXPECT_EQ(rig.send(0x0180), 0xE8U); // a register with one view
    rig.send(0x64FB);
    EXPECT_EQ(rig.send(0x2500), 0x82BBU) << "the request for an interrupt clears itself";
    EXPECT_EQ(rig.send(0xE500), 0x8280U);
    EXPECT_EQ(rig.send(0xE500), 0x0000U);
    rig.turn("VSUV");
    EXPECT_EQ(rig.send(0xDF80), 0x0100U) << "the other view clears nothing";
    rig.turn("Flags stay");
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(rig.send(0xDF00), 0x0102U);
}

TEST(Zt72518, HasSwitchesByName) {
    ChipRig rig;
    const std::map<std::string, std::string> refusals{
        {"Vaux OV0", "The chip has no switch \"Vaux OV0\"; there is Vaux OV, Vaux OC"},
        {"rx low", "More than one switch is called \"rx low\"; there is CAN Low/Rx Low, "
                   "Lin 1/Rx Low, Lin 2/Rx Low"},
        {"", "The chip has no switch \"\""}};
    for (const auto& [name, message] : refusals) {
        try {
            rig.turn(name);
            ADD_FAILURE() << name;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.what(), message);
        }
    }
    for (std::size_t i = 0; i < rig.chip().switches().size(); ++i) {
        const ChipSwitch& one = rig.chip().switches()[i];
        EXPECT_EQ(switchNamed(rig.chip(), one.group + "/" + one.name), i);
    }
}

TEST(Zt72518, ChangesItsModeForTheInvertedRandomWord) {
    ChipRig rig;
    rig.special(2);
    EXPECT_EQ(rig.read(0x1300) & 0xC0, 0x80U);
    rig.send(0x5A00);
    EXPECT_EQ(rig.read(0xDD80), 0x0BU);
    rig.send(0x5240 | (rig.send(0x1300) & 0x3F)); // not inverted
    EXPECT_EQ(rig.read(0xDD80), 0x0BU);
    rig.special(1);
    EXPECT_EQ(rig.read(0xDD80), 0x03U);
    rig.send(0x5A00);
    EXPECT_EQ(rig.read(0xDD80), 0x1BU); // Normal
    EXPECT_EQ(rig.read(0x1D80) >> 3, 0x03U);
    EXPECT_EQ(rig.read(0x1300) & 0xC0, 0xC0U);
    rig.send(0x1D00); // leaves debug
    EXPECT_EQ(rig.read(0xDD80), 0x1AU);
    rig.special(3);
    EXPECT_EQ(rig.read(0xDD80), 0x1AU);
    rig.special(0);
    EXPECT_EQ(rig.read(0xDD80), 0x13U); // Normal Request after the reset
    EXPECT_EQ(rig.read(0xE380), 0x02U);
    rig.special(1);
    const unsigned random = rig.send(0x1300);
    rig.send(0x5200 | (random & 0x30) | (~random & 0x0F)); // works the SAFE pin
    EXPECT_EQ(rig.read(0xDD80), 0x01U);
    EXPECT_EQ(rig.read(0xDD00), 0x01U); // releases it, and leaves debug
    EXPECT_EQ(rig.read(0xDD80), 0x02U);
}

TEST(Zt72518, ResetsWhenTheWatchdogExpires) {
    ChipRig alive;
    alive.send(0x5A00);
    alive.goTo(256 * millisecond - 1);
    EXPECT_EQ(alive.send(0xDD80), 0x001BU);
    ChipRig late;
    late.send(0x5A00);
    late.goTo(256 * millisecond);
    EXPECT_EQ(late.send(0xDD80), 0x0000U); // in reset for a millisecond
    EXPECT_EQ(late.send(0xDD80), 0x2213U);
    EXPECT_EQ(late.read(0xE580), 0x01U);

    for (const auto& [timer0, microseconds] :
         {std::pair{0x5400U, 2500}, {0x5409U, 6000}, {0x541FU, 512000}}) {
        for (const bool expired : {false, true}) {
            ChipRig rig;
            rig.send(timer0);
            rig.send(0x5A00);
            rig.goTo(microseconds * std::int64_t{1000} - (expired ? 0 : 1));
            EXPECT_EQ(rig.reading("Mode"), expired ? "Reset" : "Normal") << timer0;
            EXPECT_EQ(rig.exchange({0, 5})[3], expired ? 0x00 : 0x02);
        }
    }

    ChipRig window;
    window.send(0x4C02);
    window.send(0x5A00);
    window.goTo(128 * millisecond);
    window.send(0x5A00);
    EXPECT_EQ(window.reading("Mode"), "Normal");
    window.goTo(128 * millisecond - 1);
    window.send(0x5A00);
    EXPECT_EQ(window.read(0xE580), 0x01U) << "too early";

    // Mode; words that lead there, with a period set first; milliseconds.
    using Slow = std::tuple<const char*, std::vector<unsigned>, std::int64_t>;
    for (const auto& [mode, words, period] :
         {Slow{"Flash", {0x5800}, 48}, Slow{"Flash", {0x58A0}, 1024},
          Slow{"Low Power Vdd On (Stop)", {0x5810, 0x5A00, 0x5C88}, 24},
          Slow{"Low Power Vdd On (Stop)", {0x58F0, 0x5A00, 0x5C88}, 2048}}) {
        for (const bool expired : {false, true}) {
            ChipRig rig;
            for (const unsigned word : words)
                rig.send(word);
            if (words.size() == 1)
                rig.special(2);
            rig.goTo(period * millisecond - (expired ? 0 : 1));
            EXPECT_EQ(rig.reading("Mode"), expired ? "Reset" : mode) << period;
        }
    }

    ChipRig again;
    again.send(0x4A10); // resets of 10 ms
    again.send(0x5A00);
    again.goTo((256 + 10 + 256) * millisecond);
    EXPECT_EQ(again.reading("Mode"), "Reset");
    again.goTo((256 + 10 + 256 + 10) * millisecond);
    EXPECT_EQ(again.read(0xE580), 0x03U);
}

TEST(Zt72518, GoesToLowPowerAndWakes) {
    ChipRig rig;
    rig.send(0x5C80);
    EXPECT_EQ(rig.read(0xDD80), 0x03U) << "only from Normal";
    rig.send(0x5A00);
    rig.send(0x5C81);
    EXPECT_EQ(rig.read(0xDD80), 0x1BU) << "the random bits have to be 0";
    rig.send(0x5C80);
    EXPECT_EQ(rig.read(0xDD80), 0x83U);
    EXPECT_EQ(rig.read(0x1D80) & 0xF8, 0x80U);
    rig.clock.idle(60'000 * millisecond);
    EXPECT_EQ(rig.read(0xDD80), 0x83U);
    rig.send(0x5C10);
    EXPECT_EQ(rig.read(0xDD80), 0x13U);
    EXPECT_EQ(rig.send(0xE380), 0x4420U);

    rig.send(0x5A00);
    rig.send(0x5C60);
    EXPECT_EQ(rig.read(0xDD80), 0x1BU) << "VDD may not be switched off";
    rig.send(0x5E01);
    rig.send(0x5C60);
    EXPECT_EQ(rig.send(0xDD80), 0x0000U);
    EXPECT_EQ(rig.send(0x2580), 0x0000U);
    rig.turn("CAN WU");
    EXPECT_EQ(rig.reading("Mode"), "Reset");
    rig.clock.idle(millisecond);
    EXPECT_EQ(rig.read(0xDD80), 0x13U);

    for (const unsigned word : {0x5CC0U, 0x5C70U}) { // the timer wakes it
        ChipRig timed;
        for (const unsigned setUp : {0x5E01U, 0x5809U, 0x5A00U, word})
            timed.send(setUp);
        timed.goTo(128 * millisecond - 1);
        EXPECT_EQ(timed.reading("Mode").substr(0, 9), "Low Power");
        timed.clock.idle(2 * millisecond);
        EXPECT_EQ(timed.reading("Mode"), "Normal Request");
        EXPECT_EQ(timed.read(0xE380) & 0x10, 0x10U);
    }

    for (const auto& [flag, word, answer] :
         {std::tuple{"I/O_0_2 INT_WU", 0xE380U, 0x4440U}, {"CAN WU", 0xE100U, 0x5080U}}) {
        ChipRig woken;
        woken.send(0x5A00);
        woken.send(0x5C80);
        woken.turn(flag);
        woken.clock.idle(5 * millisecond);
        EXPECT_EQ(woken.reading("Mode"), "Normal Request") << flag;
        EXPECT_EQ(woken.send(word), answer) << flag;
    }

    ChipRig random;
    random.send(0x5080);
    random.send(0x5A00);
    random.send(0x5C80 | (~random.send(0x1D80) & 7));
    EXPECT_EQ(random.reading("Mode"), "Low Power Vdd On (Stop)");
}

TEST(Zt72518, ChecksParityWhenToldTo) {
    ChipRig rig;
    rig.send(0x5140); // the bit in the high byte does not matter yet
    rig.send(0x5E0F); // an even count wants it
    EXPECT_EQ(rig.read(0x1F00), 0x00U);
    EXPECT_EQ(rig.send(0xE300), 0x0420U);
    rig.send(0x5F0F);
    EXPECT_EQ(rig.read(0x1F00), 0x0FU);
    rig.send(0x5F07);
    EXPECT_EQ(rig.read(0x1F00), 0x0FU);
    rig.send(0x5E07);
    EXPECT_EQ(rig.read(0x1F00), 0x07U);
    rig.special(2);
    EXPECT_EQ(rig.read(0xDD80), 0x0BU) << "its words carry no parity";
}

TEST(Zt72518, IgnoresWordsOfAnotherLength) {
    ChipRig rig;
    rig.exchange({24, 0x31, 0, 0x5A, 0x00, 0x00});
    rig.exchange({8, 0x31, 0, 0x5A});
    EXPECT_EQ(rig.send(0xDD80), 0x0403U);
    EXPECT_EQ(rig.send(0xE300), 0x0420U);
}

TEST(Zt72518, CanBeFaulty) {
    ChipRig rig;
    rig.turn("No watchdog");
    rig.send(0x5A00);
    rig.clock.idle(60'000 * millisecond);
    EXPECT_EQ(rig.send(0xDD80), 0x001BU);
    rig.turn("RST");
    rig.turn("INT");
    EXPECT_EQ(rig.send(0xDD80), 0xA01BU);
    EXPECT_EQ(rig.exchange({0, 5})[3], 0x01);
}

TEST(Zt72518, IsRefreshedByTheDongle) {
    for (unsigned mode = 0; mode < 4; ++mode) {
        ChipRig rig;
        rig.send(0x4C00 | mode << 2);
        rig.exchange({0, 21, 0, static_cast<std::uint8_t>(8 + mode), 6}); // 100 ms
        rig.clock.idle(10'000 * millisecond);
        EXPECT_EQ(rig.send(0xDD80), 0x001BU) << mode;
        rig.clock.idle(10'000 * millisecond);
        EXPECT_EQ(rig.send(0xE580), 0x0000U) << mode;
        const std::int64_t stop = rig.clock.nanoseconds();
        rig.exchange({0, 21, 0, 32});
        // The last refresh was up to 100 ms ago.
        rig.clock.idle(stop + 155 * millisecond - rig.clock.nanoseconds());
        EXPECT_EQ(rig.reading("Mode"), "Normal") << mode;
        rig.clock.idle(103 * millisecond);
        EXPECT_EQ(rig.read(0xDD80), 0x13U) << mode;
        EXPECT_EQ(rig.read(0xE580), 0x01U) << mode;
    }
    for (const auto& [chipMode, dongleMode] : {std::pair{0x4C04U, 8}, {0x4C08U, 11}}) {
        ChipRig rig; // the chip wants another answer
        rig.send(chipMode);
        rig.exchange({0, 21, 0, static_cast<std::uint8_t>(dongleMode), 6});
        rig.clock.idle(10 * millisecond);
        EXPECT_EQ(rig.read(0xE580) & 1, 1U);
    }
    ChipRig slow;
    slow.exchange({0x80, 21, 0, 8, 7}); // 500 ms, with a trigger
    slow.clock.idle(300 * millisecond);
    EXPECT_EQ(slow.reading("Mode"), "Normal Request");
    EXPECT_EQ(slow.dongle.triggers(), 1);
    EXPECT_EQ(slow.dongle.readings().front().value, "Simple WD every 500 ms");
    slow.dongle.unplug();
    slow.clock.idle(100 * millisecond);
    EXPECT_EQ(slow.dongle.readings().front().value, "off");
}

TEST(Zt72518, IsWokenByPulsesOfCurrent) {
    using Case = std::tuple<unsigned, std::uint8_t, bool, const char*>;
    for (const auto& [initWdog, length, wakes, pulses] : // from 8 ms on a pulse is long
         {Case{0x4C20, 20, false, "20 ms every 70 ms"}, Case{0x4C40, 5, true, "5 ms every 55 ms"},
          Case{0x4C60, 8, false, "8 ms every 58 ms"}, Case{0x4C60, 9, true, "9 ms every 59 ms"}}) {
        ChipRig rig;
        for (const unsigned word : {0x54BEU, initWdog, 0x5A00U, 0x5C80U})
            rig.send(word);
        rig.exchange({0, 69, 0, 16, 0, length, 1});
        rig.clock.idle(200 * millisecond);
        EXPECT_EQ(rig.reading("Mode"), wakes ? "Normal Request" : "Low Power Vdd On (Stop)");
        EXPECT_EQ(rig.read(0xDF80), wakes ? 1U : 0U) << "the current woke it";
        EXPECT_EQ(rig.dongle.readings().at(1).value, pulses);
        rig.exchange({0, 69, 0, 0});
        EXPECT_EQ(rig.dongle.readings().at(1).value, "off");
    }
}

TEST(Zt72518, RemembersTestCommandsAndTrimming) {
    ChipRig rig;
    rig.exchange({0, 37, 0, 39, 254, 10});
    EXPECT_EQ(rig.reading("Trimming"), "none") << "not in test mode";
    rig.exchange({0, 13, 127});
    rig.send(0x4210);
    rig.send(0x4403);
    EXPECT_EQ(rig.reading("Test mode"), "10 03");
    rig.exchange({0, 37, 0, 39, 254, 10});
    EXPECT_EQ(rig.reading("Trimming"), "27 FE, TXD low 10");
    EXPECT_EQ(rig.reading("Test mode"), "27 FE");
}

} // namespace
} // namespace bitlux::test
