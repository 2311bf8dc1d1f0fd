#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

class Zt72537 : public testing::Test, public PanelBench {
protected:
    Zt72537() : PanelBench("zt72537", {}, "ZT72537", {.bits = 4, .one = 0x8080FF}) {}
};

/// Every button and box, in the order in which a user of the chip needs them.
TEST_F(Zt72537, SendsAndShowsWhatEachControlSays) {
    walk(std::initializer_list<PanelStep>{
        // The watchdog, its period, and the resistor that sets it
        {"wd_time=40", "<00 04 00 00 03 28 02 00>", "wd_aff(0):T = 40 ms"},
        {"WDConfResistor=319.9", "<00 04 00 00 03 96 02 00>",
         "WDPeriod:Watch-Dog Clear Period : 149.7534 ms;wd_aff(0):T = 150 ms"},
        {"WDConfResistor=20", "<00 04 00 00 03 0A 02 00>",
         "WDPeriod:Watch-Dog Clear Period : 10 ms"},
        {"WDConfResistor=320 WDConfResistor=19 WDConfResistor=abc WDConfResistor=", "",
         "WDPeriod:Watch-Dog Clear Period : 10 ms"},
        // Writes. Of a pair of options the first one starts selected.
        {"CmdMcr", "08", "displayReadFlags(4)=0;Label_Liste(0):Sent : 08"},
        {"OptMcr(5) CmdMcr", "00", "Label_Liste(0):Sent : 00"},
        {"CheckWucr(0) CheckWucr(3) CmdWucr", "29"},
        {"CmdLincr", "44", "displayReadFlags(0)=0"},
        {"OptLincr(2) OptLincr(5) OptLincr(7) CmdLincr", "4A"},
        {"CmdHscr", "6F", "displayReadFlags(28)=0;displayReadFlags(33)-"},
        {"OptHscr(1) OptHscr(5) CmdHscr", "6A"},
        {"OptLscr(7) OptLscr(3) CmdLscr", "85", "displayReadFlags(32)-"},
        {"OptTimcr(5) CmdTimcr", "A5"},
        {"OptCswd(1) OptTimcr(11) CmdTimcr", "AB"},
        {"OptCswd(0) OptTimcr(0) CmdTimcr", "A0"},
        {"OptAmuxcr(7) CmdAmuxcr", "CF"},
        {"OptAmuxcr(9) CmdAmuxcr", "C7"},
        {"OptCfr(1) CheckCfr(3) CmdCfr", "D9", "Label_Liste(0):Sent : D9"},
        {"CheckCfr(1) CheckCfr(2) CmdCfr", "DF"},
        {"CheckImr(1) CheckImr(2) CmdImr", "E6"},
        {"CheckImr(1) CheckImr(2) CmdImr", "E0"},
        // Flags
        {"!VSR/VSUV CmdReadReg2(1)", "10", "displayReadFlags(4)=4;displayReadFlags(24)=8"},
        {"!WUSR/L3 CmdReadReg2(3)", "30", "displayReadFlags(12)=4"},
        {"!LINSR/TXDOM CmdReadReg2(5)", "50", "displayReadFlags(0)=4;displayReadFlags(24)=C"},
        {"!HSSR/HS2OP CmdReadReg2(7)", "70", "displayReadFlags(28)=8;displayReadFlags(24)=E"},
        {"!LSSR/LS1CL CmdReadReg2(9)", "90", "displayReadFlags(8)=1;displayReadFlags(24)=F"},
        {"!LSSR/LS1OP !LSSR/LS2CL !LSSR/LS2OP CmdLscr", "85",
         "displayReadFlags(8)=F;displayReadFlags(32)+;displayReadFlags(33)-"},
        {"!HSSR/HS1CL !HSSR/HS1OP !HSSR/HS2CL CmdHscr", "6A", "displayReadFlags(33)+"},
        {"CmdReadReg2(11)", "B0", "displayReadFlags(16)=2"},
        {"CmdReadAll", "10 30 50 70 90 B0 F0", "displayReadFlags(4)=4;displayReadFlags(12)=4"},
        // Variants
        {"zt7253x(2)", "",
         "displayReadFlags(8):-;displayReadFlags(13):-;displayReadFlags(24):-;"
         "displayReadFlags(31):-;displayReadFlags(12):L1;displayReadFlags(28):HS1CL"},
        {"CmdReadAll", "10 30 50 70 B0 F0"},
        {"zt7253x(1)", "", "displayReadFlags(8):LS1CL;displayReadFlags(13):-"},
        {"zt7253x(0)", "", "displayReadFlags(13):L2;displayReadFlags(31):HS2OP"},
        // Automatic reads
        {"OptRead(2) timer_auto_read*", "10 30 50 70 90 B0 F0"},
        {"OptRead(3) wd_en(0)", "<00 04 00 02 03 0A 02 00>"},
        {"CmdReadReg2(11)", "B0", "displayReadFlags(16)=0"},
        // A clear by the button comes too early between those of the dongle.
        {"OptMcr(3) CmdMcr wd_en(0)", "03 <00 04 00 00 03 0A 02 00>"},
    });
    EXPECT_FALSE(on<forms::Timer>("timer_auto_read").runs());
}

