#include "panels/marked_bench.h"

#include <map>
#include <tuple>

namespace bitlux::test {
namespace {

/// A panel whose chip answers every word alike.
void answer(PanelBench& bench, const char* reply) {
    bench.bench.connect(makeDevice("scripted", {replyFromHex(reply)}));
}

TEST(ReadRows, LeaveTheirNeighboursAlone) {
    PanelBench bench("scripted", {"81A6"});
    bench.press("Cm_RFh(4)");
    EXPECT_EQ(bench.lit("Interrupts_RFl", striped), (Bits{9, 10, 13, 15}));
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{8, 15})) << "the data is no status";
    bench.press("Cm_ReadAll_Rl(1)");
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{1, 2, 5, 7, 8, 15}));
    answer(bench, "0001");
    bench.press("Cm_RFl(4)");
    EXPECT_EQ(bench.lit("Interrupts_RFl", striped), (Bits{0, 9, 10, 13, 15}));
    EXPECT_EQ(bench.lit("Reg_W", plain), (Bits{1, 2, 5, 7}));
}

TEST(ReadRows, NameTheModeAndTheDevice) {
    PanelBench bench;
    for (const auto& [reply, code, name] : {std::tuple{"0007", 0, "Init Mode"},
                                            {"0008", 1, "Flash Mode"},
                                            {"0010", 2, "Normal Request Mode"},
                                            {"001F", 3, "Normal Mode"},
                                            {"0080", 16, "Low Power Vdd On Mode (Stop)"},
                                            {"0020", 4, "Other Mode"}}) {
        answer(bench, reply);
        bench.press("Cm_Mode_Rm_Rh");
        EXPECT_EQ(std::get<std::int64_t>(bench.panel().readVariable("ModeCode")), code);
        std::string visible;
        for (int label = 8; label <= 13; ++label)
            if (const auto& any = bench.on<forms::Label>(fmt::format("Mode_Rm_Rh({})", label));
                any.visible())
                visible += any.caption();
        EXPECT_EQ(visible, name);
    }
    for (const auto& [reply, caption] : {std::pair{"FF00", "Make sure set up is correct"},
                                         {"00A1", "5V - ZT72511 - v1.0"},
                                         {"0080", "5V - ZT72514 - v1.-1"},
                                         {"005F", "3.3V - ZT72518S - v4.6"},
                                         {"0014", "3.3V - ZT72514 - v3.3"}}) {
        answer(bench, reply);
        bench.press("Cm_Interrupts_Rh");
        EXPECT_EQ(bench.caption("Mode_Rm_Rh(14)"), caption);
    }
}

TEST(StatusLabels, ShowTheWordThatWasSentAndItsAnswer) {
    PanelBench bench("scripted", {"F731"});
    const auto labels = [&] {
        Texts all;
        for (const int index : {0, 1, 2, 3, 7, 8})
            all.push_back(bench.caption(fmt::format("Label_Liste({})", index)));
        return all;
    };
    bench.effectsOf("Mux_W=0F Cm_MUX_W");
    const std::string sent = "Sent : 40 - 0F";
    const std::string received = "Received : F7 - 31";
    EXPECT_EQ(labels(), (Texts{sent, sent, sent, "Received : 12 - 34", received, received}));
    bench.effectsOf("Mux_W=10 Cm_MUX_W");
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 10");
    bench.session().ZT72518PanelActive = 0;
    bench.press("Cm_Mux_Rl");
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 10");
}

TEST(Panel, SetsTheShapeOfWordsAndRestoresIt) {
    PanelBench bench;
    Session& session = bench.session();
    bench.program.forms().show("TestMode");
    bench.program.forms().unload("ZT72518");
    EXPECT_FALSE(bench.program.forms().isVisible("TestMode"));
    EXPECT_TRUE(bench.boxes.shown().empty());
    EXPECT_EQ(session.SPIWordLength, 8);
    session.SPIType = 7; // as a tab may leave it
    bench.program.forms().show("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 16);
    EXPECT_EQ(session.WordToSend, std::vector<std::int16_t>(16, 0));
    EXPECT_EQ(session.SPIType, 2);
    EXPECT_EQ(session.ZT72518PanelActive, 1);
    session.SPIWordLength = 32; // as another tab does
    bench.program.forms().activate("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 16);
    bench.panel().call("Form_Load"); // once more
    bench.program.forms().unload("ZT72518");
    EXPECT_EQ(session.SPIWordLength, 8);
    EXPECT_EQ(session.SPIType, 1) << "what was applied last";
    EXPECT_EQ(session.WordToSend, std::vector<std::int16_t>(8, 0));
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
        EXPECT_EQ(bench.panel().sequence.variables.RunEnabled, yes)
            << "a run goes on while it is saved";
    }
}

TEST(Panel, SendsNothingWhileItsWordsCannotGoOutAsTheChipWantsThem) {
    PanelBench bench;
    bench.session().MSBFirst = ConstOff;
    EXPECT_EQ(bench.effectsOf("Cm_Mux_Rl"), "");
    EXPECT_EQ(bench.effectsOf("Cm_MUX_W"), "");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"The words of this chip need the most significant bit "
                                             "first. Nothing was sent."});
    bench.session().MSBFirst = ConstOn;
    EXPECT_EQ(bench.effectsOf("Cm_Mux_Rl"), "0100");
}

