// The model of the ZT72516: modes, the watchdog, flags and their summary. What the panel sends is
// tested with the panel.

#include "dongle_rig.h"
#include "support/rows.h"

#include <string>
#include <vector>

namespace bitlux::test {
namespace {

struct Rig516 : DongleRig {
    Rig516() : DongleRig("zt72516", 32, 1) {}

    /// In Normal, with the watchdog in force: 256 ms unless TIMER is written.
    void start(unsigned init = 0x10, unsigned timer = 0xF0001E) {
        play(fmt::format("{:X} {:X} 5E000000 47000000", 0x43000000 | init, 0x45000000 | timer));
    }
};

TEST(Zt72516, WaitsInInitUntilItIsRefreshed) {
    Rig516 rig;
    rig.play("Mode>Init 89000000&FFFFFF=08 @60000 Mode>Init 47000000 Mode>Normal");
    rig.play("@60000 Mode>Normal");                // the watchdog is inhibited
    rig.play("43040010 47000000 @257 Mode>Reset"); // by another choice of SAFEb than the first one
}

TEST(Zt72516, IsResetAfterThePeriodOfTimer) {
    for (const auto& [timer, period] : Rows<unsigned, double>{
             {0x00, 2.5}, {0x08, 3.0}, {0x10, 3.5}, {0x18, 4.0}, {0x07, 320}, {0x1F, 512}}) {
        Rig516 rig;
        rig.start(0x10, timer);
        rig.play(fmt::format("@{} Mode>Normal @{} Mode>Reset", period - 0.1, period + 5));
        rig.play(fmt::format("@{} Mode>Init 88000080&FFFFFF=100", period + 12)); // after 10 ms
        rig.play(fmt::format("05000000&FFFFFF={:X}", timer));                    // registers stay
    }
}

TEST(Zt72516, IsRefreshedAsInitSays) {
    // Masks of the inverted code that the words carry, one after the other.
    for (const auto& [init, masks] : Rows<unsigned, std::vector<unsigned>>{
             {0x210, {0xFF}}, {0x410, {0xF0, 0x0C}}, {0x610, {0xC0, 0x30, 0x0C, 0x03}}}) {
        for (const bool wrong : {false, true}) {
            Rig516 rig;
            rig.start();
            rig.play(fmt::format("{:X} @200", 0x43000000 | init));
            const std::uint64_t inverse = ~rig.send(0x07000000);
            for (const unsigned mask : masks)
                rig.send(0x47000000 | ((inverse ^ (wrong ? mask & 0x66 : 0)) & mask));
            rig.play(wrong ? "@100 Mode>Init" : "@100 Mode>Normal");
            EXPECT_NE(rig.send(0x07000000) & 0xFF, ~inverse & 0xFF) << "another code";
        }
    }
    for (const char* steps : // the first half of 256 ms is closed
         {"@127 47000000 Mode>Reset", "@130 47000000 Mode>Normal"}) {
        Rig516 rig;
        rig.start(0x110);
        rig.play(steps);
    }
}

TEST(Zt72516, IsRefreshedByTheDongle) {
    for (unsigned mode = 0; mode < 4; ++mode) {
        Rig516 rig;
        rig.start();
        rig.play(fmt::format("{:X} <0016000{:X}06>=0016", 0x43000010 | mode << 9, 8 + mode));
        rig.play("<0016000C00>=0016 <001600080A>=0016"); // no mode, no time
        rig.play("@5000 Mode>Normal <00160000>=0016 @6000 Mode>Init");
    }
}

TEST(Zt72516, CountsResetsForSafe) {
    for (const auto& [init, resets] :
         Rows<unsigned, int>{{0x00, 1}, {0x800, 2}, {0x1000, 3}, {0x1800, 5}})
        for (const int happened : {resets - 1, resets}) {
            Rig516 rig;
            rig.start(init);
            for (int i = 0; i < happened; ++i) // in Flash, after 32768 ms
                rig.play("04000000 44000200~04000000&FF Mode>Flash @33000 Mode>Init");
            rig.play(happened == resets ? "89000000&100=100 0&1000000=1000000" // SAFE -G
                                        : "89000000&100=0 0&1000000=0");
        }
}

TEST(Zt72516, ChangesModeByItsCodeOnce) {
    Rig516 rig;
    const std::uint64_t code = rig.send(0x04000000) & 0xFF;
    rig.send(0x44000200 | code);
    rig.play("Mode>Init"); // not the complement
    rig.send(0x44000200 | (~code & 0xFF));
    rig.play("Mode>Init"); // the wrong one has used the code up
    rig.play("44000200~04000000&FF Mode>Flash 04000000&700=200");
    rig.play("44000000~04000000&FF Mode>Reset 03000000=0"); // does not listen
    rig.play("@11 88000080&FFFFFF=20");
}

TEST(Zt72516, SleepsUntilSomethingWakesIt) {
    for (const char* steps : // with a forced wake-up after 96 ms
         {"49000080 Mode>Low_power_VDD_on @100 Mode>Low_power_VDD_on !VPRE_IPFF "
          "Mode>Low_power_VDD_on !LIN2_Wakeup Mode>Normal",
          "49000088 Mode>Low_power_VDD_on @100 Mode>Init", // its watchdog: 12 ms
          "490000C0 Mode>Low_power_VDD_on @100 Mode>Normal 88000080&FFFFFF=4000",
          "49000060 Mode>Low_power_VDD_off @100 Mode>Low_power_VDD_off !VPRE_IPFF "
          "Mode>Low_power_VDD_off !LIN2_Wakeup Mode>Normal",
          "49000070 Mode>Low_power_VDD_off @100 Mode>Normal",
          "49000058 Mode>Normal @100 Mode>Normal"}) {
        Rig516 rig;
        rig.start(0x10, 0x01001E);
        rig.play(steps);
    }
    Rig516 coded; // LPM w RND
    coded.start(0x800010);
    coded.play("49000080 Mode>Normal 49000080~09000000&7 Mode>Low_power_VDD_on");
}

TEST(Zt72516, SumsItsFlagsUp) {
    // The summary is bits 31 to 20 of the answer to a write.
    for (const auto& [flag, word, answer, summary] :
         Rows<const char*, unsigned, unsigned, unsigned>{
             {"Vdd_low_reset", 0x88000080, 0xA0000800, 0xA00},
             {"SAFE_SPI_resistor_mismatch", 0x88000080, 0x81000002, 0x810},
             {"SPI_wakeup", 0x88000080, 0xC0002000, 0xC00},
             {"WD_INT_at_50%_Flash", 0x89000000, 0x00000208, 0x000},
             {"VBATP_Over_voltage", 0x8A000000, 0x02000001, 0x020},
             {"VPRE_Thermal_shutdown", 0x8A000000, 0x14008000, 0x140},
             {"VPRE_IPFF", 0x8A000000, 0x04080000, 0x040},
             {"CAN0_Over_Temp", 0x8B000000, 0x18000020, 0x182},
             {"CAN1_Wakeup", 0x8B800000, 0x48000080, 0x482},
             {"LIN0_Bus_Dom_Clamp", 0x8C000000, 0x08000001, 0x084},
             {"LIN3_Over_Temp", 0x8D000000, 0x18001000, 0x188},
             {"Tlim", 0, 0x10000000, 0x100},
             {"SG-G", 0, 0, 0x001}})
        Rig516().play(
            fmt::format("!{0} {1:X}={2:X} {1:X}={2:X} 41000000={3:X}00000 !-{0} 41000000=0", flag,
                        word, answer, summary));
}

} // namespace
} // namespace bitlux::test
