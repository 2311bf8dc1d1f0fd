// The models of the ZT72361 and the ZT72390: flags, modes, the watchdog, wake-ups, interrupts, and
// the writes of timer 1 that the dongle sends.

#include "dongle_rig.h"

#include "platform/failure.h"
#include "support/rows.h"

#include <string>

namespace bitlux::test {
namespace {

struct Rig361 : DongleRig {
    explicit Rig361(const std::string& device = "zt72361") : DongleRig(device, 8, 1) {}
};

TEST(Zt72361, ReadsTheFlagsOfEachRegister) {
    Rig361 rig;
    rig.play("!GFAIL !CAN-UF !CAN-WU !V2LOW !L1WU !CanL_to_Vbat !CanH_to_5V");
    rig.play("00=2 20=0 3B=0 20=B 40=A 60=8 80=2 A0=4 C0=8 E0=4 B3=0 BF=0 DF=0 A0=4 57=0 40=A "
             "5B=0 40=0 A0=0 C0=0 80=2 TIM_1>3 TIM_2>7 CAN>3");

    Rig361 earlier("zt72390");
    for (const char* flag : {"CAN-UF", "CanL to Vbat", "Rx recessive"})
        EXPECT_THROW(switchNamed(earlier.chip(), flag), Failure) << flag;
    earlier.play("!CUR 40=2");
}

TEST(Zt72361, IsResetAfterThePeriodOfTimer1) {
    for (const auto& [timer, period] :
         {std::pair{"B0", 10}, {"B5", 45}, {"B2", 100}, {"B7", 350}}) {
        const std::string refreshed = // in the last moment
            fmt::format("{0} @1000 Mode>Standby 11 @{1} {0} @{1} Mode>Normal @{1}+ ", timer,
                        period);
        Rig361().play(refreshed + "lines=0 11=0"); // it does not listen
        Rig361().play(refreshed +
                      fmt::format("Mode>Reset @{0} Mode>Reset @{0}+ Mode>Standby TIM_1>0 "
                                  "00=1 00=0",
                                  period + 5));
    }
}

TEST(Zt72361, ChangesItsModeByItsWords) {
    // Words, the mode they lead to, whether the watchdog runs, flags of IOR.
    for (const auto& [words, mode, runs, flags] :
         Rows<const char*, const char*, bool, int>{{"11", "Normal", true, 0},
                                                   {"11 12", "Standby", false, 0},
                                                   {"11 13", "Stop", false, 0},
                                                   {"38 13", "Stop", true, 0},
                                                   {"14", "Standby", false, 0},
                                                   {"34 14", "Sleep", false, 0},
                                                   {"11 10", "Normal,_debug", false, 1},
                                                   {"15 10", "Normal", true, 0},
                                                   {"15 11", "Normal", true, 0},
                                                   {"11 16", "Standby,_debug", false, 1},
                                                   {"38 17", "Stop,_debug", false, 1},
                                                   {"11 18", "Normal", true, 0}}) {
        Rig361 rig;
        rig.play(fmt::format("{} Mode>{}", words, mode));
        EXPECT_EQ(rig.reading("Watchdog") != "off", runs) << words;
        rig.play(fmt::format("60={}", flags));
    }
    Rig361().play("11 !DEBUG @1000 Mode>Normal,_debug !-DEBUG @1011 Mode>Reset");
}

TEST(Zt72361, IsServedByTheDongle) {
    Rig361 rig;
    const std::int64_t start = rig.clock.nanoseconds();
    rig.play("<00040001B11401>=0004 TIM_1>1 11"); // 45 ms, written every 40, from now on
    rig.at(start + 40 * millisecond - 1);
    rig.play("Watchdog>7.0_ms_left");
    rig.at(start + 40 * millisecond);
    rig.play("Watchdog>45.0_ms_left <0830000000000001>"); // stops another chip's
    rig.at(start + 36'000'000 * millisecond);
    rig.play("Watchdog>45.0_ms_left <00040002B11401>=0004"); // no state of it
    rig.at(start + 36'000'079 * millisecond);
    rig.play("Watchdog>6.0_ms_left <00040000B11401>=0004");
    rig.at(start + 36'000'086 * millisecond);
    rig.play("Mode>Reset");
}

TEST(Zt72361, WakesByFlagsThatItLetsThrough) {
    playEach<Rig361>(
        {"91 13 !L1WU Mode>Standby @10 lines=3", "91 13 !L2WU Mode>Stop @10 lines=3",
         "98 34 14 !L3WU Mode>Reset @10 lines=3", "93 34 14 !L3WU Mode>Sleep @10 lines=2",
         "51 13 !CAN-WU Mode>Standby @10 lines=3", "53 13 !CAN-WU Mode>Stop @10 lines=3",
         "51 34 14 !CAN-WU Mode>Reset @10 lines=3", "50 13 !CAN-WU Mode>Stop @10 lines=3",
         "51 13 !CAN-F Mode>Stop @10 lines=3"});
}

TEST(Zt72361, InterruptsByFlagsThatAreNotMasked) {
    playEach<Rig361>(
        {"!MCR_flags/VDDTEMP E0=2 lines=3 F2 E0=0 lines=2", "!CAN-F E0=1 lines=3 F1 E0=0 lines=2",
         "!HS1OT E0=4 lines=3 F4 E0=0 lines=2", "!V2LOW E0=4 lines=3 F4 E0=0 lines=2",
         "!VSUPLOW E0=8 lines=3 F8 E0=0 lines=2", "!BATFAIL E0=0 lines=2 F0 E0=0 lines=2"});
}

} // namespace
} // namespace bitlux::test