TEST_F(Zt72537, ShowsTheInterruptThatWasRead) {
    const std::vector<std::pair<int, const char*>> texts{{0, "No Interrupt"},
                                                         {1, "Lx Wake-up from Stop and Sleep Mode"},
                                                         {2, "HS Interrupt (Over-temperature)"},
                                                         {3, "LS Interrupt (Over-temperature)"},
                                                         {4, "LIN Wake-up / LIN Interrupt"},
                                                         {5, "Voltage Monitor Interrupt"},
                                                         {6, "Forced Wake-up"},
                                                         {7, "Not defined"},
                                                         {15, "Not defined"}};
    for (const auto& [code, text] : texts) {
        for (int bit = 0; bit < 4; ++bit)
            on<forms::Label>(fmt::format("displayReadFlags({})", 20 + bit))
                .setBackColor((code >> bit & 1) != 0 ? 0x8080FF : 0xFFFFC0);
        program.forms().form("ZT72537").call("decod_ISR");
        EXPECT_EQ(on<forms::Label>("displayReadFlags(34)").caption(), text);
    }
}

TEST_F(Zt72537, GuidesIntoStopAndSleepMode) {
    walk(std::initializer_list<PanelStep>{
        {"OptMcr(1)", "",
         "Frame1-;Frame2-;CmdMcr-;CmdSelectWakeUp+;CmdSelectWDClear+;wakeUpModeSelectFrame+;"
         "Lbl_enter:Send the different commands then enter in Stop Mode"},
        {"CmdMcr2", "[Please choice an Interval]", "Frame1-"},
        {"WakeUpModeOpt(1) CyclicSenseCombo=1 CmdMcr2",
         "[Please choice Select at least one High-Side]"},
        {"CmdSelectWDClear", "", "wakeUpModeSelectFrame-;wdClearSelectFrame+"},
        {"CmdSelectWakeUp", "", "wakeUpModeSelectFrame+;wdClearSelectFrame-"},
        // 40 ms on high side 1 alone, wake-up by L2, without the service
        {"WakeUpModeCheck(4) WakeUpModeCheck(5) WakeUpModeCheck(5) WakeUpModeCheck(1) wd_en(1) "
         "CmdMcr2",
         "22 D0 AA 61 09/1",
         "Frame1+;Frame2+;CmdMcr+;wakeUpModeSelectFrame-;Lbl_check_int+;Lbl_check_int2+"},
        {"tim_int* tim_int*", "", "Lbl_check_int:Check INT pin.."},
        {"tim_int* tim_int*", "", "Lbl_check_int:Check INT pin"},
        {"wd_en(1)", "", "Lbl_check_int-"},
        {"OptMcr(2)", "", "Lbl_enter:Send the different commands then enter in Sleep Mode"},
        // Without a scheduled wake-up
        {"WakeUpModeOpt(2) CheckWucr(1) OptRead(2) wd_en(2) CmdMcr2", "20 A8 61 0A"},
        {"OptMcr(0) OptMcr(1) Command6", "", "Frame1+;CmdMcr+;wakeUpModeSelectFrame-"},
        {"CmdMcr", "08"},
    });
    EXPECT_TRUE(on<forms::OptionButton>("OptRead(3)").value());
    EXPECT_EQ(session().ZT72537FrameByte7, 0);
    EXPECT_EQ(on<forms::Button>("CmdMcr2").caption(), "Enter in Stop Mode");
    EXPECT_EQ(on<forms::Frame>("wakeUpModeSelectFrame").caption(),
              "Select Wake-Up Modes before enter in Stop Mode");
}

TEST_F(Zt72537, ReadsByItselfDuringTheWaitOfARun) {
    outcomeOf("Seq_MCR_W Text_Wait=1200 Cm_Wait Seq_WUCR_W OptRead(2)");
    EXPECT_EQ(outcomeOf("Cm_Run_Seq"), "08 10 30 50 70 90 B0 F0 10 30 50 70 90 B0 F0 20");
}

TEST_F(Zt72537, EndsAutoReadWhenTheDongleDoesNotAnswer) {
    EXPECT_EQ(outcomeOf("OptRead(2)"), "");
    dongle.setFaults(DongleFaults({{.kind = DongleFault::Kind::Silent}}));
    EXPECT_EQ(outcomeOf("wd_en(0)"),
              "<00 04 00 02 03 00 02 00> [Check the USB cable and restart program]");
    EXPECT_TRUE(session().LinkFailed);
    EXPECT_FALSE(on<forms::Timer>("timer_auto_read").runs());
    EXPECT_TRUE(on<forms::OptionButton>("OptRead(3)").value());
}

TEST_F(Zt72537, ReportsOnceThatTheDongleWentInTheMiddleOfTheEntry) {
    outcomeOf("OptMcr(1) WakeUpModeOpt(2)");
    dongle.setFaults(DongleFaults({{.kind = DongleFault::Kind::Gone, .frame = 2}}));
    EXPECT_EQ(outcomeOf("CmdMcr2"), "20 A0 [Check the USB cable and restart program]");
    expect("Frame1+;CmdMcr+");
    EXPECT_EQ(session().ZT72537FrameByte7, 0);
}

TEST_F(Zt72537, RestoresTheShapeOfWordsAndStopsItsService) {
    EXPECT_EQ(session().SPIType, 2);
    EXPECT_EQ(session().WordToSend.size(), 8U);
    session().ZT72537FrameByte7 = 1;
    outcomeOf("wd_time=7 wd_en(0)");
    program.forms().unload("ZT72537");
    EXPECT_EQ(sent(), "<00 04 00 00 03 07 02 00>");
    EXPECT_EQ(session().SPIType, 1);
    EXPECT_EQ(session().ZT72537PanelActive, 0);
    session().LinkFailed = true;
    program.forms().show("ZT72537");
    EXPECT_FALSE(session().LinkFailed);
    EXPECT_EQ(session().ZT72537FrameByte7, 0);
}

TEST_F(Zt72537, RefusesToSendLeastSignificantBitFirst) {
    session().MSBFirst = ConstOff;
    EXPECT_EQ(outcomeOf("CmdMcr CmdWucr"),
              "[The words of this chip need the most significant bit first. Nothing was sent.]");
}

} // namespace
} // namespace bitlux::test
