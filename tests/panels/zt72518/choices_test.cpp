#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

/// Choices on the page of a dark row, and the byte that each makes. Of lists the texts count.
constexpr std::pair<const char*, const char*> choices[] = {
    {"Mux_W", "R_MUX(3)=60 R_MUX(7)=E0 Ch_Mux(0)=08 Ch_Mux(1)=10"},
    {"INIT_Vreg_W", "R_Init_Vreg(1)=04 R_Init_Vreg(4)=10 R_Init_Vreg(9)=60 R_Init_Vreg(12)=02 "
                    "Ch_INIT_VREG(7)=80"},
    {"Init_Wdog_W", "R_Init_Wd(3)=08 R_Init_Wd(6)=10 R_Init_Wd(8)=20 R_Init_Wd(13)=40 "
                    "Ch_Init_Wdog(0)=02 Ch_Init_Wdog(1)=80 Ch_Init_Wdog(2)=01"},
    {"Init_Lin_W", "R_Init_Lin(3)=18 R_Init_Lin(6)=40 Ch_Init_LIN_IO(2)=04 Ch_Init_LIN_IO(3)=80"},
    {"Init_Misc_W", "R_Init_Misc(2)=06 R_Init_Misc(5)=10 R_Init_Misc(7)=20 R_Init_Misc(9)=80 "
                    "Ch_Init_Misc(3)=08 Ch_Init_Misc(6)=40"}, // 06 has the box of its resistor
    {"Spe_Mode_W", "R_Spe_Mode(2)=80"},
    {"Regulator_W", "R_Reg(2)=10 R_Reg(5)=40 Ch_Reg(1)=02"},
    {"Can_W", "R_Can(1)=01 R_Can(3)=08 R_Can(6)=20 R_Can(9)=40"},
    {"IO_W", "R_I_O(3)=03 R_I_O(6)=08 R_I_O(9)=10 R_I_O(14)=80"},
    {"Lin0_W", "R_Lin0(1)=10 R_Lin0(6)=80 Ch_Lin(0)=04 Ch_Lin(2)=01"},
    {"Lin1_W", "R_Lin1(2)=20 R_Lin1(5)=40 Ch_Lin(1)=04 Ch_Lin(3)=01"},
    {"Interrupts_W", "Ch_interrupts(2)=04 Ch_interrupts(6)=40"},
    {"Timer0_W", "Combo_Wd:6_ms=09 Combo_Wd:512_ms=1F Combo_Imcu_Stp:4_ms=80 "
                 "Combo_Imcu_Stp:24_ms=60"},
    {"Timer1_W", "Combo_Cyc_Sense:4_ms=80 Combo_Cyc_Sense:256_ms=E0 Combo_Cyc_Int:8_ms=08 "
                 "Combo_Cyc_Int:768_ms=07"},
    {"Timer2_W", "Combo_Wd_Stp:24_ms_/_96_ms=10 Combo_Fwu:542_ms=0B"},
};

TEST(Choices, LightTheirBitsAndFollowThem) {
    for (const auto& [row, all] : choices)
        for (const std::string& one : split(all, ' ')) {
            SCOPED_TRACE(one);
            const std::string choice = one.substr(0, one.find('='));
            const std::uint64_t byte = std::stoul(one.substr(choice.size() + 1), nullptr, 16);
            PanelBench bench;
            bench.make(choice);
            EXPECT_EQ(bench.row(row), byte);
            if (choice.starts_with("Ch_")) {
                bench.make(choice);
                EXPECT_EQ(bench.row(row), 0U);
            }
            PanelBench other;
            other.pokeTo(row, byte);
            EXPECT_EQ(other.row(row), byte);
            EXPECT_TRUE(other.isMade(choice));
        }
}

