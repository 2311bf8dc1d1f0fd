#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

/// A choice on a page whose row is dark, and the byte that it makes.
struct Choice {
    const char* control;
    const char* row;
    int byte;
};

constexpr Choice optionChoices[] = {
    {"R_MUX(3)", "Mux_W", 0x60},
    {"R_MUX(7)", "Mux_W", 0xE0},
    {"R_Init_Vreg(1)", "INIT_Vreg_W", 0x04},
    {"R_Init_Vreg(4)", "INIT_Vreg_W", 0x10},
    {"R_Init_Vreg(9)", "INIT_Vreg_W", 0x60},
    {"R_Init_Vreg(12)", "INIT_Vreg_W", 0x02},
    {"R_Init_Wd(3)", "Init_Wdog_W", 0x08},
    {"R_Init_Wd(6)", "Init_Wdog_W", 0x10},
    {"R_Init_Wd(8)", "Init_Wdog_W", 0x20},
    {"R_Init_Wd(13)", "Init_Wdog_W", 0x40},
    {"R_Init_Lin(3)", "Init_Lin_W", 0x18},
    {"R_Init_Lin(6)", "Init_Lin_W", 0x40},
    {"R_Init_Misc(2)", "Init_Misc_W", 0x06}, // with the box of its resistor
    {"R_Init_Misc(5)", "Init_Misc_W", 0x10},
    {"R_Init_Misc(7)", "Init_Misc_W", 0x20},
    {"R_Init_Misc(9)", "Init_Misc_W", 0x80},
    {"R_Spe_Mode(2)", "Spe_Mode_W", 0x80},
    {"R_Reg(2)", "Regulator_W", 0x10},
    {"R_Reg(5)", "Regulator_W", 0x40},
    {"R_Can(1)", "Can_W", 0x01},
    {"R_Can(3)", "Can_W", 0x08},
    {"R_Can(6)", "Can_W", 0x20},
    {"R_Can(9)", "Can_W", 0x40},
    {"R_I_O(3)", "IO_W", 0x03},
    {"R_I_O(6)", "IO_W", 0x08},
    {"R_I_O(9)", "IO_W", 0x10},
    {"R_I_O(14)", "IO_W", 0x80},
    {"R_Lin0(1)", "Lin0_W", 0x10},
    {"R_Lin0(6)", "Lin0_W", 0x80},
    {"R_Lin1(2)", "Lin1_W", 0x20},
    {"R_Lin1(5)", "Lin1_W", 0x40},
};

constexpr Choice boxChoices[] = {
    {"Ch_Mux(0)", "Mux_W", 0x08},
    {"Ch_Mux(1)", "Mux_W", 0x10},
    {"Ch_INIT_VREG(7)", "INIT_Vreg_W", 0x80},
    {"Ch_Init_Wdog(0)", "Init_Wdog_W", 0x02},
    {"Ch_Init_Wdog(1)", "Init_Wdog_W", 0x80},
    {"Ch_Init_Wdog(2)", "Init_Wdog_W", 0x01},
    {"Ch_Init_LIN_IO(2)", "Init_Lin_W", 0x04},
    {"Ch_Init_LIN_IO(3)", "Init_Lin_W", 0x80},
    {"Ch_Init_Misc(3)", "Init_Misc_W", 0x08},
    {"Ch_Init_Misc(6)", "Init_Misc_W", 0x40},
    {"Ch_Reg(1)", "Regulator_W", 0x02},
    {"Ch_Lin(0)", "Lin0_W", 0x04},
    {"Ch_Lin(1)", "Lin1_W", 0x04},
    {"Ch_Lin(2)", "Lin0_W", 0x01},
    {"Ch_Lin(3)", "Lin1_W", 0x01},
    {"Ch_interrupts(2)", "Interrupts_W", 0x04},
    {"Ch_interrupts(6)", "Interrupts_W", 0x40},
};

struct Selection {
    const char* combo;
    const char* item;
    const char* row;
    int byte;
};

