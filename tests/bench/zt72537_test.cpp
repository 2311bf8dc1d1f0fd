// The models of the ZT72537 and its two smaller variants: status, the watchdog, wake-ups,
// interrupts, and the clear words of the dongle.

#include "dongle_rig.h"

#include "platform/failure.h"
#include "support/rows.h"

#include <string>

namespace bitlux::test {
namespace {

struct Rig537 : DongleRig {
    explicit Rig537(const std::string& device = "zt72537") : DongleRig(device, 8, 2) {}
};

TEST(Zt72537, AnswersWithFlagsBelowTheSystemStatus) {
    Rig537().play(
        "!VSOV !LS2CL !HS1OP !L3 08=B8 10=B8 2F=B4 30=B4 40=B0 50=B0 61=B2 70=B2 80=B4 90=B4 "
        "A0=B2 B0=B2 C7=B0 D1=B0 E0=B5 CFR>1 !TXDOM !WDERR 4B=F4 B0=F6 B0=F2");
    Rig537 one("zt72534");
    Rig537 none("zt72532");
    for (const char* flag : {"L2", "L4", "HS2CL", "HS2OP"})
        for (Rig537* variant : {&one, &none})
            EXPECT_THROW(switchNamed(variant->chip(), flag), Failure) << flag;
    for (const char* flag : {"LS1CL", "Status/LSS"})
        EXPECT_THROW(switchNamed(none.chip(), flag), Failure) << flag;
    one.play("!LS1CL 90=11");
    none.play("!L1 30=01");
}

TEST(Zt72537, IsResetWhenItsWatchdogIsNotClearedInTheWindow) {
    for (const auto& [prescaler, period] : {std::pair{"A0", 10}, {"A1", 20}, {"A7", 140}}) {
        Rig537 rig;
        rig.at(1000 * millisecond);
        rig.play(fmt::format("{}=02 03", prescaler)); // waits for the first clear
        const std::int64_t over = rig.sentAt + period * millisecond;
        rig.at(over - period * millisecond / 2);
        rig.play("B0=01"); // the window is open
        rig.at(over - 1);
        rig.play("6F=00"); // a word in the last moment
        rig.at(over);
        rig.play("lines=0 B0=00"); // in reset it does not listen
        rig.at(over + 5 * millisecond - 1);
        rig.play("Mode>Reset");
        rig.at(over + 5 * millisecond);
        rig.play("B0=0A B0=02 HSCR>0 TIMCR>0");
    }
    for (const auto& [early, answer] : {std::pair{1, 0x06U}, {0, 0x01U}}) { // ns
        Rig537 rig;
        rig.send(0x03);
        rig.at(rig.sentAt + 5 * millisecond - early);
        rig.play("03 @9");
        EXPECT_EQ(rig.send(0xB0), answer);
    }
}

TEST(Zt72537, IsServedByTheDongle) {
    Rig537 rig;
    rig.play("<00040001030A02>=0004 <00040002030A01>=0004 Watchdog>off"); // no state, another chip
    const std::int64_t start = rig.clock.nanoseconds();
    rig.play("<00040002030A02>=0004");
    for (const auto& [time, left] : Rows<std::int64_t, const char*>{{7'400'000, "2.6_ms_left"},
                                                                    {7'500'000 - 1, "2.5_ms_left"},
                                                                    {7'500'000, "10.0_ms_left"}}) {
        rig.at(start + time);
        EXPECT_EQ(rig.reading("Watchdog"), left);
    }
    rig.at(start + 8 * millisecond);
    rig.play("<00040002030802>=0004"); // 6 ms from the command on
    for (const auto& [time, left] : Rows<std::int64_t, const char*>{
             {14 * millisecond - 1, "3.5_ms_left"},
             {14 * millisecond, "10.0_ms_left"},
             {14 * millisecond + 36'000'000 * millisecond, "10.0_ms_left"}}) {
        rig.at(start + time);
        EXPECT_EQ(rig.reading("Watchdog"), left);
    }
    for (const auto& [stop, later] : // the next clear ends it, unless the word stopped the service
         {std::pair{"<0831000100000000>", "Normal"}, {"<0831000100000001>", "Stop"}}) {
        rig.play(fmt::format("Mode>Normal {} Mode>Stop", stop));
        rig.at(rig.clock.nanoseconds() + 20 * millisecond);
        EXPECT_EQ(rig.reading("Mode"), later);
    }
    rig.play("00 <00040002030002>=0004 Watchdog>off"); // never
    rig.play("<00040002030A02>=0004 <00040000030A02>=0004 @20 B0=0A");
}

TEST(Zt72537, WakesAsItsRegistersSay) {
    // Words, of which the last one begins low power; a pin that is turned on after 10 ms; when it
    // wakes, in milliseconds, 0 for never; the code of ISR.
    for (const auto& [words, pin, at, code] :
         Rows<std::string, std::string, int, int>{{"A9 01", "", 20, 6},
                                                  {"AF A3 01", "", 140, 6},
                                                  {"AF D4 01", "", 1120, 6},
                                                  {"A9 63 02", "", 20, 6},
                                                  {"A9 A8 01", "", 0, 0},
                                                  {"21 01", "!L1", 10, 1},
                                                  {"21 02", "!L1", 10, 1},
                                                  {"21 01", "!L2", 0, 0},
                                                  {"21 AA 61 01", "!L1", 40, 1},
                                                  {"21 AA 62 02", "!L2", 0, 0},
                                                  {"AA 01", "!LIN_wake-up", 10, 4}}) {
        Rig537 rig;
        const bool sleeps = words.ends_with("02");
        const char* const low = sleeps ? "Sleep" : "Stop";
        rig.play(fmt::format("{} @10- Mode>{} @10 {}", words, low, pin));
        if (at == 0) { // Sleep does not even listen
            rig.play(fmt::format("@5000 Mode>{} lines=2 B0={}", low, sleeps ? "00" : "02"));
            continue;
        }
        if (at > 10)
            rig.play(fmt::format("@{}- Mode>{}", at, low));
        rig.play(
            fmt::format("@{} Mode>{} @{} Mode>Normal", at, sleeps ? "Reset" : "Normal", at + 5));
        rig.play(fmt::format("lines=3 F0={} F0=0 lines=2", code));
    }
}

TEST(Zt72537, ReportsTheFirstInterruptThatIsNotMasked) {
    Rig537 rig;
    rig.play("!VSUV !RXSHORT !LS1CL !LS1OP !LS2CL !LS2OP !HS1CL !HS1OP !HS2CL");
    rig.play("F0=F3"); // one of the high sides is cool
    rig.play("!HS2OP E8=F2 EC=F3 EE=F4 E6=F5 EF=F2 lines=2 E6 lines=3");
}

} // namespace
} // namespace bitlux::test
