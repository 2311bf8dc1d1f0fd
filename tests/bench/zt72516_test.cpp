// The model of the ZT72516: modes, the watchdog, flags and their summary. What the panel sends is
// tested with the panel.

#include "dongle_rig.h"

#include <tuple>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux::test {
namespace {

class Rig : public DongleRig {
public:
    Rig() : DongleRig("zt72516", 32, 1) {}

    std::string mode() { return reading("Mode"); }
    unsigned flags(unsigned word = 0x88000080) { return send(word) & 0xFFFFFF; }
    /// In Normal, with the watchdog in force: 256 ms unless TIMER is written.
    void start(unsigned init = 0x10, unsigned timer = 0xF0001E) {
        send(0x43000000 | init);
        send(0x45000000 | timer);
        send(0x5E000000);
        send(0x47000000 | (~send(0x07000000) & 0xFF & ((init & 0x600) != 0 ? 0xFF : 0)));
    }
};

TEST(Zt72516, WaitsInInitUntilItIsRefreshed) {
    Rig rig;
    EXPECT_EQ(rig.mode(), "Init");
    EXPECT_EQ(rig.flags(0x89000000), 0x08U) << "state 1";
    rig.goTo(60'000 * millisecond);
    EXPECT_EQ(rig.mode(), "Init");
    rig.send(0x47000000);
    EXPECT_EQ(rig.mode(), "Normal");
    rig.goTo(60'000 * millisecond);
    EXPECT_EQ(rig.mode(), "Normal") << "the watchdog is inhibited";
    rig.send(0x43040010); // by another choice of SAFEb than the first one
    rig.send(0x47000000);
    rig.goTo(257 * millisecond);
    EXPECT_EQ(rig.mode(), "Reset");
}

TEST(Zt72516, IsResetAfterThePeriodOfTimer) {
    for (const auto& [timer, milliseconds] : {std::pair{0x00U, 2.5},
                                              {0x08U, 3.0},
                                              {0x10U, 3.5},
                                              {0x18U, 4.0},
                                              {0x07U, 320.0},
                                              {0x1FU, 512.0}}) {
        Rig rig;
        rig.start(0x10, timer);
        const auto period = static_cast<std::int64_t>(milliseconds * 1e6);
        rig.goTo(period - millisecond / 10);
        EXPECT_EQ(rig.mode(), "Normal") << timer;
        rig.goTo(period + 5 * millisecond);
        EXPECT_EQ(rig.mode(), "Reset") << timer;
        rig.goTo(period + 12 * millisecond);
        EXPECT_EQ(rig.mode(), "Init") << "after 10 ms";
        EXPECT_EQ(rig.flags(), 0x100U);
        EXPECT_EQ(rig.send(0x05000000) & 0xFFFFFF, timer) << "registers stay";
    }
}

TEST(Zt72516, IsRefreshedAsInitSays) {
    using Case = std::pair<unsigned, std::vector<unsigned>>; // masks of the inverted code
    for (const auto& [init, masks] :
         {Case{0x210, {0xFF}}, Case{0x410, {0xF0, 0x0C}}, Case{0x610, {0xC0, 0x30, 0x0C, 0x03}}}) {
        for (const bool wrong : {false, true}) {
            Rig rig;
            rig.start();
            rig.send(0x43000000 | init);
            rig.goTo(200 * millisecond);
            const unsigned inverse = ~rig.send(0x07000000);
            for (const unsigned mask : masks)
                rig.send(0x47000000 | ((inverse ^ (wrong ? mask & 0x66 : 0)) & mask));
            rig.goTo(100 * millisecond);
            EXPECT_EQ(rig.mode(), wrong ? "Init" : "Normal") << init;
            EXPECT_NE(rig.send(0x07000000) & 0xFF, ~inverse & 0xFF) << "another code";
        }
    }
    for (const int after : {127, 130}) { // ms; the first half of 256 is closed
        Rig rig;
        rig.start(0x110);
        rig.goTo(after * millisecond);
        rig.send(0x47000000);
        EXPECT_EQ(rig.mode(), after < 128 ? "Reset" : "Normal");
    }
}

TEST(Zt72516, IsRefreshedByTheDongle) {
    for (unsigned mode = 0; mode < 4; ++mode) {
        Rig rig;
        rig.start();
        rig.send(0x43000010U | mode << 9);
        const auto command = [&rig](std::uint8_t first, std::uint8_t second) {
            EXPECT_EQ(rig.exchange({0, 22, 0, first, second}), (UsbFrame{0, 22}));
        };
        command(static_cast<std::uint8_t>(8 + mode), 6); // every 100 ms
        command(12, 0);                                  // no mode
        command(8, 10);                                  // no time
        rig.goTo(5000 * millisecond);
        EXPECT_EQ(rig.mode(), "Normal") << mode;
        command(0, 0);
        rig.goTo(6000 * millisecond);
        EXPECT_EQ(rig.mode(), "Init") << mode;
    }
}

TEST(Zt72516, CountsResetsForSafe) {
    for (const auto& [init, resets] :
         {std::pair{0x00U, 1}, {0x800U, 2}, {0x1000U, 3}, {0x1800U, 5}})
        for (const int happened : {resets - 1, resets}) {
            Rig rig;
            rig.start(init);
            for (int i = 0; i < happened; ++i) {
                rig.send(0x04000000);
                rig.send(0x44000200 | (~rig.send(0x04000000) & 0xFF)); // Flash: 32768 ms
                EXPECT_EQ(rig.mode(), "Flash");
                rig.goTo(33'000 * millisecond);
                EXPECT_EQ(rig.mode(), "Init");
            }
            EXPECT_EQ(rig.flags(0x89000000) >> 8 & 1, happened == resets ? 1U : 0U) << init;
            EXPECT_EQ(rig.send(0x00000000) >> 24 & 1, happened == resets ? 1U : 0U) << "SAFE -G";
        }
}

TEST(Zt72516, ChangesModeByItsCodeOnce) {
    Rig rig;
    const unsigned code = rig.send(0x04000000) & 0xFF;
    rig.send(0x44000200 | code);
    EXPECT_EQ(rig.mode(), "Init") << "not the complement";
    rig.send(0x44000200 | (~code & 0xFF));
    EXPECT_EQ(rig.mode(), "Init") << "a wrong one has used the code up";
    rig.send(0x44000200 | (~rig.send(0x04000000) & 0xFF));
    EXPECT_EQ(rig.mode(), "Flash");
    EXPECT_EQ(rig.send(0x04000000) >> 8 & 7, 2U);
    rig.send(0x44000000 | (~rig.send(0x04000000) & 0xFF));
    EXPECT_EQ(rig.mode(), "Reset");
    EXPECT_EQ(rig.send(0x03000000), 0U) << "does not listen";
    rig.goTo(11 * millisecond);
    EXPECT_EQ(rig.flags(), 0x20U);
}

TEST(Zt72516, SleepsUntilSomethingWakesIt) {
    for (const auto& [mode, name, later] : // after 100 ms, with a forced wake-up after 96
         {std::tuple{0x80U, "Low power VDD on", "Low power VDD on"},
          {0x88U, "Low power VDD on", "Init"}, // its watchdog: 12 ms
          {0xC0U, "Low power VDD on", "Normal"},
          {0x60U, "Low power VDD off", "Low power VDD off"},
          {0x70U, "Low power VDD off", "Normal"},
          {0x58U, "Normal", "Normal"}}) {
        Rig rig;
        rig.start(0x10, 0x01001E);
        rig.send(0x49000000 | mode);
        EXPECT_EQ(rig.mode(), name) << mode;
        rig.goTo(100 * millisecond);
        EXPECT_EQ(rig.mode(), later) << mode;
        if (mode == 0x60 || mode == 0x80) {
            rig.turn("VPRE IPFF");
            EXPECT_EQ(rig.mode(), name);
            rig.turn("LIN2 Wakeup");
            EXPECT_EQ(rig.mode(), "Normal");
        }
        if (mode == 0xC0) {
            EXPECT_EQ(rig.flags(), 0x4000U) << "FWU";
        }
    }
    Rig coded; // LPM w RND
    coded.start(0x800010);
    coded.send(0x49000080);
    EXPECT_EQ(coded.mode(), "Normal");
    coded.send(0x49000080 | (~coded.send(0x09000000) & 7));
    EXPECT_EQ(coded.mode(), "Low power VDD on");
}

TEST(Zt72516, SumsItsFlagsUp) {
    // The summary is bits 31 to 20 of the answer to a write.
    using Case = std::tuple<const char*, unsigned, unsigned, unsigned>;
    for (const auto& [flag, word, answer, summary] :
         {Case{"Vdd low reset", 0x88000080, 0xA0000800, 0xA00},
          Case{"SAFE SPI resistor mismatch", 0x88000080, 0x81000002, 0x810},
          Case{"SPI wakeup", 0x88000080, 0xC0002000, 0xC00},
          Case{"WD INT at 50% Flash", 0x89000000, 0x00000208, 0x000},
          Case{"VBATP Over voltage", 0x8A000000, 0x02000001, 0x020},
          Case{"VPRE Thermal shutdown", 0x8A000000, 0x14008000, 0x140},
          Case{"VPRE IPFF", 0x8A000000, 0x04080000, 0x040},
          Case{"CAN0 Over Temp", 0x8B000000, 0x18000020, 0x182},
          Case{"CAN1 Wakeup", 0x8B800000, 0x48000080, 0x482},
          Case{"LIN0 Bus Dom Clamp", 0x8C000000, 0x08000001, 0x084},
          Case{"LIN3 Over Temp", 0x8D000000, 0x18001000, 0x188}, Case{"Tlim", 0, 0x10000000, 0x100},
          Case{"SG-G", 0, 0, 0x001}}) {
        Rig rig;
        rig.turn(flag);
        EXPECT_EQ(rig.send(word), answer) << flag;
        EXPECT_EQ(rig.send(word), answer) << flag << " stays";
        EXPECT_EQ(rig.send(0x41000000), summary << 20) << flag;
        rig.turn(flag, false);
        EXPECT_EQ(rig.send(0x41000000), 0U) << flag;
    }
}

} // namespace
} // namespace bitlux::test