constexpr Selection selections[] = {
    {"Combo_Wd", "6 ms", "Timer0_W", 0x09},
    {"Combo_Wd", "512 ms", "Timer0_W", 0x1F},
    {"Combo_Imcu_Stp", "4 ms", "Timer0_W", 0x80},
    {"Combo_Imcu_Stp", "24 ms", "Timer0_W", 0x60},
    {"Combo_Cyc_Sense", "4 ms", "Timer1_W", 0x80},
    {"Combo_Cyc_Sense", "256 ms", "Timer1_W", 0xE0},
    {"Combo_Cyc_Int", "8 ms", "Timer1_W", 0x08},
    {"Combo_Cyc_Int", "768 ms", "Timer1_W", 0x07},
    {"Combo_Wd_Stp", "24 ms / 96 ms", "Timer2_W", 0x10},
    {"Combo_Fwu", "542 ms", "Timer2_W", 0x0B},
};

TEST(Choices, LightTheirBitsAndFollowThem) {
    for (const Choice& c : optionChoices) {
        SCOPED_TRACE(c.control);
        PanelBench bench;
        bench.choose(c.control);
        EXPECT_EQ(bench.byte(c.row), c.byte);
        PanelBench other;
        other.pokeTo(c.row, c.byte);
        EXPECT_TRUE(other.on<forms::OptionButton>(c.control).value());
        EXPECT_EQ(other.byte(c.row), c.byte);
    }
    for (const Choice& c : boxChoices) {
        SCOPED_TRACE(c.control);
        PanelBench bench;
        bench.tick(c.control);
        EXPECT_EQ(bench.byte(c.row), c.byte);
        bench.tick(c.control);
        EXPECT_EQ(bench.byte(c.row), 0);
        bench.pokeTo(c.row, c.byte);
        EXPECT_TRUE(bench.on<forms::CheckBox>(c.control).checked());
    }
    for (const Selection& s : selections) {
        SCOPED_TRACE(s.item);
        PanelBench bench;
        auto& combo = bench.on<forms::ComboBox>(s.combo);
        combo.edit(s.item);
        EXPECT_EQ(bench.byte(s.row), s.byte);
        combo.setListIndex(0);
        EXPECT_EQ(bench.byte(s.row), 0);
        bench.pokeTo(s.row, s.byte);
        EXPECT_EQ(combo.text(), s.item);
    }
}

TEST(Choices, TellTheSameOnTheirTwins) {
    PanelBench bench;
    const auto isSet = [&](const char* option) {
        return bench.on<forms::OptionButton>(option).value();
    };
    bench.choose("R_Init_Wd(10)");
    EXPECT_TRUE(isSet("R_Init_Wd(14)"));
    bench.choose("R_Init_Wd(12)");
    EXPECT_TRUE(isSet("R_Init_Wd(8)"));
    EXPECT_FALSE(isSet("R_Init_Wd(10)"));
    EXPECT_EQ(bench.byte("Init_Wdog_W"), 0x20);
    bench.choose("R_Init_Wd(4)");
    EXPECT_TRUE(isSet("R_Wd_Refresh(3)"));
    EXPECT_THROW(bench.choose("R_Wd_Refresh(0)"), forms::Unreachable);
    bench.poke("Wd_Refresh_W(0)");
    EXPECT_EQ(bench.byte("Wd_Refresh_W"), 0x01);
    EXPECT_TRUE(isSet("R_Wd_Refresh(3)"));

    bench.choose("R_Init_Misc(1)");
    EXPECT_TRUE(bench.on<forms::CheckBox>("Ch_Init_Misc(0)").checked());
    bench.tick("Ch_Init_Misc(0)");
    EXPECT_FALSE(bench.on<forms::OptionButton>("R_Init_Misc(3)").visible());
    EXPECT_TRUE(bench.on<forms::OptionButton>("R_Init_Misc(4)").visible());
}