/// All disabled controls, elements of an array that are not all disabled with their indices.
Names disabledIn(const forms::Form& form) {
    std::map<std::string, std::pair<std::size_t, Texts>> arrays; // all of a name, and the disabled
    for (const forms::Control* control : form.controls()) {
        auto& [count, disabled] = arrays[control->name()];
        ++count;
        if (!control->enabled())
            disabled.push_back(control->localName());
    }
    Names all;
    for (const auto& [name, array] : arrays) {
        if (array.first == array.second.size())
            all.insert(name);
        else
            all.insert(array.second.begin(), array.second.end());
    }
    return all;
}

const Names mux{"R_MUX",     "Mux_W",     "Ch_Mux",     "Cm_MUX_W",
                "Seq_MUX_W", "Cm_Mux_Rl", "Seq_Mux_Rl", "Mux_Rl"};
const Names lin1{"R_Lin0",  "Lin0_W",     "Cm_Lin0_W", "Seq_Lin0_W",  "Cm_Lin0_Rl", "Seq_Lin0_Rl",
                 "Lin0_Rl", "CM_Lin0_Rh", "Lin0_Rh",   "Seq_Lin0_Rh", "Cm_RFl(5)",  "Seq_RFl(5)"};
const Names lin2{"R_Lin1",  "Lin1_W",     "Cm_Lin1_W", "Seq_Lin1_W",  "Cm_Lin1_Rl", "Seq_Lin1_Rl",
                 "Lin1_Rl", "Cm_Lin1_Rh", "Lin1_Rh",   "Seq_Lin1_Rh", "Cm_RFl(6)",  "Seq_RFl(6)"};
const Names vauxAndIos{"init_vreg_frame(2)", "R_Init_Vreg(0)", "R_Init_Vreg(1)", "frame_reg(0)",
                       "R_Reg(4)",           "R_Reg(5)",       "R_Reg(6)",       "R_Reg(7)",
                       "i_o_frame(1)",       "i_o_frame(2)",   "pre_prog_box(9)"};
const Names ballast{"Ch_Reg(1)", "Ch_Reg(2)"};
const Names lin1Boxes{"pre_prog_box(1)", "pre_prog_box(6)"};
const Names lin2Boxes{"pre_prog_box(2)", "pre_prog_box(7)"};
const Names io3{"i_o_frame(3)"};

