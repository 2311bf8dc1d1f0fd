// The models of the ZT72537 and its two smaller variants: status, the watchdog, wake-ups,
// interrupts, and the clear words of the dongle.

#include "dongle_rig.h"

#include "platform/failure.h"

#include <array>
#include <string>
#include <utility>
#include <vector>

namespace bitlux::test {
namespace {

class Rig : public DongleRig {
public:
    explicit Rig(const std::string& device = "zt72537") : DongleRig(device, 8, 2) {}

    std::string mode() { return reading("Mode"); }
    void serve(std::uint8_t state, std::uint8_t period) {
        EXPECT_EQ(exchange({0, 4, 0, state, 3, period, 2}), (UsbFrame{0, 4}));
    }
};

TEST(Zt72537, AnswersWithFlagsBelowTheSystemStatus) {
    Rig rig;
    for (const char* flag : {"VSOV", "LS2CL", "HS1OP", "L3"})
        rig.turn(flag);
    rig.expect({{0x08, 0xB8},
                {0x10, 0xB8},
                {0x2F, 0xB4},
                {0x30, 0xB4},
                {0x40, 0xB0},
                {0x50, 0xB0},
                {0x61, 0xB2},
                {0x70, 0xB2},
                {0x80, 0xB4},
                {0x90, 0xB4},
                {0xA0, 0xB2},
                {0xB0, 0xB2},
                {0xC7, 0xB0},
                {0xD1, 0xB0},
                {0xE0, 0xB5}});
    EXPECT_EQ(rig.reading("CFR"), "1");
    rig.turn("TXDOM");
    rig.turn("WDERR");
    rig.expect({{0x4B, 0xF4}, {0xB0, 0xF6}, {0xB0, 0xF2}});

    Rig one("zt72534");
    Rig none("zt72532");
    for (const char* flag : {"L2", "L4", "HS2CL", "HS2OP"})
        for (Rig* variant : {&one, &none})
            EXPECT_THROW(variant->turn(flag), Failure) << flag;
    one.turn("LS1CL");
    EXPECT_EQ(one.send(0x90), 0x11U);
    EXPECT_THROW(none.turn("LS1CL"), Failure);
    EXPECT_THROW(none.turn("Status/LSS"), Failure);
    none.turn("L1");
    EXPECT_EQ(none.send(0x30), 0x01U);
}

TEST(Zt72537, IsResetWhenItsWatchdogIsNotClearedInTheWindow) {
    for (const auto& [prescaler, period] : {std::pair{0xA0U, 10}, {0xA1U, 20}, {0xA7U, 140}}) {
        Rig rig;
        rig.at(1000 * millisecond);
        EXPECT_EQ(rig.send(prescaler), 0x02U) << "waits for the first clear";
        rig.send(0x03);
        const std::int64_t over = rig.sentAt + period * millisecond;
        rig.at(over - period * millisecond / 2);
        EXPECT_EQ(rig.send(0xB0), 0x01U) << "the window is open";
        rig.at(over - 1);
        EXPECT_EQ(rig.send(0x6F), 0U); // a word in the last moment
        rig.at(over);
        EXPECT_EQ(rig.lines(), 0U) << "in reset";
        EXPECT_EQ(rig.send(0xB0), 0U) << "does not listen";
        rig.at(over + 5 * millisecond - 1);
        EXPECT_EQ(rig.mode(), "Reset");
        rig.at(over + 5 * millisecond);
        rig.expect({{0xB0, 0x0A}, {0xB0, 0x02}});
        EXPECT_EQ(rig.reading("HSCR") + rig.reading("TIMCR"), "00");
    }
    for (const std::int64_t early : {1, 0}) { // ns
        Rig rig;
        rig.send(0x03);
        rig.at(rig.sentAt + 5 * millisecond - early);
        rig.send(0x03);
        rig.goTo(9 * millisecond);
        EXPECT_EQ(rig.send(0xB0), early > 0 ? 0x06U : 0x01U);
    }
}

TEST(Zt72537, IsServedByTheDongle) {
    Rig rig;
    const auto left = [&rig](std::int64_t time) {
        rig.at(time);
        return rig.reading("Watchdog");
    };
    rig.serve(1, 10); // no state of it
    EXPECT_EQ(rig.exchange({0, 4, 0, 2, 3, 10, 1}), (UsbFrame{0, 4})) << "of another chip";
    EXPECT_EQ(rig.reading("Watchdog"), "off");
    const std::int64_t start = rig.clock.nanoseconds();
    rig.serve(2, 10);
    EXPECT_EQ(left(start + 7'400'000), "2.6 ms left");
    EXPECT_EQ(left(start + 7'500'000 - 1), "2.5 ms left");
    EXPECT_EQ(left(start + 7'500'000), "10.0 ms left");
    rig.at(start + 8 * millisecond);
    rig.serve(2, 8); // 6 ms
    EXPECT_EQ(left(start + 14 * millisecond - 1), "3.5 ms left");
    EXPECT_EQ(left(start + 14 * millisecond), "10.0 ms left") << "a new period from the command";
    EXPECT_EQ(left(start + 14 * millisecond + 36'000'000 * millisecond), "10.0 ms left");

    for (const std::uint8_t last : std::array<std::uint8_t, 2>{0, 1}) {
        EXPECT_EQ(rig.mode(), "Normal");
        rig.exchange({8, 0x31, 0, 0x01, 0, 0, 0, last});
        EXPECT_EQ(rig.mode(), "Stop");
        rig.at(rig.clock.nanoseconds() + 20 * millisecond);
        EXPECT_EQ(rig.mode(), last == 1 ? "Stop" : "Normal") << "the next clear ends it";
    }
    rig.send(0x00);
    rig.serve(2, 0);
    EXPECT_EQ(rig.reading("Watchdog"), "off") << "never";
    rig.serve(2, 10);
    rig.serve(0, 10);
    rig.at(rig.clock.nanoseconds() + 12 * millisecond);
    EXPECT_EQ(rig.send(0xB0), 0x0AU);
}

TEST(Zt72537, WakesAsItsRegistersSay) {
    struct Case {
        std::vector<unsigned> words; ///< the last one begins low power
        const char* pin;             ///< is turned on after 10 ms; may be empty
        std::int64_t at;             ///< when it wakes, in milliseconds; 0 for never
        unsigned code;               ///< of ISR
    };
    for (const Case& c :
         {Case{{0xA9, 0x01}, "", 20, 6}, Case{{0xAF, 0xA3, 0x01}, "", 140, 6},
          Case{{0xAF, 0xD4, 0x01}, "", 1120, 6}, Case{{0xA9, 0x63, 0x02}, "", 20, 6},
          Case{{0xA9, 0xA8, 0x01}, "", 0, 0}, Case{{0x21, 0x01}, "L1", 10, 1},
          Case{{0x21, 0x02}, "L1", 10, 1}, Case{{0x21, 0x01}, "L2", 0, 0},
          Case{{0x21, 0xAA, 0x61, 0x01}, "L1", 40, 1}, Case{{0x21, 0xAA, 0x62, 0x02}, "L2", 0, 0},
          Case{{0xAA, 0x01}, "LIN wake-up", 10, 4}}) {
        Rig rig;
        for (const unsigned word : c.words)
            rig.send(word);
        const bool sleeps = c.words.back() == 0x02;
        const std::string name = sleeps ? "Sleep" : "Stop";
        const std::int64_t start = rig.sentAt;
        const auto expect = [&](std::int64_t time, const std::string& mode) {
            rig.at(start + time);
            EXPECT_EQ(rig.mode(), mode) << c.words.front() << " " << c.pin << " " << time;
        };
        expect(10 * millisecond - 1, name);
        if (*c.pin != '\0')
            rig.at(start + 10 * millisecond), rig.turn(c.pin);
        if (c.at == 0) {
            expect(5000 * millisecond, name);
            EXPECT_EQ(rig.lines(), 2U);
            EXPECT_EQ(rig.send(0xB0), sleeps ? 0x00U : 0x02U) << "Sleep does not listen";
            continue;
        }
        if (c.at > 10)
            expect(c.at * millisecond - 1, name);
        expect(c.at * millisecond, sleeps ? "Reset" : "Normal");
        expect((c.at + 5) * millisecond, "Normal");
        EXPECT_EQ(rig.lines(), 3U);
        rig.expect({{0xF0, c.code}, {0xF0, 0}});
        EXPECT_EQ(rig.lines(), 2U);
    }
}

TEST(Zt72537, TellsTheFirstInterruptThatIsNotMasked) {
    Rig rig;
    for (const char* flag :
         {"VSUV", "RXSHORT", "LS1CL", "LS1OP", "LS2CL", "LS2OP", "HS1CL", "HS1OP", "HS2CL"})
        rig.turn(flag);
    EXPECT_EQ(rig.send(0xF0), 0xF3U) << "one of the high sides is cool";
    rig.turn("HS2OP");
    rig.expect({{0xE8, 0xF2}, {0xEC, 0xF3}, {0xEE, 0xF4}, {0xE6, 0xF5}, {0xEF, 0xF2}});
    EXPECT_EQ(rig.lines(), 2U);
    rig.send(0xE6);
    EXPECT_EQ(rig.lines(), 3U);
}

} // namespace
} // namespace bitlux::test
