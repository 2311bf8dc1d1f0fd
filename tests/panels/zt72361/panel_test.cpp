#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

class Zt72361 : public testing::Test, public PanelBench {
protected:
    Zt72361() : PanelBench("zt72361", {}, "ZT72361", {.bits = 4, .one = 0x8080FF}) {}
};

/// Every button and box, in the order in which a user of the chip needs them.
TEST_F(Zt72361, SendsAndShowsWhatEachControlSays) {
    walk(std::initializer_list<PanelStep>{
        // The watchdog: choosing ON and the bar's handler each send the frame.
        {"HscWd=20", "<00 04 00 01 B0 14 01 00> <00 04 00 01 B0 14 01 00>", "LblWd(4):40"},
        {"OptWd(2) OptWd(5) HscWd=60", "<00 04 00 01 B6 3C 01 00>", "LblWd(4):120"},
        // Registers
        {"CmdMcr", "10", "Label_Liste(0):Sent : 10"},
        {"OptRcr(1) OptRcr(5) CmdRcr", "35"},
        {"OptRcr(3) OptRcr(7) CmdRcr CmdReadReg(1)", "3F 20", "LblRCR(0)=F"},
        {"OptRcr(0) OptRcr(2) OptRcr(4) OptRcr(6) CmdRcr", "30"},
        {"OptSC(3) CmdCan", "56", "FrmSlew+;FrmWake-"},
        {"OptCan(1) CmdCan", "51", "FrmSlew-;FrmWake+"},
        {"OptSC(5) OptCan(3) CmdCan", "5B"},
        {"OptCan(0) OptCan(2) CmdCan", "56", "FrmSlew+;FrmWake-"},
        {"OptIor(1) CmdIor", "74"},
        {"OptL01(3) OptL23(3) CmdWur", "9F"},
        {"OptL01(1) OptL23(2) CmdWur", "99"},
        {"CmdTim1", "B6"},
        {"OptTim2(7) CmdTim2", "BF"},
        {"OptLpc(1) OptLpc(7) CmdLpc", "D9"},
        {"OptLpc(3) OptLpc(5) CmdLpc", "DF"},
        {"OptIntr(3) OptIntr(5) CmdIntr", "F6"},
        {"OptIntr(1) OptIntr(7) CmdIntr", "FF"},
        // Flags
        {"!MCR_flags/GFAIL CmdReadReg(0)", "00", "LblMCR(0)=2"},
        {"CmdReadReg(1)", "20", "LblRCR(0)=0"},
        {"!CAN_flags/CAN-F CmdReadReg(2)", "40", "LblCAN(0)=4"},
        {"!IOR_flags/VSUPLOW CmdReadReg(3)", "60", "LblIOR(0)=3"},
        {"!WUR_flags/L3WU CmdReadReg(4)", "80", "LblWUR(0)=8"},
        {"!TIM_flags/Tx_dominant CmdReadReg(5)", "A0", "LblTIM(0)=1"},
        {"!LPC_flags/CanH_to_5V CmdReadReg(6)", "C0", "LblLpc(0)=8"},
        {"CmdReadReg(7)", "E0", "LblIntr(0)=0"},
        {"OptIntr(6) CmdIntr CmdReadReg(7)", "F7 E0", "LblIntr(0)=8;LblIntr(3):VSUPLOW"},
        {"CmdReadAll", "00 20 40 60 80 A0 C0 E0"},
        // The earlier twin
        {"OptSbc(0)", "",
         "FrmCan-;FrmLpc-;LblTIM(0)-;LblLpc(3)-;CmdReadReg(5)-;FrmRcr(0)+;FrmRcr(1)-;"
         "LblRCR(1):SAFE;LblCAN(2):TXF;LblCAN(1):CUR;LblCAN(0):THERM;"
         "LblTitle(0):SBC high speed ZT72390"},
        {"CmdReadAll", "00 20 40 60 80 E0"},
        {"OptRcr(9) CmdRcr", "32"},
        {"OptSbc(1)", "",
         "FrmCan+;FrmLpc+;LblTIM(0)+;CmdReadReg(6)+;FrmRcr(0)-;FrmRcr(1)+;LblRCR(1):CAN SLEEP;"
         "LblCAN(2):CAN-F;LblCAN(1):CAN-UF;LblCAN(0):THERM-CUR;"
         "LblTitle(0):SBCeCAN high speed ZT72361"},
        {"OptRcr(2) CmdRcr", "30"},
        // Automatic reads need the watchdog; the data that is left is sent with OFF.
        {"OptRead(1) timer_auto_read*", "00 20 40 60 80 A0 C0 E0"},
        {"CmdIntr OptWdEn(0)", "F7 <00 04 00 00 B7 3C 01 00>"},
        {"timer_auto_read*", ""},
        {"OptRead(0)", ""},
    });
    EXPECT_FALSE(on<forms::Timer>("timer_auto_read").runs());
}

TEST_F(Zt72361, RunsTheWatchdogAsTheModesNeedIt) {
    const char* const both = "<00 04 00 01 B0 05 01 00> <00 04 00 01 B0 05 01 00> 11";
    walk(std::initializer_list<PanelStep>{
        {"OptMcr(1) CmdMcr", both},
        {"CmdMcr", "<00 04 00 01 B0 05 01 00> 11"},
        {"OptMcr(2) CmdMcr", "12 <00 04 00 00 B2 05 01 00>"},
        {"OptMcr(3) CmdMcr OptMcr(4) CmdMcr OptMcr(5) CmdMcr OptMcr(7) CmdMcr", "13 14 15 17"},
        {"OptMcr(1) CmdMcr", both},
        {"OptMcr(6) CmdMcr", "16 <00 04 00 00 B6 05 01 00>"},
        {"OptMcr(0) CmdMcr", "10"},
    });
}

TEST_F(Zt72361, ReadsTheFlagsBeforeItEntersStopMode) {
    EXPECT_EQ(outcomeOf("OptRcr(7) OptMcr(2) CmdEnterStop"),
              "<00 04 00 01 B0 05 01 00> <00 04 00 01 B0 05 01 00> 11 30 00 20 40 60 80 A0 C0 E0 "
              "13 <00 04 00 00 B3 05 01 00> [Flags read, ready to enter in Stop Mode !]");
    EXPECT_EQ(boxes.shown().back().title, "Enter in Stop Mode");
    dongle.unplug();
    EXPECT_EQ(outcomeOf("CmdEnterStop"), "[Check the USB cable and restart program]");
}

TEST_F(Zt72361, LeavesTheTypeOfWordsAsItIs) {
    program.forms().unload("ZT72361");
    session().SPIType = 6;
    session().SPIWordLength = 24;
    program.forms().show("ZT72361");
    EXPECT_EQ(session().SPIType, 6);
    EXPECT_EQ(session().SPIWordLength, 8);
    trace.clear();
    press("CmdIor");
    ASSERT_FALSE(trace.accesses().empty());
    EXPECT_EQ(trace.accesses()[0].frame[1] & 7, 5);
    program.forms().unload("ZT72361");
    EXPECT_EQ(session().SPIType, session().SavedSPIType);
    EXPECT_EQ(session().ZT72361PanelActive, 0);
}

} // namespace
} // namespace bitlux::test