TEST(Variants, DisableTheirControlsAndRenameTheirBits) {
    PanelBench bench;
    const Names always = disabledIn(bench.panel());
    using Variant = std::tuple<int, std::vector<Names>, const char*>; // captions of labels below
    constexpr const char* allCaptions =
        "Vaux5|Vaux5|PNP on Auto|PNP on Auto|PNP ON|PNP ON|Vaux on/off [0]|Vaux on/off [0]|Vaux "
        "on/off [1]|Vaux on/off [1]|I/O 1 state|I/O 2 state|I/O 3 state|Vaux low (in NOR)|Vaux "
        "OC|Vsense low|Vaux OV|I/O_0_2 INT_WU|I/O_1_3 INT_WU";
    const std::vector<const char*> labels{
        "INIT_Vreg_W(2)",    "Init_Reg_Rl(2)",   "Regulator_W(1)",   "Regulateur_Rl(1)",
        "Regulator_W(2)",    "Regulateur_Rl(2)", "Regulator_W(6)",   "Regulateur_Rl(6)",
        "Regulator_W(7)",    "Regulateur_Rl(7)", "IO_Rh(2)",         "IO_Rh(4)",
        "IO_Rh(6)",          "Regulator_RFl(7)", "Regulator_RFl(6)", "Regulator_RFl(2)",
        "Interrupts_RFl(1)", "IO_RFh(6)",        "IO_RFh(7)"};
    for (const auto& [index, sets, texts] :
         {Variant{7,
                  {lin2, vauxAndIos, lin1Boxes},
                  "-|-|PNP on Auto|PNP on Auto|PNP ON|PNP ON|-|-|-|-|-|-|I/O 3 State|-|-|Vsense "
                  "low|-|I/O_0_2 INT_WU|I/O_1_3 INT_WU"},
          Variant{6,
                  {vauxAndIos, io3},
                  "-|-|PNP on Auto|PNP on Auto|PNP ON|PNP ON|-|-|-|-|-|-|-|-|-|Vsense low|-|-|-"},
          Variant{5,
                  {mux, lin1, lin2, vauxAndIos, ballast, io3, lin1Boxes, lin2Boxes},
                  "-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-|-"},
          Variant{4, {lin1, lin2, lin1Boxes, lin2Boxes}, allCaptions},
          Variant{3, {lin2, lin2Boxes}, allCaptions}, Variant{2, {}, allCaptions}}) {
        bench.choose(fmt::format("opt_vb({})", index));
        Names disabled = always;
        for (const Names& names : sets)
            disabled.insert(names.begin(), names.end());
        EXPECT_EQ(disabledIn(bench.panel()), disabled) << index;
        Texts captions;
        for (const char* label : labels)
            captions.push_back(bench.caption(label));
        EXPECT_EQ(fmt::format("{}", fmt::join(captions, "|")), texts) << index;
        for (const int box : {1, 2, 6, 7, 9}) {
            const auto& tick = bench.on<forms::CheckBox>(fmt::format("pre_prog_box({})", box));
            EXPECT_EQ(tick.checked(), tick.enabled()) << index << " " << box;
        }
    }
}

TEST(Variants, OfferTheDonglesVersionWhereTheMarkerFileIs) {
    for (const bool there : {false, true}) {
        MarkedBench bench("ZT72518", there ? Texts{"72518vbOPT.TXT"} : Texts{"72518VBopt.tx"});
        for (const char* control : {"vb_otp(0)", "opt_vb(0)", "opt_vb(1)"})
            EXPECT_EQ(bench.on(control).visible(), there) << control;
        for (const char* control : {"vb_otp(1)", "opt_vb(2)", "opt_vb(7)"})
            EXPECT_TRUE(bench.on(control).visible()) << control;
        for (const auto& [file, present] :
             {std::pair{"C:\\72518VBopt.txt", there}, {"C:\\other.txt", false}})
            EXPECT_EQ(bench.program.panels().touch("zt72518").call("TesterPresenceFichier", file),
                      forms::Value(present));
        if (!there) {
            EXPECT_THROW(bench.on<forms::OptionButton>("opt_vb(0)").click(), forms::Unreachable);
        }
    }
}

TEST(Variants, HideWhatTheOriginalDongleCannotDo) {
    MarkedBench bench("ZT72518", {"72518VBopt.txt"});
    const auto shown = [&] {
        std::string marks;
        for (const char* control : {"frame_Condition(0)", "frame_Condition(1)", "wd_aff(4)",
                                    "wd_refresh(0)", "wd_refresh(1)"})
            marks += bench.on(control).visible() ? '+' : '-';
        return marks + (bench.on("Val_loop(3)").enabled() ? " on" : " off");
    };
    const auto choose = [&](int version) {
        bench.on<forms::OptionButton>(fmt::format("opt_vb({})", version)).click();
        return shown();
    };
    const auto tick = [&] {
        bench.on<forms::CheckBox>("Ch_FirstCondition").click();
        return shown();
    };
    EXPECT_EQ(shown(), "+-+++ on");
    EXPECT_EQ(tick(), "+++++ on");
    choose(5);
    const Names disabled = disabledIn(bench.program.panels().touch("zt72518"));
    EXPECT_EQ(choose(0), "----- off");
    EXPECT_TRUE(bench.on<forms::OptionButton>("opt_vb(5)").value()) << "the variant stays";
    EXPECT_EQ(choose(2), "----- off") << "and changes nothing of this";
    EXPECT_EQ(choose(1), "+-+++ on") << "one frame stays hidden";
    choose(5);
    EXPECT_EQ(disabledIn(bench.program.panels().touch("zt72518")), disabled);
    tick();
    EXPECT_EQ(tick(), "+++++ on") << "until its box is ticked again";
}

} // namespace
} // namespace bitlux::test
