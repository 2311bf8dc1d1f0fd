#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

constexpr forms::Color plain = 0xFFFFC0;
constexpr forms::Color striped = 0xFFC0C0;
using Bits = std::vector<int>;
using Texts = std::vector<std::string>;

/// A panel whose chip answers every word alike.
void answer(PanelBench& bench, const char* reply) {
    bench.bench.connect(makeDevice("scripted", {replyFromHex(reply)}));
}

TEST(ReadRows, ShowTheReplyInTheirColour) {
    PanelBench bench("scripted", {"81A6"});
    struct Row {
        const char* button;
        const char* labels;
        forms::Color colour;
    };
    for (const Row& row :
         {Row{"Cm_Mux_Rl", "Mux_Rl", plain}, Row{"Cm_Read_RAM(3)", "RAM_D", plain},
          Row{"Cm_Init_Reg_Rl", "Init_Reg_Rl", striped}, Row{"Cm_Timer1_Rl", "Timer1_Rl", striped},
          Row{"Cm_I0_Rh", "IO_Rh", striped}, Row{"CM_Lin0_Rh", "Lin0_Rh", striped},
          Row{"Cm_Lin1_Rl", "Lin1_Rl", plain}, Row{"Cm_interrupts_Rl", "Interrupts_Rl", plain},
          Row{"Cm_RFl(0)", "Mode_Rm_RFl", striped}, Row{"Cm_RFh(2)", "CAN_RFh", striped}}) {
        EXPECT_EQ(bench.lit(row.labels, row.colour), Bits{}) << row.button;
        bench.press(row.button);
        EXPECT_EQ(bench.lit(row.labels, row.colour), (Bits{1, 2, 5, 7})) << row.button;
    }
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{8, 15})) << "the data is no status";
    bench.press("Cm_RFh(4)");
    EXPECT_EQ(bench.lit("Interrupts_RFl", striped), (Bits{9, 10, 13, 15}));
    bench.press("Cm_ReadAll_Rl(1)");
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{1, 2, 5, 7, 8, 15}));
    answer(bench, "0001");
    bench.press("Cm_RFl(4)");
    EXPECT_EQ(bench.lit("Interrupts_RFl", striped), (Bits{0, 9, 10, 13, 15}));
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{1, 2, 5, 7}));
}

TEST(ReadRows, NameTheModeAndTheDevice) {
    PanelBench bench;
    struct Mode {
        const char* reply;
        int code;
        Bits visible;
        const char* name;
    };
    for (const Mode& mode :
         {Mode{"0007", 0, {8}, "Init Mode"}, Mode{"0008", 1, {9}, "Flash Mode"},
          Mode{"0010", 2, {10}, "Normal Request Mode"}, Mode{"001F", 3, {11}, "Normal Mode"},
          Mode{"0080", 16, {12}, "Low Power Vdd On Mode (Stop)"},
          Mode{"0020", 4, {13}, "Other Mode"}}) {
        answer(bench, mode.reply);
        bench.press("Cm_Mode_Rm_Rh");
        EXPECT_EQ(bench.panel().variables().ModeCode, mode.code);
        Bits visible;
        for (int label = 8; label <= 13; ++label)
            if (bench.on<forms::Label>(fmt::format("Mode_Rm_Rh({})", label)).visible())
                visible.push_back(label);
        EXPECT_EQ(visible, mode.visible) << mode.reply;
        EXPECT_EQ(bench.caption(fmt::format("Mode_Rm_Rh({})", mode.visible[0])), mode.name);
    }
    struct Device {
        const char* reply;
        const char* caption;
    };
    for (const Device& device :
         {Device{"FF00", "Make sure set up is correct"}, Device{"00A1", "5V - ZT72511 - v1.0"},
          Device{"0080", "5V - ZT72514 - v1.-1"}, Device{"005F", "3.3V - ZT72518S - v4.6"},
          Device{"00EA", "5V - ZT72518D - v2.1"}, Device{"0014", "3.3V - ZT72514 - v3.3"}}) {
        answer(bench, device.reply);
        bench.press("Cm_Interrupts_Rh");
        EXPECT_EQ(bench.caption("Mode_Rm_Rh(14)"), device.caption) << device.reply;
    }
}

