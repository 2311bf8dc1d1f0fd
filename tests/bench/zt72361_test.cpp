// The models of the ZT72361 and the ZT72390: flags, modes, the watchdog, wake-ups, interrupts, and
// the writes of timer 1 that the dongle sends.

#include "dongle_rig.h"

#include "platform/failure.h"

#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace bitlux::test {
namespace {

class Rig : public DongleRig {
public:
    explicit Rig(const std::string& device = "zt72361") : DongleRig(device, 8, 1) {}

    std::string mode() { return reading("Mode"); }
    std::string watchdog() { return reading("Watchdog"); }
};

TEST(Zt72361, ReadsTheFlagsOfEachRegister) {
    Rig rig;
    for (const char* flag :
         {"GFAIL", "CAN-UF", "CAN-WU", "V2LOW", "L1WU", "CanL to Vbat", "CanH to 5V"})
        rig.turn(flag);
    rig.expect({{0x00, 0x2}, {0x20, 0x0}, {0x3B, 0x0}, {0x20, 0xB}, {0x40, 0xA}, {0x60, 0x8},
                {0x80, 0x2}, {0xA0, 0x4}, {0xC0, 0x8}, {0xE0, 0x4}, {0xB3, 0x0}, {0xBF, 0x0},
                {0xDF, 0x0}, {0xA0, 0x4}, {0x57, 0x0}, {0x40, 0xA}, {0x5B, 0x0}, {0x40, 0x0},
                {0xA0, 0x0}, {0xC0, 0x0}, {0x80, 0x2}});
    EXPECT_EQ(rig.reading("TIM 1") + rig.reading("TIM 2") + rig.reading("CAN"), "373");

    Rig earlier("zt72390");
    for (const char* flag : {"CAN-UF", "CanL to Vbat", "Rx recessive"})
        EXPECT_THROW(earlier.turn(flag), Failure) << flag;
    earlier.turn("CUR");
    EXPECT_EQ(earlier.send(0x40), 0x2U);
}

TEST(Zt72361, IsResetAfterThePeriodOfTimer1) {
    const std::vector<std::pair<unsigned, std::int64_t>> periods{
        {0xB0, 10}, {0xB5, 45}, {0xB2, 100}, {0xB7, 350}};
    for (const auto& [timer, period] : periods) {
        Rig rig;
        rig.send(timer);
        rig.at(1000 * millisecond);
        EXPECT_EQ(rig.mode(), "Standby");
        rig.send(0x11);
        rig.goTo(period * millisecond);
        rig.send(timer); // in the last moment
        const std::int64_t over = rig.sentAt + period * millisecond + 1;
        rig.at(over - 1);
        EXPECT_EQ(rig.mode(), "Normal") << "refreshed";
        rig.at(over);
        EXPECT_EQ(rig.lines(), 0U) << "in reset";
        EXPECT_EQ(rig.send(0x11), 0U) << "does not listen";
        rig.at(over + 5 * millisecond - 1);
        EXPECT_EQ(rig.mode(), "Reset");
        rig.at(over + 5 * millisecond);
        EXPECT_EQ(rig.mode(), "Standby");
        EXPECT_EQ(rig.reading("TIM 1"), "0");
        rig.expect({{0x00, 0x1}, {0x00, 0x0}});
    }
}

TEST(Zt72361, ChangesItsModeAsItIsTold) {
    // Words; the mode they lead to; whether the watchdog runs; flags of IOR.
    using Case = std::tuple<std::vector<unsigned>, const char*, bool, unsigned>;
    for (const auto& [words, mode, watchdog, flags] :
         {Case{{0x11}, "Normal", true, 0}, Case{{0x11, 0x12}, "Standby", false, 0},
          Case{{0x11, 0x13}, "Stop", false, 0}, Case{{0x38, 0x13}, "Stop", true, 0},
          Case{{0x14}, "Standby", false, 0}, Case{{0x34, 0x14}, "Sleep", false, 0},
          Case{{0x11, 0x10}, "Normal, debug", false, 1}, Case{{0x15, 0x10}, "Normal", true, 0},
          Case{{0x15, 0x11}, "Normal", true, 0}, Case{{0x11, 0x16}, "Standby, debug", false, 1},
          Case{{0x38, 0x17}, "Stop, debug", false, 1}, Case{{0x11, 0x18}, "Normal", true, 0}}) {
        Rig rig;
        for (const unsigned word : words)
            rig.send(word);
        EXPECT_EQ(rig.mode(), mode);
        EXPECT_EQ(rig.watchdog() != "off", watchdog) << mode;
        EXPECT_EQ(rig.send(0x60), flags) << mode;
    }
    Rig rig;
    rig.send(0x11);
    rig.turn("DEBUG");
    rig.goTo(1000 * millisecond);
    EXPECT_EQ(rig.mode(), "Normal, debug");
    rig.turn("DEBUG", false);
    rig.goTo(1011 * millisecond);
    EXPECT_EQ(rig.mode(), "Reset");
}

TEST(Zt72361, IsServedByTheDongle) {
    Rig rig;
    const auto serve = [&rig](std::uint8_t state, std::uint8_t word, std::uint8_t period) {
        EXPECT_EQ(rig.exchange({0, 4, 0, state, word, period, 1}), (UsbFrame{0, 4}));
    };
    const auto at = [&rig](std::int64_t time) {
        rig.at(time);
        return rig.watchdog();
    };
    const std::int64_t start = rig.clock.nanoseconds();
    serve(1, 0xB1, 20); // 45 ms, written every 40
    EXPECT_EQ(rig.reading("TIM 1"), "1") << "at once";
    rig.send(0x11);
    EXPECT_EQ(at(start + 40 * millisecond - 1), "7.0 ms left");
    EXPECT_EQ(at(start + 40 * millisecond), "45.0 ms left");
    rig.exchange({8, 0x30, 0, 0x00, 0, 0, 0, 1}); // stops another chip's
    EXPECT_EQ(at(start + 36'000'000 * millisecond), "45.0 ms left");
    serve(2, 0xB1, 20); // no state of it
    EXPECT_EQ(at(start + 36'000'079 * millisecond), "6.0 ms left");
    serve(0, 0xB1, 20);
    rig.at(start + 36'000'086 * millisecond);
    EXPECT_EQ(rig.mode(), "Reset");
}

TEST(Zt72361, WakesByFlagsThatItLetsThrough) {
    using Case = std::tuple<std::vector<unsigned>, const char*, const char*>;
    for (const auto& [words, flag, mode] :
         {Case{{0x91, 0x13}, "L1WU", "Standby"}, Case{{0x91, 0x13}, "L2WU", "Stop"},
          Case{{0x98, 0x34, 0x14}, "L3WU", "Reset"}, Case{{0x93, 0x34, 0x14}, "L3WU", "Sleep"},
          Case{{0x51, 0x13}, "CAN-WU", "Standby"}, Case{{0x53, 0x13}, "CAN-WU", "Stop"},
          Case{{0x51, 0x34, 0x14}, "CAN-WU", "Reset"}, Case{{0x50, 0x13}, "CAN-WU", "Stop"},
          Case{{0x51, 0x13}, "CAN-F", "Stop"}}) {
        Rig rig;
        for (const unsigned word : words)
            rig.send(word);
        rig.turn(flag);
        EXPECT_EQ(rig.mode(), mode) << words.front() << " " << flag;
        rig.goTo(10 * millisecond);
        EXPECT_EQ(rig.lines(), std::string(mode) == "Sleep" ? 2U : 3U);
    }
}

TEST(Zt72361, InterruptsByFlagsThatAreNotMasked) {
    const std::vector<std::pair<const char*, unsigned>> bits{
        {"MCR flags/VDDTEMP", 0x2}, {"CAN-F", 0x1},  {"HS1OT", 0x4}, {"V2LOW", 0x4},
        {"VSUPLOW", 0x8},           {"BATFAIL", 0x0}};
    for (const auto& [flag, bit] : bits) {
        Rig rig;
        rig.turn(flag);
        EXPECT_EQ(rig.send(0xE0), bit) << flag;
        EXPECT_EQ(rig.lines(), bit != 0 ? 3U : 2U) << flag;
        rig.send(0xF0 | bit);
        EXPECT_EQ(rig.send(0xE0), 0U) << flag;
        EXPECT_EQ(rig.lines(), 2U) << flag;
    }
}

} // namespace
} // namespace bitlux::test