TEST(Choices, ShowTheSameOnTheirTwins) {
    PanelBench bench;
    EXPECT_THROW(bench.choose("R_Wd_Refresh(0)"), forms::Unreachable);
    bench.walk(std::initializer_list<PanelStep>{
        {"R_Init_Wd(10)", "", "R_Init_Wd(14)^1"},
        {"R_Init_Wd(12)", "", "R_Init_Wd(8)^1;R_Init_Wd(10)^0;Init_Wdog_W=20"},
        {"R_Init_Wd(4)", "", "R_Wd_Refresh(3)^1"},
        {"Wd_Refresh_W(0)", "", "Wd_Refresh_W=01;R_Wd_Refresh(3)^1"},
        {"R_Init_Misc(1)", "", "Ch_Init_Misc(0)^1"},
        {"Ch_Init_Misc(0)", "", "R_Init_Misc(3)-;R_Init_Misc(4)+"},
    });
}

TEST(Choices, ShowTheirBitsInTooltips) {
    PanelBench bench;
    EXPECT_EQ(bench.control("R_MUX(5)").tooltip(), "[7:5] = 101");
    EXPECT_EQ(bench.control("R_Init_Vreg(2)").tooltip(), "[4:3] = 00");
    EXPECT_EQ(bench.control("R_Init_Wd(6)").tooltip(), "[4] = 1");
    EXPECT_EQ(bench.control("Ch_Init_Wdog(1)").tooltip(), "[7]");
    EXPECT_EQ(bench.on<forms::Frame>("init_vreg_frame(1)").caption(),
              "VDD low reset duration [4:3]");
    EXPECT_EQ(bench.control("Cm_ReadAll_Rh").tooltip(),
              "0x1D80, 0x2180, 0x2380, 0x2580, 0x2780, 0x2980");
}

TEST(Choices, OfLowPowerModesMakeTheirWords) {
    PanelBench().walk(std::initializer_list<PanelStep>{
        {"Mode_Rm_W(1) opt_s_mode(0)", "", "Mode_Rm_W=02"}, // no mode is chosen
        {"s_mode(0)", "", "Mode_Rm_W=72"},
        {"opt_s_mode(1)", "", "Mode_Rm_W=7A"},
        {"s_mode(1)", "", "Mode_Rm_W=E2"},
        {"opt_s_mode(2) opt_s_mode(3) opt_s_mode(0) Cm_Mode_RM_W(0)", "5CBA"},
        {"Cm_Mode_RM_W(1)", "5C10", "s_mode(1)^0;opt_s_mode(2)^0;Mode_Rm_W=10"},
    });
}

TEST(Choices, OfSpecialModeGoWithTheRandomWordInverted) {
    PanelBench bench("scripted", {"0029"}); // 10 1001 at random
    bench.walk(std::initializer_list<PanelStep>{
        {"R_Spe_Mode(2) Cm_Spe_Mode_W(1)", "1300 5296", "Spe_Mode_Rl=29"},
        {"Cm_Spe_Mode_W(2)", "1300 5226"},
        {"R_Spe_Mode(3) Seq_Spe_Mode_W", "+Special Mode=3"},
    });
    EXPECT_EQ(bench.lit("Spe_Mode_Rl_b", plain), (Bits{1, 2, 4}));
}

TEST(RamPage, KeepsItsByteAsTwoHexadecimalDigits) {
    PanelBench bench;
    auto& box = bench.on<forms::TextBox>("Val_Hex_RAM");
    bench.press("Cm_OK_val_hexa");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"please enter 2 hexa letter"});
    bench.control("RAM(7)").click();
    bench.control("RAM(1)").click();
    EXPECT_EQ(box.text(), "82");
    box.type("c");
    EXPECT_EQ(box.text(), "8C") << "the third digit replaces the second";
    EXPECT_EQ(bench.row("RAM"), 0x8CU);
    EXPECT_EQ(bench.desk.sound.beeps(), 0);
    box.type("g");
    EXPECT_EQ(box.text(), "8C");
    EXPECT_EQ(bench.desk.sound.beeps(), 1);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"please enter a good Hexadecimal number"});
    box.type("\b");
    EXPECT_EQ(bench.row("RAM"), 0x08U);
    box.edit("zz\tq\xE9 5f9FFFFFFFFFFFF");
    EXPECT_EQ(box.text(), "5F");
    EXPECT_EQ(bench.row("RAM"), 0x5FU);
    box.edit("");
    EXPECT_EQ(bench.row("RAM"), 0x5FU) << "an empty text says nothing";
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
