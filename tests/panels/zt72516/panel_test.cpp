// Choices, the shape of words, displays, the watchdog of the dongle, the marker file, the end.

#include "bench.h"

#include "panels/marked_bench.h"

namespace bitlux::test::zt72516 {
namespace {

TEST(Zt72516Choices, LightTheirBits) {
    // Control; option or text, and what the row shows then; row, and its value before.
    using Case = std::tuple<const char*, std::string, const char*, std::uint64_t>;
    Bench bench;
    for (const auto& [control, choices, row, before] : std::initializer_list<Case>{
             {"VAUX3_5_Option", "0=FFFFF9 1=FFFFFD 2=FFFFFF", "Init_Reg", 0xFFFFFF},
             {"VDDrstD_Option", "0=0 1=8 2=10 3=18", "Init_Reg", 0},
             {"VDDLrst_Option", "0=0 1=20 2=40 3=60", "Init_Reg", 0},
             {"WDN_WIN_Option", "0=0 1=100", "Init_Reg", 0},
             {"WD_spi_Option", "0=0 1=200 2=400 3=600", "Init_Reg", 0},
             {"WDSAFEb_Option", "0=0 1=800 2=1000 3=1800", "Init_Reg", 0},
             {"MCU_OC_Option", "0=0 1=2000 2=4000 3=0 4=2000 5=4000", "Init_Reg", 0},
             {"WD2INT_Option", "0=0 1=8000", "Init_Reg", 0},
             {"SAFEB_Option", "0=0 1=40000 2=50000 3=60000 4=70000", "Init_Reg", 0},
             {"Combo_WD_Period_Norm_Mode", "320=7 3.5=10 512=1F 2.5=0", "TIMER_Reg", 0},
             {"Combo_I_mcu_Timer", "3=0 4=80 32=E0", "TIMER_Reg", 0},
             {"Combo_Periodic_Interrupt", "6=0 8=800 768=700 1024=F00", "TIMER_Reg", 0},
             {"Combo_Periodic_Scan", "12=2000 128=D000 512=F000", "TIMER_Reg", 0},
             {"Combo_Forced_Wakeup", "64=80000 6144=70000 48=0", "TIMER_Reg", 0},
             {"Combo_WD_Low_Power_Mode", "16=800000 1536=700000", "TIMER_Reg", 0},
             {"Combo_WD_Flash_Mode", "256=800000 384=300000 1024=A00000 6144=700000 32768=F00000",
              "TIMER_Reg", 0},
             {"Combo_Dev_Selection", "All_Functions_Disabled.=7 Voltage_at_SG16=8F", "AMUX_Reg", 7},
             {"MODE_Option_VDD_ON", "0=80 1=88 8=C0 15=F8", "MODE_Reg", 0},
             {"MODE_Option_VDD_OFF", "0=60 1=68 2=70 3=78", "MODE_Reg", 0},
             {"CAN5V_Option", "0=0 1=8 2=10 3=18", "Regulator_Reg", 0},
             {"Vaux_Option1", "0=0 1=40 2=80 3=C0", "Regulator_Reg", 0},
             {"CAN0_Mode_Option", "0=0 1=2 2=4 3=6", "CAN01_Reg", 0},
             {"CAN1_Mode_Option", "0=0 1=200 2=400 3=600", "CAN01_Reg", 0},
             {"LIN0_SlewRate_Option", "0=0 1=2 2=4 3=6", "LIN01_Reg", 0},
             {"LIN1_Mode_Option", "0=0 1=200 2=300", "LIN01_Reg", 0},
             {"LIN2_Mode_Option", "0=0 1=10 2=18", "LIN23_Reg", 0},
             {"LIN3_SlewRate_Option", "0=0 1=40 2=80 3=C0", "LIN23_Reg", 0},
             {"Combo_SG0_Current", "Off=0 20ma=7 6ma=1", "SGM0_Reg", 0},
             {"Combo_SG7_Current", "20ma=E00000 8ma=400000", "SGM0_Reg", 0},
             {"Combo_SG9_Current", "20ma=38 10ma=18", "SGM1_Reg", 0},
             {"Combo_SG15_16_Current", "14ma=A00000 12ma=800000", "SGM1_Reg", 0}}) {
        bench.pokeTo(row, before);
        for (const std::string& one : split(choices, ' ')) {
            const std::size_t equals = one.find('=');
            const std::string name(control);
            const std::string choice = one.substr(0, equals);
            bench.make(name + (name.starts_with("Combo") ? ":" + choice : "(" + choice + ")"));
            EXPECT_EQ(fmt::format("{:X}", bench.row(row)), one.substr(equals + 1)) << name << one;
        }
        bench.pokeTo(row, 0);
    }
    EXPECT_EQ(bench.sent(), "");
}

TEST(Zt72516Choices, AreOneWayAndTakeTextsFromAList) {
    Bench bench("scripted", {"00000004"});
    auto& tracking = bench.on<forms::OptionButton>("VAUX3_5_Option(2)");
    tracking.click();
    bench.press("Btn_Read_Init_reg");
    EXPECT_EQ(bench.row("Init_Reg"), 4U);
    EXPECT_TRUE(tracking.value()) << "a read leaves the choice alone";
    auto& current = bench.on<forms::ComboBox>("Combo_SG9_Current");
    EXPECT_EQ(current.text(), "Off");
    EXPECT_EQ(bench.on<forms::ComboBox>("Combo_SG8_Current").text(), "16ma");
    EXPECT_EQ(bench.row("SGM1_Reg"), 0U) << "texts at the start write nothing";
    current.edit("17ma");
    EXPECT_EQ(bench.row("SGM1_Reg"), 0U);
    bench.on<forms::ComboBox>("Combo_SG8_Current").select(7);
    EXPECT_EQ(bench.row("SGM1_Reg"), 7U);
    for (const char* row : {"RAM_A_Read", "Interrupt_Flag", "ZT72516TestMode.Passcode"}) {
        bench.on<forms::Label>(fmt::format("{}(3)", row)).click();
        EXPECT_EQ(bench.row(row), 0U) << row << " is only read and takes no clicks";
    }
}

TEST(Zt72516Marker, BringsTestFunctionsAndTheTestForm) {
    for (const bool there : {false, true}) {
        MarkedBench bench("ZT72516", there ? Texts{"72516tm.txt"} : Texts{});
        auto& list = bench.on<forms::ComboBox>("Combo_Dev_Selection");
        EXPECT_EQ(list.items().size(), there ? 45U : 20U);
        EXPECT_EQ(bench.on("Btn_Test_Mode").visible(), there);
        list.edit("Vcp divided by 5");
        const LabelRow& row = bench.program.panels().touch("zt72516").pageControls.row("AMUX_Reg");
        EXPECT_EQ(row.value(), 44U << 3) << "a typed text counts too";
        if (there) {
            EXPECT_EQ(list.items().back(), "Vcp divided by 5");
        }
    }
}

TEST(Zt72516Ram, TakesSixDigits) {
    Bench bench;
    auto& box = bench.on<forms::TextBox>("HexRAM_A");
    for (const char key : std::string("12ab5"))
        box.key(forms::keystrokeOf(key));
    box.key(forms::keystrokeOf('g'));
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Please enter a valid hexadecimal number"});
    for (const char key : std::string("67"))
        box.key(forms::keystrokeOf(key));
    EXPECT_EQ(box.text(), "12AB57") << "the seventh takes the place of the sixth";
    box.key(forms::keystrokeOf('x'));
    EXPECT_EQ(box.text(), "12AB57") << "a key that is refused cuts nothing";
    bench.press("SetBitsRAM_A");
    EXPECT_EQ(bench.row("RAM_A"), 0x12AB57U);
    bench.on<forms::Label>("RAM_A(23)").click();
    EXPECT_EQ(box.text(), "92AB57");
    box.setText("");
    bench.press("SetBitsRAM_A");
    EXPECT_EQ(bench.row("RAM_A"), 0U);
    EXPECT_EQ(bench.panel().call("HexCheck", 102), forms::toValue(70));
}

TEST(Zt72516Words, AreBuiltByName) {
    Bench bench;
    PanelForm& panel = bench.panel();
    const auto word = [&](const char* name, const auto&... arguments) {
        panel.call(name, arguments...);
        panel.call("UpdateSpiWordSent");
        return bench.caption("SPIWordSent").substr(14);
    };
    bench.session().WordToSend.assign(32, 1);
    EXPECT_EQ(word("SetSpiAddress", 0), "C0FF-FFFF") << "the address alone";
    EXPECT_EQ(word("SetReadCmd"), "00FF-FFFF");
    EXPECT_EQ(word("ClearWordToSend"), "0000-0000");
    EXPECT_EQ(word("SetSpiAddress", 0x7F000000), "3F00-0000");
    EXPECT_EQ(word("SetWriteCmd"), "7F00-0000");
    EXPECT_EQ(word("SetFlagsCmd"), "BF00-0000");
    EXPECT_EQ(word("SetSpiData", std::string("40000000")), "BF62-5A00");
    EXPECT_EQ(word("SetSpiData", std::string("4BABCDEF")), "BF62-5A04") << "sets, clears nothing";
    EXPECT_THROW(panel.call("SetSpiData", std::string("9999999999")), Failure);
    bench.lists().append("TIMER Reg Write", "43ABCD12");
    EXPECT_EQ(word("CovertNameToSpiWord", std::string("TIMER Reg Write"), 1), "4500-002B");
    EXPECT_EQ(word("CovertNameToSpiWord", std::string("Timer Reg Write"), 1), "0000-0000");
    EXPECT_EQ(panel.readVariable("SendAfterConvert"), forms::Value(true));
    EXPECT_EQ(bench.sent(), "");
    panel.call("CovertNameToSpiWord", std::string("INT Request"), 1);
    EXPECT_EQ(panel.readVariable("SendAfterConvert"), forms::Value(false));
    EXPECT_EQ(bench.sent(), "48000100");
}

TEST(Zt72516Shape, IsSetInFrontAndRestored) {
    Bench bench("scripted", {"12345678", "89ABCDEF"});
    EXPECT_EQ(bench.shape(), "32/1 1 1");
    EXPECT_EQ(bench.session().WordToSend.size(), 32U);
    bench.send("ABCDEF"); // in the main window, which comes to the front
    EXPECT_EQ(bench.shape(), "24/3 0 3");
    EXPECT_EQ(bench.caption("SPIWordRcvd"), "SPI Word Rcvd:") << "the display no longer follows";
    bench.program.forms().activate("ZT72516");
    bench.sent();
    bench.session().WordToSend.assign(32, 1); // a script sends while the panel is active
    bench.program.engine().SendSPI();
    EXPECT_EQ(bench.sent(), "FFFFFFFF");
    EXPECT_EQ(bench.caption("SPIWordRcvd"), "SPI Word Rcvd:89AB-CDEF");
    EXPECT_EQ(bench.row("SPI_Word"), 0x89ABCDEFU);
    EXPECT_EQ(bench.caption("SPIWordSent"), "SPI Word Sent:") << "that of the panel's own words";

    bench.program.forms().show("ZT72516ReadFlags");
    EXPECT_EQ(bench.shape(), "32/1 1 1");
    bench.program.forms().activate("frmMain");
    EXPECT_EQ(bench.shape(), "32/1 1 1") << "leaving the form beside the panel keeps it";
    bench.program.forms().show("ZT72516TestMode");
    bench.program.forms().unload("ZT72516");
    EXPECT_EQ(bench.shape(), "24/3 0 3");
    EXPECT_FALSE(bench.program.forms().isVisible("ZT72516TestMode"));
    bench.program.forms().show("ZT72516TestMode"); // takes the shape for a panel that is made again
    EXPECT_EQ(bench.shape(), "32/1 1 1");
    bench.program.panels().touch("zt72516").pageControls.find("Btn_Test_Mode")->show();
    bench.sent();
    bench.press("ZT72516TestMode.Btn_Read_TM3");
    EXPECT_EQ(bench.sent(), "34000000");
    EXPECT_EQ(bench.caption("SPIWordSent"), "SPI Word Sent:3400-0000");
}

TEST(Zt72516Shape, OutlastsApply) {
    Bench bench;
    auto& dialog = bench.program.dialog();
    const auto apply = [&](const char* bits) {
        dialog.cmbSPIWordLength.setText(bits);
        dialog.cmdApply_Click();
        return bench.shape();
    };
    EXPECT_EQ(apply("16"), "32/1 1 1");
    apply("0"); // is refused, and has changed the length all the same
    bench.press("Btn_Read_Init_reg");
    EXPECT_EQ(bench.sent() + " " + bench.shape(), "03000000 32/1 1 1");
    apply("16");
    bench.program.forms().activate("frmMain");
    EXPECT_EQ(bench.shape(), "16/1 0 1") << "what was applied last";
}

TEST(Zt72516Watchdog, IsHandedToTheDongle) {
    Bench bench;
    const auto& timing = bench.on<forms::ComboBox>("Watchdog_Timing");
    EXPECT_FALSE(bench.on<forms::ComboBox>("Watchdog_Mode").enabled());
    bench.call("Btn_Start_Watchdog_Click");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Please set watchdog mode and timing values."});
    EXPECT_TRUE(bench.session().ZT72516WatchdogStart);
    bench.expect("Watchdog_Status:Watchdog is Off");
    EXPECT_EQ(bench.sent(), "");
    bench.call("Btn_Stop_Watchdog_Click");
    EXPECT_EQ(bench.sent(), "<00 16 00 00 00 00 00 00>");
    bench.session().USBReadDone = true; // of an answer long ago
    bench.walk(std::initializer_list<PanelStep>{
        {"Check_UseSpiDongleForWD Watchdog_Mode=3 Watchdog_Timing=9 Btn_Start_Watchdog "
         "Btn_Start_Watchdog",
         "<00 16 00 0B 09 00 00 00> <00 16 00 0B 09 00 00 00>", "Watchdog_Status#FF00"},
        {"Check_UseSpiDongleForWD", "<00 16 00 00 00 00 00 00>", "Watchdog_Status#FF"},
    });
    EXPECT_FALSE(bench.session().ZT72516WatchdogStart);
    EXPECT_FALSE(timing.enabled());
    bench.session().USBReady = false;
    bench.call("Btn_Stop_Watchdog_Click");
    bench.expect("Watchdog_Status:Watch Dog is OFF");
    EXPECT_EQ(bench.sent(), "");
}

TEST(Zt72516Watchdog, IsStoppedWithoutAPanel) {
    Bench bench;
    bench.program.forms().unload("ZT72516");
    bench.sent();
    bench.program.mainForm().call("Send72516WatchdogCmd");
    EXPECT_EQ(bench.sent(), "<00 16 00 00 00 00 00 00>");
    bench.session().ZT72516WatchdogStart = true;
    bench.session().USBReady = false;
    bench.program.mainForm().call("Send72516WatchdogCmd");
    EXPECT_EQ(bench.program.panels().find("zt72516"), nullptr);
    EXPECT_EQ(bench.sent() + bench.shape(), "24/3 0 3");
}

TEST(Zt72516Watchdog, EndsWhatReadsByItselfWhenTheDongleDoesNotAnswer) {
    for (const bool other : {false, true}) {
        Bench bench;
        if (other) {
            bench.program.forms().show("ZT72518");
            bench.get<forms::CheckBox>("ZT72518.read_auto(34)").click();
        }
        bench.dongle.setFaults(DongleFaults({dongleFaultFrom("silent")}));
        const std::int64_t before = bench.clock.nanoseconds();
        bench.program.mainForm().call("Send72516WatchdogCmd");
        EXPECT_GE(bench.clock.nanoseconds() - before, 500 * millisecond);
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Check the USB cable and restart program"});
        EXPECT_TRUE(bench.session().LinkFailed);
        EXPECT_EQ(bench.program.panels().find("zt72518") != nullptr, other);
        EXPECT_FALSE(bench.program.forms().isVisible("ZT72518"));
        if (other) {
            EXPECT_FALSE(bench.get<forms::Timer>("ZT72518.timer_auto").enabled());
        }
    }
}

TEST(Zt72516Watchdog, IsStoppedByAPanelThatGoesAndByTheEnd) {
    const std::string stop = "<00 16 00 00 00 00 00 00>";
    Bench closed;
    closed.session().ConfigDirty = ConstOff;
    closed.program.forms().unload("ZT72516");
    EXPECT_EQ(closed.sent(), stop);
    closed.get<forms::MenuItem>("frmMain.itemExit").click();
    EXPECT_EQ(closed.sent(), "");
    Bench ended;
    ended.program.end();
    EXPECT_EQ(ended.sent(), stop);
    Bench left;
    left.session().ConfigDirty = ConstOff;
    left.get<forms::MenuItem>("frmMain.itemExit").click();
    EXPECT_EQ(left.sent(), stop);
}

} // namespace
} // namespace bitlux::test::zt72516
