#include "dongle_rig.h"
#include "support/test_bench.h"

#include <string>

namespace bitlux::test {
namespace {

/// A chip of the family.
struct ChipRig : DongleRig {
    ChipRig() : DongleRig("zt72518d", 16, 2) {}
};

TEST(Zt72518, AnswersEachViewOfARegister) {
    playEach<ChipRig>({"60C9 2180=00C0",             // transmitter and receiver of CAN
                       "62F9 !Pins/I/O_0 2380=0051", // 0: its pin, 1: driven low, 2 and 3: high
                       "40E8 0180=00E8",             // a register with one view
                       "64FB 2500=82BB E500=8280 E500=0000",  // the request clears itself
                       "!VSUV DF80=0100 DF00=0102 DF00=0000", // the other view clears nothing
                       "!Flags_stay !VSUV DF00=0102 DF00=0102"});
}

TEST(Zt72518, HasSwitchesByName) {
    ChipRig rig;
    for (const auto& [name, message] : Rows<const char*, const char*>{
             {"Vaux OV0", "The chip has no switch \"Vaux OV0\"; there is Vaux OV, Vaux OC"},
             {"rx low", "More than one switch is called \"rx low\"; there is CAN Low/Rx Low, "
                        "Lin 1/Rx Low, Lin 2/Rx Low"},
             {"", "The chip has no switch \"\""}}) {
        EXPECT_EQ(failureOf([&, text = name] { switchNamed(rig.chip(), text); }), message);
    }
    for (std::size_t i = 0; i < rig.chip().switches().size(); ++i) {
        const ChipSwitch& one = rig.chip().switches()[i];
        EXPECT_EQ(switchNamed(rig.chip(), one.group + "/" + one.name), i);
    }
}

TEST(Zt72518, ChangesItsModeForTheInvertedRandomWord) {
    ChipRig rig;
    rig.play("5280~1300&3F 1300&C0=80 5A00 DD80&FF=0B");                    // Flash
    rig.send(0x5240 | (rig.send(0x1300) & 0x3F));                           // not inverted
    rig.play("DD80&FF=0B 5240~1300&3F DD80&FF=03 5A00 DD80&FF=1B");         // Init, then Normal
    rig.play("1D80&F8=18 1300&C0=C0 1D00 DD80&FF=1A");                      // leaves debug
    rig.play("52C0~1300&3F DD80&FF=1A 5200~1300&3F DD80&FF=13 E380&FF=02"); // Normal Request
    rig.play("5240~1300&3F");
    const std::uint64_t random = rig.send(0x1300);
    rig.send(0x5200 | (random & 0x30) | (~random & 0x0F)); // works the SAFE pin
    rig.play("DD80&FF=01 DD00&FF=01 DD80&FF=02");          // releases it, and leaves debug
}

TEST(Zt72518, ResetsWhenTheWatchdogExpires) {
    playEach<ChipRig>(
        {"5A00 @256- DD80=001B",
         "5A00 @256 DD80=0000 DD80=2213 E580&FF=01", // in reset for a millisecond
         "5400 5A00 @2.5- Mode>Normal lines=2", "5400 5A00 @2.5 Mode>Reset lines=0",
         "5409 5A00 @6- Mode>Normal lines=2", "5409 5A00 @6 Mode>Reset lines=0",
         "541F 5A00 @512- Mode>Normal lines=2", "541F 5A00 @512 Mode>Reset lines=0",
         "4C02 5A00 @128 5A00 Mode>Normal @128- 5A00 E580&FF=01", // too early
         "5800 5280~1300&3F @48- Mode>Flash", "5800 5280~1300&3F @48 Mode>Reset",
         "58A0 5280~1300&3F @1024- Mode>Flash", "58A0 5280~1300&3F @1024 Mode>Reset",
         "5810 5A00 5C88 @24- Mode>Low_Power_Vdd_On_(Stop)", "5810 5A00 5C88 @24 Mode>Reset",
         "58F0 5A00 5C88 @2048- Mode>Low_Power_Vdd_On_(Stop)", "58F0 5A00 5C88 @2048 Mode>Reset",
         // Resets of 10 ms, without a refresh between them
         "4A10 5A00 @522 Mode>Reset @532 E580&FF=03"});
}

TEST(Zt72518, GoesToLowPowerAndWakes) {
    playEach<ChipRig>(
        {"5C80 DD80&FF=03",      // only from Normal
         "5A00 5C81 DD80&FF=1B", // the random bits have to be 0
         "5A00 5C60 DD80&FF=1B", // VDD may not be switched off
         "5A00 5C80 DD80&FF=83 1D80&F8=80 @60000 DD80&FF=83 5C10 DD80&FF=13 E380=4420",
         "5E01 5A00 5C60 DD80=0000 2580=0000 !CAN_WU Mode>Reset @4 DD80&FF=13",
         "5A00 5C80 !I/O_0_2_INT_WU @8 Mode>Normal_Request E380=4440",
         "5A00 5C80 !CAN_WU @8 Mode>Normal_Request E100=5080",
         "5080 5A00 5C80~1D80&7 Mode>Low_Power_Vdd_On_(Stop)"});
    for (const auto& [mode, low] : Rows<const char*, const char*>{
             {"5CC0", "Low_Power_Vdd_On_(Stop)"}, {"5C70", "Low_Power_Vdd_Off_(Sleep)"}})
        ChipRig().play(fmt::format("5E01 5809 5A00 {} @128- Mode>{} " // the timer wakes it
                                   "@130 Mode>Normal_Request E380&10=10",
                                   mode, low));
}

TEST(Zt72518, ChecksParityWhenEnabled) {
    ChipRig rig;
    rig.play("5140");                      // the bit in the high byte does not matter yet
    rig.play("5E0F 1F00&FF=00 E300=0420"); // an even count needs it
    rig.play("5F0F 1F00&FF=0F 5F07 1F00&FF=0F 5E07 1F00&FF=07");
    rig.play("5280~1300&3F DD80&FF=0B"); // its words carry no parity
}

TEST(Zt72518, IgnoresWordsOfAnotherLength) {
    ChipRig().play("<1831005A0000> <0831005A> DD80=0403 E300=0420");
}

TEST(Zt72518, CanBeFaulty) {
    ChipRig().play("!No_watchdog 5A00 @60000 DD80=001B !RST !INT DD80=A01B lines=1");
}

TEST(Zt72518, IsRefreshedByTheDongle) {
    for (unsigned mode = 0; mode < 4; ++mode) { // every 100 ms, then no more
        ChipRig rig;
        rig.play(fmt::format("{:X} <0015000{:X}06>", 0x4C00 | mode << 2, 8 + mode));
        rig.play("@10000 DD80=001B @10000 E580=0000 <00150020>");
        rig.play("@157 Mode>Normal @260 DD80&FF=13 E580&FF=01");
    }
    // The chip expects another answer.
    playEach<ChipRig>({"4C04 <0015000806> @12 E580&1=1", "4C08 <0015000B06> @12 E580&1=1"});
    ChipRig slow; // 500 ms, with a trigger
    slow.play("<8015000807> @300 Mode>Normal_Request");
    EXPECT_EQ(slow.dongle.triggers(), 1);
    EXPECT_EQ(slow.dongle.readings().front().value, "Simple WD every 500 ms");
    slow.dongle.unplug();
    slow.play("@400");
    EXPECT_EQ(slow.dongle.readings().front().value, "off");
}

TEST(Zt72518, IsWokenByPulsesOfCurrent) {
    const std::string sleeps = "@206 Mode>Low_Power_Vdd_On_(Stop) DF80&FF=00";
    const std::string wakes = "@206 Mode>Normal_Request DF80&FF=01";
    for (const auto& [pulses, outcome, state] : // from 8 ms on a pulse is long
         Rows<const char*, std::string, const char*>{
             {"54BE 4C20 5A00 5C80 <00450010001401>", sleeps, "20 ms every 70 ms"},
             {"54BE 4C40 5A00 5C80 <00450010000501>", wakes, "5 ms every 55 ms"},
             {"54BE 4C60 5A00 5C80 <00450010000801>", sleeps, "8 ms every 58 ms"},
             {"54BE 4C60 5A00 5C80 <00450010000901>", wakes, "9 ms every 59 ms"}}) {
        ChipRig rig;
        rig.play(pulses);
        EXPECT_EQ(rig.dongle.readings().at(1).value, state);
        rig.play(outcome + " <00450000>");
        EXPECT_EQ(rig.dongle.readings().at(1).value, "off");
    }
}

TEST(Zt72518, RemembersTestCommandsAndTrimming) {
    ChipRig rig;
    rig.play("<00250027FE0A> Trimming>none"); // not in test mode
    rig.play("<000D7F> 4210 4403 Test_mode>10_03");
    rig.play("<00250027FE0A> Trimming>27_FE,_TXD_low_10 Test_mode>27_FE");
}

} // namespace
} // namespace bitlux::test