TEST(Choices, OfLowPowerModesMakeTheirWords) {
    PanelBench bench;
    bench.poke("Mode_Rm_W(1)");
    bench.tick("opt_s_mode(0)");
    EXPECT_EQ(bench.byte("Mode_Rm_W"), 0x02) << "no mode is chosen";
    bench.choose("s_mode(0)");
    EXPECT_EQ(bench.byte("Mode_Rm_W"), 0x72);
    bench.tick("opt_s_mode(1)");
    EXPECT_EQ(bench.byte("Mode_Rm_W"), 0x7A);
    bench.choose("s_mode(1)");
    EXPECT_EQ(bench.byte("Mode_Rm_W"), 0xE2);
    bench.tick("opt_s_mode(2)");
    bench.tick("opt_s_mode(3)");
    bench.tick("opt_s_mode(0)");
    EXPECT_EQ(bench.effectsOf("Cm_Mode_RM_W(0)"), "5CBA");
    EXPECT_EQ(bench.effectsOf("Cm_Mode_RM_W(1)"), "5C10");
    EXPECT_FALSE(bench.on<forms::OptionButton>("s_mode(1)").value());
    EXPECT_FALSE(bench.on<forms::CheckBox>("opt_s_mode(2)").checked());
    EXPECT_EQ(bench.byte("Mode_Rm_W"), 0x10);
}

TEST(Choices, OfSpecialModeGoWithTheRandomWordInverted) {
    PanelBench bench("scripted", {"0029"}); // 10 1001 at random
    bench.choose("R_Spe_Mode(2)");
    EXPECT_EQ(bench.effectsOf("Cm_Spe_Mode_W(1)"), "1300 5296");
    EXPECT_EQ(bench.byte("Spe_Mode_Rl"), 0x29);
    EXPECT_EQ(bench.lit("Spe_Mode_Rl_b", 0xFFFFC0), (std::vector{1, 2, 4}));
    EXPECT_EQ(bench.effectsOf("Cm_Spe_Mode_W(2)"), "1300 5226");
    bench.choose("R_Spe_Mode(3)");
    EXPECT_EQ(bench.effectsOf("Seq_Spe_Mode_W"), "+Special Mode=3");
}

TEST(RamPage, KeepsItsByteAsTwoHexadecimalDigits) {
    PanelBench bench;
    auto& box = bench.on<forms::TextBox>("Val_Hex_RAM");
    bench.press("Cm_OK_val_hexa");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{"please enter 2 hexa letter"});
    bench.poke("RAM(7)");
    bench.poke("RAM(1)");
    EXPECT_EQ(box.text(), "82");
    box.type("c");
    EXPECT_EQ(box.text(), "8C") << "the third digit replaces the second";
    EXPECT_EQ(bench.byte("RAM"), 0x8C);
    EXPECT_EQ(bench.desk.sound.beeps(), 0);
    box.type("g");
    EXPECT_EQ(box.text(), "8C");
    EXPECT_EQ(bench.desk.sound.beeps(), 1);
    EXPECT_EQ(bench.boxes.takeTexts(),
              std::vector<std::string>{"please enter a good Hexadecimal number"});
    box.type("\b");
    EXPECT_EQ(bench.byte("RAM"), 0x08);
    box.edit("zz\tq\xE9 5f9FFFFFFFFFFFF");
    EXPECT_EQ(box.text(), "5F");
    EXPECT_EQ(bench.byte("RAM"), 0x5F);
    box.edit("");
    EXPECT_EQ(bench.byte("RAM"), 0x5F) << "an empty text says nothing";
    EXPECT_EQ(bench.effectsOf("Cm_Write_RAM(3)"), "485F");
}

TEST(KeyFilters, PassTheirCharactersOnly) {
    PanelBench bench;
    const std::string keys = "\b\r09AFaf./:@Gx12";
    const auto passed = [&](const char* filter) {
        std::string result;
        for (const char key : keys)
            if (const auto code = std::get<std::int64_t>(bench.panel().call(filter, int{key})))
                result += static_cast<char>(code);
        return result;
    };
    EXPECT_EQ(passed("NUM_check"), "\b0912");
    EXPECT_EQ(passed("DECimal_check"), "\b09.12");
    EXPECT_EQ(passed("BINary_x_check"), "\b0x1");
    EXPECT_TRUE(bench.boxes.shown().empty());
    EXPECT_EQ(passed("HEXA_check"), "\b\r09AFAF12");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 6U);
    EXPECT_EQ(bench.desk.sound.beeps(), 11 + 10 + 12 + 6);
    EXPECT_EQ(bench.panel().call("HEXtoBIN", "A5"), forms::Value(" 1010 0101"));
    EXPECT_EQ(bench.panel().call("HEXtoBIN", ""), forms::Value(""));
}

} // namespace
} // namespace bitlux::test