TEST(StatusLabels, TellTheWordThatWentAndTheOneThatCame) {
    PanelBench bench("scripted", {"F731"});
    const auto labels = [&] {
        Texts all;
        for (const int index : {0, 1, 2, 3, 7, 8})
            all.push_back(bench.caption(fmt::format("Label_Liste({})", index)));
        return all;
    };
    bench.panel().pageControls.row("Mux_W").show(0x0F);
    bench.press("Cm_MUX_W");
    const std::string sent = "Sent : 40 - 0F";
    const std::string received = "Received : F7 - 31";
    EXPECT_EQ(labels(), (Texts{sent, sent, sent, "Received : 12 - 34", received, received}));
    bench.panel().pageControls.row("Mux_W").show(0x10);
    bench.press("Cm_MUX_W");
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 10");
    bench.session().ZT72518PanelActive = 0;
    bench.press("Cm_Mux_Rl");
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 10");
}

TEST(Panel, TakesTheShapeOfAWordAndGivesItBack) {
    PanelBench bench;
    Session& session = bench.session();
    bench.program.forms().unload("ZT72518");
    EXPECT_TRUE(bench.boxes.shown().empty());
    EXPECT_EQ(session.SPIWordLength, 8);
    session.SPIType = 7;
    session.WordToSend = {1, 0, 1};
    bench.program.forms().show("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 16);
    EXPECT_EQ(session.WordToSend, std::vector<std::int16_t>(16, 0));
    EXPECT_EQ(session.SPIType, 2);
    EXPECT_EQ(session.ZT72518PanelActive, 1);
    session.SPIWordLength = 32; // as another tab does
    bench.program.forms().activate("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 16);
    bench.program.forms().unload("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 8);
    EXPECT_EQ(session.SPIType, 7);
    EXPECT_EQ(session.WordToSend, (std::vector<std::int16_t>{1, 0, 1}));
    EXPECT_EQ(session.ZT72518PanelActive, 0);
}

TEST(Panel, AsksForItsSequenceWhereThatIsShown) {
    for (const bool yes : {false, true}) {
        PanelBench bench;
        bench.on<forms::TabStrip>("tab_518(0)").click(1);
        bench.boxes.answer(yes ? MessageBox::Answer::Yes : MessageBox::Answer::No);
        bench.program.forms().unload("ZT72518");
        ASSERT_EQ(bench.boxes.shown().size(), 1U);
        EXPECT_EQ(bench.boxes.shown()[0].title, "Quit ZT72518 - 511 - 514 Interface");
        EXPECT_EQ(bench.boxes.shown()[0].text, "Save the sequence before exit?");
        EXPECT_EQ(bench.fileDialogs.shown().size(), yes ? 1U : 0U);
    }
    for (const bool yes : {false, true}) {
        PanelBench bench;
        bench.on<forms::TabStrip>("tab_518(0)").click(1);
        bench.boxes.answer(yes ? MessageBox::Answer::Yes : MessageBox::Answer::No);
        bench.panel().call("Form_Unload"); // the form itself stays
        EXPECT_EQ(bench.panel().variables().RunEnabled, yes) << "a run goes on while it is saved";
    }
}

TEST(Panel, StaysWhenItsSequenceCannotBeSaved) {
    PanelBench bench;
    bench.on<forms::TabStrip>("tab_518(0)").click(1);
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.fileDialogs.answer("/nowhere/a.txt");
    EXPECT_THROW(bench.program.forms().unload("ZT72518"), Failure);
    EXPECT_TRUE(bench.program.forms().isVisible("ZT72518"));
    EXPECT_EQ(bench.session().ZT72518PanelActive, 1);
}

TEST(Panel, GivesBackTheShapeAlsoWhenItIsLoadedTwice) {
    PanelBench bench;
    bench.panel().call("Form_Load");
    bench.program.forms().unload("ZT72518");
    EXPECT_EQ(bench.session().SPIWordLength, 8);
    EXPECT_EQ(bench.session().SPIType, 1);
}

TEST(Panel, OpensFromItsTab) {
    TestBench bench;
    bench.get<forms::CheckBox>("frmConfigureSPI.CheckEnable72518").setValue(1);
    bench.program.dialog().cmdApply_Click();
    bench.program.mainForm().tabs.TabStripMain.click(3);
    EXPECT_TRUE(bench.program.zt72518().visible());
    EXPECT_EQ(bench.session().SPIType, 2);
    bench.program.forms().unload("ZT72518");
    EXPECT_EQ(bench.session().SPIWordLength, 16) << "as the tab had it";
    EXPECT_EQ(bench.session().SPIType, 1);
}

TEST(Variants, DisableTheirControlsAndRenameTheirBits) {
    PanelBench bench;
    const auto state = [&](const char* control) {
        return bench.program.forms().control(std::string("ZT72518.") + control).enabled() ? '+'
                                                                                          : '-';
    };
    struct Variant {
        int index;
        const char* enabled;  ///< of the controls below
        const char* captions; ///< of the labels below
    };
    const std::vector<const char*> controls{
        "R_MUX(4)",   "Mux_Rl(7)",       "init_vreg_frame(2)", "R_Init_Vreg(1)", "R_Init_Vreg(2)",
        "R_Reg(3)",   "R_Reg(4)",        "Ch_Reg(0)",          "Ch_Reg(2)",      "Lin0_W(0)",
        "Lin0_Rh(7)", "Lin1_Rl(0)",      "i_o_frame(0)",       "i_o_frame(2)",   "i_o_frame(3)",
        "Ch_Lin(0)",  "pre_prog_box(1)", "pre_prog_box(2)",    "pre_prog_box(9)"};
    const std::vector<const char*> labels{"INIT_Vreg_W(2)",    "Regulator_W(1)", "Regulateur_Rl(7)",
                                          "IO_Rh(2)",          "IO_Rh(6)",       "Regulator_RFl(2)",
                                          "Interrupts_RFl(1)", "IO_RFh(7)"};
    for (
        const Variant& variant :
        {Variant{7,
                 "++--++-+++"
                 "+-+-++-+-",
                 "-|PNP on Auto|-|-|I/O 3 State|Vsense low|-|I/O_1_3 INT_WU|"},
         Variant{6,
                 "++--++-+++"
                 "+++--+++-",
                 "-|PNP on Auto|-|-|-|Vsense low|-|-|"},
         Variant{5,
                 "----++-+--"
                 "--+--+---",
                 "-|-|-|-|-|-|-|-|"},
         Variant{
             4,
             "+++++++++-"
             "--++++--+",
             "Vaux5|PNP on Auto|Vaux on/off [1]|I/O 1 state|I/O 3 state|Vsense low|Vaux OV|I/O_1_3 "
             "INT_WU|"},
         Variant{
             3,
             "++++++++++"
             "+-+++++-+",
             "Vaux5|PNP on Auto|Vaux on/off [1]|I/O 1 state|I/O 3 state|Vsense low|Vaux OV|I/O_1_3 "
             "INT_WU|"},
         Variant{
             2,
             "++++++++++"
             "+++++++++",
             "Vaux5|PNP on Auto|Vaux on/off [1]|I/O 1 state|I/O 3 state|Vsense low|Vaux OV|I/O_1_3 "
             "INT_WU|"}}) {
        bench.choose(fmt::format("opt_vb({})", variant.index));
        std::string enabled;
        std::string captions;
        for (const char* control : controls)
            enabled += state(control);
        for (const char* label : labels)
            captions += bench.caption(label) + "|";
        EXPECT_EQ(enabled, variant.enabled) << variant.index;
        EXPECT_EQ(captions, variant.captions) << variant.index;
        for (const int box : {1, 2, 6, 7, 9}) {
            const auto& tick = bench.on<forms::CheckBox>(fmt::format("pre_prog_box({})", box));
            EXPECT_EQ(tick.checked(), tick.enabled()) << variant.index << " " << box;
        }
    }
}

TEST(Variants, OfferTheDonglesVersionWhereTheMarkerFileIs) {
    for (const bool there : {false, true}) {
        VirtualClock clock;
        VirtualBench bench(clock, makeDevice("none"));
        ScriptedDesk desk(clock);
        const ChosenMarkerFiles markers(there ? std::vector<std::string>{"72518vbOPT.TXT"}
                                              : std::vector<std::string>{});
        Hardware hardware = bench.hardware();
        hardware.markers = &markers;
        Program program(hardware, desk.desk());
        program.Main();
        program.forms().show("ZT72518");
        for (const char* control : {"vb_otp(0)", "opt_vb(0)", "opt_vb(1)"})
            EXPECT_EQ(program.zt72518().control(control).visible(), there) << control;
        EXPECT_TRUE(program.zt72518().control("opt_vb(2)").visible());
        EXPECT_EQ(program.zt72518().call("TesterPresenceFichier", "C:\\72518VBopt.txt"),
                  forms::Value(there));
        EXPECT_EQ(program.zt72518().call("TesterPresenceFichier", "C:\\other.txt"),
                  forms::Value(false));
    }
}

} // namespace
} // namespace bitlux::test
