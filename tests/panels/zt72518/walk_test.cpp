// Every button of the panel against the model of the chip, and every flag of the chip on the panel.

#include "panels/panel_bench.h"

#include <array>
#include <map>
#include <tuple>

namespace bitlux::test {
namespace {

/// All buttons in the order in which a user needs them: all writes and reads of registers, the
/// flags, the modes with the watchdog, the test commands. "%" is replaced by what depends on the
/// variant.
constexpr PanelStep walk[] = {
    {"Mux_W=E8 Cm_MUX_W Seq_MUX_W", "40E8 +MUX Write=E8"},
    {"RAM=11 Cm_Write_RAM(0) RAM=22 Cm_Write_RAM(1) RAM=33 Cm_Write_RAM(2) RAM=44 Cm_Write_RAM(3)",
     "4211 4422 4633 4844"},
    {"INIT_Vreg_W=96 Cm_Init_Vreg_W Seq_Init_Vreg_W", "4A96 +Init Vreg Write=96"},
    {"Init_Wdog_W=31 Cm_Init_Wdog_W Seq_Init_Wdog_W", "4C31 +Init Wdog Write=31"},
    {"Init_Lin_W=77 Cm_Init_Lin_Io_W Seq_Init_Lin_Io", "4E77 +Init Lin IO Write=77"},
    {"Init_Misc_W=2D Cm_Init_Misc_W Seq_Init_Misc_W", "502D +Init Misc Write=2D"},
    {"Timer0_W=5F Cm_Timer0_W Seq_Timer_W(0)", "545F +Timer 0 Write=5F"},
    {"Timer1_W=AA Cm_Timer1_W Seq_Timer_W(1)", "56AA +Timer 1 Write=AA"},
    {"Timer2_W=B5 Cm_Timer2_W Seq_Timer_W(2)", "58B5 +Timer 2 Write=B5"},
    {"Regulator_W=DE Cm_Regulator_W Seq_Regulator_W", "5EDE +Regulator Write=DE"},
    {"Can_W=C9 Cm_Can_W Seq_Can_W", "60C9 +CAN Write=C9"},
    {"IO_W=F9 Cm_Io_W Seq_Io_W", "62F9 +IO Write=F9"},
    {"Interrupts_W=BB Cm_Interrupts_W Seq_Interrupts_W", "64BB +Interrupts Write=BB"},
    {"Lin0_W=C4 Cm_Lin0_W Seq_Lin0_W", "66C4 +LIN 0 Write=C4"},
    {"Lin1_W=84 Cm_Lin1_W Seq_Lin1_W", "6884 +LIN 1 Write=84"},
    {"Cm_OK_val_hexa"},
    {"Cm_ReadAll_Rl(0)", "0100 0B00 0D00 0F00 1100 1300 1500 1700 1900 1B00 1F00 2100 2300 2500%",
     "Init_Reg_Rl~96;Spe_Mode_Rl=7C;Interrupts_Rl=BB"},
    {"Cm_ReadAll_Rh", "1D80 2180 2380 2580%", "Mode_Rm_Rh=07;interrupts_Rh=%;Mode_Rm_Rh(14):%"},
    {"Cm_Mux_Rl Seq_Mux_Rl", "0100 +MUX Read Low=", "Mux_Rl=E8"},
    {"Cm_Read_RAM(0) Cm_Read_RAM(1) Cm_Read_RAM(2) Cm_Read_RAM(3)", "0300 0500 0700 0900",
     "RAM_A=11;RAM_B=22;RAM_C=33;RAM_D=44"},
    {"Cm_RAM_Rl_All", "0300 0500 0700 0900", "RAM_A=11;RAM_B=22;RAM_C=33;RAM_D=44"},
    {"Cm_Init_Reg_Rl Seq_Init_Reg_Rl", "0B00 +Init Vreg Read Low=", "Init_Reg_Rl~96"},
    {"Cm_Init_Wdog_Rl Seq_Init_Wdog_Rl", "0D00 +Init Wdog Read Low=", "Init_Wdog_Rl=31"},
    {"Cm_Init_Lin_Io_Rl Seq_Init_Lin_Io_Rl", "0F00 +Init Lin IO Read Low=", "Init_Lin_Rl~77"},
    {"Cm_Init_Misc_Rl Seq_Init_Misc_Rl", "1100 +Init Misc Read Low=", "Init_Misc_Rl=2D"},
    {"Cm_Timer0_Rl Seq_Timer0_Rl", "1500 +Timer 0 Read Low=", "Timer0_Rl=5F"},
    {"Cm_Timer1_Rl Seq_Timer1_Rl", "1700 +Timer 1 Read Low=", "Timer1_Rl~AA"},
    {"Cm_Timer2_Rl Seq_Timer2_Rl", "1900 +Timer 2 Read Low=", "Timer2_Rl=B5"},
    {"Cm_Wd_Refresh_Rl Seq_Wd_Refresh_Rl", "1B00 +Wd Refresh Read Low=", "Wd_Refresh_Rl~1F"},
    {"Cm_Regulateur_Rl Seq_Regulateur_Rl", "1F00 +Regulator Read Low=", "Regulateur_Rl~DE"},
    {"Cm_CAN_Rl", "2100", "CAN_Rl=C9"},
    {"Seq_CAN_Rl", "+CAN Read Low="}, // which plays another word
    {"Cm_CAN_Rh Seq_Can_Rh", "2180 +CAN Read High=", "CAN_Rh=C0"},
    {"Cm_Io_Rl Seq_IO_Rl", "2300 +IO Read Low=", "IO_Rl~F9"},
    {"Cm_I0_Rh Seq_IO_Rh", "2380 +IO Read High=", "IO_Rh~50"},
    {"Cm_interrupts_Rl Seq_Interrupts_Rl", "2500 +Interrupts Read Low=", "Interrupts_Rl=BB"},
    {"Cm_Interrupts_Rh Seq_Interrupts_Rh", "2580 +Interrupts Read High=", "interrupts_Rh=%"},
    {"Cm_Lin0_Rl Seq_Lin0_Rl", "2700 +LIN 0 Read Low=", "Lin0_Rl~C4"},
    {"CM_Lin0_Rh Seq_Lin0_Rh", "2780 +LIN 0 Read High=", "Lin0_Rh~C0"},
    {"Cm_Lin1_Rl Seq_Lin1_Rl", "2900 +LIN 1 Read Low=", "Lin1_Rl=84"},
    {"Cm_Lin1_Rh Seq_Lin1_Rh", "2980 +LIN 1 Read High=", "Lin1_Rh=80"},
    // Flags
    {"Cm_ReadAll_Rl(1)", "BF00"},
    {"Cm_RFl(1) Seq_RFl(1)", "DF00 +Regulator Read Flag Low="},
    {"Cm_RFl(2) Seq_RFl(2)", "E100 +CAN Read Flag Low="},
    {"Cm_RFl(3) Seq_RFl(3)", "E300 +IO Read Flag Low="},
    {"Cm_RFl(4) Seq_RFl(4)", "E500 +Interrupts Read Flag Low="},
    {"Cm_RFl(5) Seq_RFl(5)", "E700 +LIN 0 Read Flag Low="},
    {"Cm_RFl(6) Seq_RFl(6)", "E900 +LIN 1 Read Flag Low="},
    {"Cm_RFh(1) Seq_RFh(1)", "DF80 +Regulator Read Flag High=80"},
    {"Cm_RFh(2) Seq_RFh(2)", "E180 +CAN Read Flag High=80"},
    {"Cm_RFh(3) Seq_RFh(3)", "E380 +IO Read Flag High=80"},
    {"Cm_RFh(4) Seq_RFl(7)", "E580 +Interrupts Read Flag High=80"},
    {"!SPI_ERR Cm_ReadAll_RFl", "DF00 E100 E300 E500% DF80 E180 E380 E580", "IO_RFl~20"},
    {"Cm_ReadAll_Rl(2)",
     "+MUX Read Low= +Init Vreg Read Low= +Init Wdog Read Low= +Init Lin IO Read Low= +Init Misc "
     "Read Low= +Spe Mode Read Low= +Timer 0 Read Low= +Timer 1 Read Low= +Timer 2 Read Low= +Wd "
     "Refresh Read Low= +Regulator Read Low= +CAN Read Low= +IO Read Low= +Interrupts Read Low= "
     "+LIN 0 Read Low= +LIN 1 Read Low="},
    {"Seq_All_Rh", "+Mode RM Read High= +CAN Read High= +IO Read High= +Interrupts Read High= +LIN "
                   "0 Read High= +LIN 1 Read High="},
    {"Seq_All_RFl",
     "+Mode RM Read Flag High=80 +Regulator Read Flag Low= +Regulator Read Flag High=80 +CAN Read "
     "Flag Low= +CAN Read Flag High=80 +IO Read Flag Low= +IO Read Flag High=80 +LIN 0 Read Flag "
     "Low= +LIN 1 Read Flag Low= +Interrupts Read Flag Low= +Interrupts Read Flag High=80"},
    // Modes
    {"Cm_Spe_Mode_Rl Seq_Spe_Mode_Rl", "1300 +Spe Mode Read Low=", "Spe_Mode_Rl=7C;Spe_Mode_W=03"},
    {"Cm_Spe_Mode_Rl_b", "1300", "Spe_Mode_Rl=7C"},
    {"Spe_Mode_W=83 Cm_Spe_Mode_W(0)", "5283", "Mode>Flash"},
    {"Seq_Spe_Mode_W", "+Special Mode=2"},
    {"Cm_RFh(0) Seq_RFh(0)", "DD80 +Mode RM Read Flag High=80", "Mode_Rm_RFh~0B"},
    {"Spe_Mode_W=40 Cm_Spe_Mode_W(1)", "1300 526E", "Spe_Mode_Rl=91;Mode>Init"},
    {"Cm_Spe_Mode_W(2)", "1300 5237", "Spe_Mode_Rl=78"},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~01"},
    {"Cm_RFl(0) Seq_RFl(0)", "DD00 +Mode RM Read Flag Low=", "Mode_Rm_RFl~01"},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~02"},
    {"Cm_Mode_Rm_Rl Seq_Mode_Rm_Rl", "1D00 +Mode RM Read Low=", "Mode_Rm_Rl=07"},
    {"Cm_Mode_Rm_Rh Seq_Mode_Rm_Rh", "1D80 +Mode RM Read High=", "Mode_Rm_Rh=07;Mode_Rm_Rh(8)+"},
    {"Wd_Refresh_W=A5 Cm_Wd_Refresh_W", "5AA5", "Mode>Normal"},
    {"Seq_Wd_Refresh_W", "+Wd Refresh Write=A5"}, // which plays another word
    {"Cm_Wd_Refresh_Rl", "1B00", "Wd_Refresh_Rl~BA"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=1F;Mode_Rm_Rh(11)+"},
    {"Mode_Rm_W=A0 Cm_Mode_RM_W(0) Seq_Mode_RM_W", "5CA0 +Mode RM Write=A0",
     "Mode>Low Power Vdd On (Stop)"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=A0;Mode_Rm_Rh(12)+"},
    {"Cm_Mode_RM_W(1) Cm_Mode_RM_W(2)", "5C10 +Mode RM Write=10", "Mode>Normal Request"},
    {"Cm_RFh(3)", "E380", "IO_RFh~20"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=10;Mode_Rm_Rh(10)+"},
    {"watchdog(0) watchdog(1)", "<00 15 00 08 06 00 00 00> +Simple WD=100ms",
     "wd_aff(1):Watch Dog is ON"},
    {"watchdog(4) watchdog(5)", "<00 45 00 10 00 05 01 00> +Start Watchdog Current="},
    {"watchdog(8) watchdog(9)", "<00 45 00 10 00 05 01 00> +Start Watchdog Current="},
    {"watchdog(6) watchdog(7)", "<00 45 00 00 00 00 00 00> +Stop Watchdog Current="},
    {"watchdog(10) watchdog(11)", "<00 45 00 00 00 00 00 00> +Stop Watchdog Current="},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~1B"},
    {"watchdog(2) watchdog(3)",
     "<00 15 00 20 00 00 00 00> +Stop Watchdog=", "wd_aff(1):Watch Dog is OFF"},
    {"watchdog(12) watchdog(13)", "5A00 +One Simple Watchdog="},
    {"watchdog(14) watchdog(15) Cm_Wait", "5A00 +Wait=10"},
    {"Cm_Remove_Line"},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(1)", "%", "Mode>Low Power Vdd On (Stop)"},
    {"Send_pre_prog(3)", "5C10", "Mode>Normal Request"},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(2)", "%", "Mode>Low Power Vdd Off (Sleep)"},
    {"!CAN_WU @20", "", "Mode>Normal Request"},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(4)", "1300 527E", "Mode>Init"},
    {"watchdog(12)", "5A00", "Mode>Normal"},
    {"Send_pre_prog(6)", "1300 523E", "Mode>Reset"},
    {"@20", "", "Mode>Normal Request"},
    {"watchdog(14)", "5A00", "Mode>Normal"},
    {"Send_pre_prog(5)", "1300 528D", "Mode>Flash"},
    // Test commands
    {"TestMode.enter_test_mode", "<00 0D 7F 00 00 00 00 00>", "Test mode>11 22"},
    {"TestMode.can_lin(0) TestMode.can_lin(1) TestMode.can_lin(2) TestMode.can_lin(3) "
     "TestMode.can_lin(4) TestMode.can_lin(5) TestMode.can_lin(6)",
     "4210 4400 4210 4401 4210 4402 4210 4403 4210 4404 4210 4405 4210 4406"},
    {"TestMode.can_lin(7) TestMode.can_lin(8) TestMode.can_lin(9) TestMode.can_lin(10) "
     "TestMode.can_lin(11) TestMode.can_lin(12)",
     "4210 4407 4210 4408 4210 4409 4210 440A 4210 440B 4210 440C", "Test mode>10 0C"},
    {"TestMode.term_send", "4230", "Test mode>30 0C"},
    {"TestMode.thres_send", "[Please select a command to send]"},
    {"TestMode.trim_send", "4221 4404", "Test mode>21 04"},
    {"TestMode.tests_send(0)", "4250 [To leave test mode, ZT72518 must be powered down]"},
    {"TestMode.tests_send(1)", "4260", "Test mode>60 04"},
    {"TestMode.tests_send(2)", "4270 [To leave test mode, ZT72518 must be powered down]"},
    {"TestMode.tests_send(3)", "4280 4400", "Test mode>80 00"},
};

/// The variants, in the order of their options from the third on, and what replaces "%" beside a
/// button or in a row.
constexpr std::array devices{"zt72518d", "zt72518s", "zt72511", "zt72514", "zt72514d", "zt72514s"};
const std::map<std::string, std::array<const char*, devices.size()>> differs{
    // Reading all leaves LIN out with the last two as well.
    {"Cm_ReadAll_Rl(0)", {" 2700 2900", " 2700", "", "", "", ""}},
    {"Cm_ReadAll_Rh", {" 2780 2980", " 2780", "", "", "", ""}},
    {"!SPI_ERR Cm_ReadAll_RFl", {" E700 E900", " E700", "", "", "", ""}},
    {"interrupts_Rh", {"EA", "CA", "AA", "8A", "8A", "8A"}},
    {"Mode_Rm_Rh(14)",
     {"5V - ZT72518D - v2.1", "5V - ZT72518S - v2.1", "5V - ZT72511 - v2.1", "5V - ZT72514 - v2.1",
      "5V - ZT72514 - v2.1", "5V - ZT72514 - v2.1"}},
    {"Send_pre_prog(0)",
     {"5A00 6000 66C4 68C4 6200 DF80 5E4F", "5A00 6000 66C4 6200 DF80 5E4F",
      "5A00 6000 6200 DF80 5E4F", "5A00 6000 6200 DF80", "5A00 6000 66C4 68C4 6200 DF80",
      "5A00 6000 68C4 6200 DF80"}},
    {"Send_pre_prog(1)",
     {"6000 6684 6884 6200 5C80", "6000 6684 6200 5C80", "6000 6200 5C80", "6000 6200 5C80",
      "6000 6684 6884 6200 5C80", "6000 6884 6200 5C80"}},
    {"Send_pre_prog(2)",
     {"6000 6684 6884 6200 5E01 5C60", "6000 6684 6800 6200 5E01 5C60",
      "6000 6600 6800 6200 5E01 5C60", "6000 6600 6800 6200 5E01 5C60",
      "6000 6684 6884 6200 5E01 5C60", "6000 6600 6884 6200 5E01 5C60"}},
};

/// A chip behind the dongle, and the panel on its variant.
class Walk : public PanelBench {
public:
    explicit Walk(std::size_t variant) : PanelBench(devices.at(variant)), variant_(variant) {
        choose(fmt::format("opt_vb({})", variant + 2));
        configureWatchdog(*this);
    }
    static void configureWatchdog(PanelBench& bench) {
        bench.work("wd_config(0)=0 wd_config(1)=6 wd_config(2)=1");
    }

    void take(const PanelStep& step) {
        SCOPED_TRACE(step.hands);
        if (refuses(step))
            return;
        for (const std::string& item : split(step.shows, ';'))
            if (const std::size_t end = item.find_first_of("=~"); end != std::string::npos)
                clear(item.substr(0, end));
        session().WordToSend.assign(16, 1); // as the page for single words leaves it
        const std::string outcome = outcomeOf(step.hands);
        EXPECT_EQ(outcome, forVariant(step.effects, step.hands));
        expectInTooltips(step.hands, outcome);
        for (const std::string& item : split(step.shows, ';'))
            EXPECT_EQ(shown(item), forVariant(item, item.substr(0, item.find_first_of("=~:>+"))));
    }

private:
    /// Whether its buttons are disabled on the variant, all of them then.
    bool refuses(const PanelStep& step) {
        int disabled = 0;
        int buttons = 0;
        for (const std::string& hand : split(step.hands, ' '))
            if (hand.find_first_of("!@=") == std::string::npos) {
                ++buttons;
                disabled += control(hand).enabled() ? 0 : 1;
            }
        EXPECT_TRUE(disabled == 0 || disabled == buttons);
        return disabled > 0;
    }
    /// The high bytes of the words are in the tooltips of the buttons.
    void expectInTooltips(const std::string& hands, const std::string& outcome) {
        std::string tooltips;
        for (const std::string& hand : split(hands, ' '))
            if (hand.find_first_of("!@=") == std::string::npos)
                tooltips += control(hand).tooltip() + " ";
        for (const std::string& word : split(outcome.substr(0, outcome.find_first_of("<+[")), ' '))
            EXPECT_NE(tooltips.find("0x" + word.substr(0, 2)), std::string::npos)
                << word << " is not in " << tooltips;
    }
    void clear(const std::string& row) {
        for (const forms::Color colour : {plain, striped})
            for (const int index : lit(row, colour))
                if (index < 8)
                    on<forms::Label>(fmt::format("{}({})", row, index))
                        .setBackColor(forms::windowColor);
    }
    [[nodiscard]] std::string forVariant(std::string text, const std::string& key) const {
        if (const std::size_t mark = text.find('%'); mark != std::string::npos)
            text.replace(mark, 1, differs.at(key).at(variant_));
        return text;
    }

    std::size_t variant_;
};

TEST(RegisterPages, DoWhatTheirButtonsSayOnEveryVariant) {
    for (std::size_t variant = 0; variant < devices.size(); ++variant) {
        SCOPED_TRACE(devices.at(variant));
        Walk bench(variant);
        for (const PanelStep& step : walk)
            bench.take(step);
    }
}

TEST(RegisterPages, HaveNoButtonThatTheWalkLeavesOut) {
    PanelBench bench;
    bench.expectAllButtonsIn(
        walk, {"ZT72518", "TestMode"},
        "Cm_CLEAR_lists Cm_SAVE_Seq Cm_LOAD_Seq Cm_Run_Seq Cm_Stop_Loop "
        "Cm_PassCondition1 Cm_PassCondition2"); // tests of sequences press them
    for (const auto& [button, tooltip] : {std::pair{"Cm_Interrupts_Rh", "0x2580"},
                                          {"Cm_RFh(1)", "0xDF80"},
                                          {"Cm_Spe_Mode_Rl_b", "0x1300"}})
        EXPECT_EQ(bench.on<forms::Button>(button).tooltip(), tooltip);
}

TEST(RegisterPages, AppendLinesThatPlayWhatTheirButtonsSend) {
    PanelBench bench;
    Walk::configureWatchdog(bench);
    int played = 0;
    for (const PanelStep& step : walk) {
        const std::string effects = step.effects;
        const std::size_t plus = effects.find(" +");
        if (effects[0] == '+' || plus == std::string::npos ||
            effects.find("Wait") != std::string::npos)
            continue;
        ++played;
        const std::size_t equals = effects.find('=');
        const std::string name = effects.substr(plus + 2, equals - plus - 2);
        std::string words = effects.substr(0, plus);
        if (name.ends_with("Read High")) // without a value it is the low byte that is read
            words.replace(words.size() - 2, 2, "00");
        EXPECT_EQ(bench.run(effects.substr(plus + 2)), words) << name;
    }
    EXPECT_GT(played, 50);
}

/// A row of flags: the button that reads it, its first label, the name of its switches at the chip,
/// the status row while one of them is up, and the flags that also report a wake-up.
using Flags =
    std::tuple<const char*, const char*, int, const char*, unsigned, unsigned, const char*>;

constexpr Flags flagRows[] = {
    {"Cm_RFl(1)", "Regulator_RFl", 0, "Reg Low", 0x0101, 0x00,
     "IDD OC INT|VSUV|Vsense low|5V CAN OC|5V CAN low|5V-CAN Tshutdown|Vaux OC|Vaux low (in NOR)"},
    {"Cm_RFl(2)", "CAN_RFl", 0, "CAN Low", 0x1040, 0x80,
     "Over Current|CAN Bus dom clamp|Tx Dom|Rx high|Rx Low|Over Temp|-|CAN WU"},
    {"Cm_RFl(3)", "IO_RFl", 0, "I/O Low", 0x0404, 0x00,
     "WD flash 50%|I/O_0 T Shutdown|VSUP1_OV|VSUP2_UV|CSB low 2.5ms|SPI ERR|HS2 to GND|HS3 to GND"},
    {"Cm_RFl(4)", "Interrupts_RFl", 0, "Safe INT", 0x8200, 0x00,
     "-|Vaux OV|VDD OV|VDD low INT|VDD Tpre Warning|SAFE_RES MisMatch|RST2HIGH (VDDOFF)|MCU REQ "
     "INT"},
    {"Cm_RFl(5)", "Lin0_RFl", 0, "Lin 1", 0x0810, 0x40,
     "Bus Dom Clamp|Tx Dom|Rx High|Rx Low| Over Temp|TERM to GND|LIN 1 WU|-"},
    {"Cm_RFl(6)", "Lin1_RFl", 0, "Lin 2", 0x0820, 0x40,
     "Bus Dom Clamp|Tx Dom|Rx High|Rx Low| Over Temp|TERM to GND|LIN 2 WU|-"},
    {"Cm_RFh(1)", "Regulator_RFh", 0, "Reg High", 0x0102, 0x01,
     "IDD OC WU|Vsuv Batfail|RST2LOW (T<100ms)|-|VDD Tshutdown|-|-|-"},
    {"Cm_RFh(2)", "CAN_RFh", 0, "CAN High", 0x1080, 0x00,
     "CANH to gnd|CANH to Vdd|CANH to Vsup|CANL to Gnd|CANL to Vdd|CANL to Vsup|CAN-F|CAN_UF"},
    {"Cm_RFh(3)", "IO_RFh", 0, "I/O High", 0x0408, 0xF0,
     "PIN_Leave debug |SPI Goto RST|SPI Goto SLP|INT Serv_TO|FWU|SPI WU CSB_STP|I/O_0_2 INT_WU|"
     "I/O_1_3 INT_WU"},
    {"Cm_RFh(4)", "Interrupts_RFl", 8, "Safe RST", 0x2200, 0x00,
     "SPI W/D refresh fail|Multiple RST|Rst Low 100ms|VDD low RST|VDD Low 100ms|-|-|-"}};

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

TEST(ChipBehindPanel, LightsEveryFlagByItsName) {
    PanelBench bench("zt72518d");
    const auto status = [&] {
        unsigned bits = 0;
        for (const int bit : bench.lit("Reg_W", plain))
            bits |= 1U << bit;
        return bits;
    };
    for (const auto& [button, row, first, group, statusOfRow, wakeUps, captions] : flagRows) {
        int label = first;
        for (const std::string& caption : split(captions, '|')) {
            SCOPED_TRACE(fmt::format("{}/{}", group, caption));
            const int bit = label++;
            EXPECT_EQ(bench.caption(fmt::format("{}({})", row, bit)), caption);
            if (caption == "-")
                continue;
            bench.turn(fmt::format("{}/{}", group, trimmed(caption)));
            const bool wakes = (wakeUps >> (bit - first) & 1) != 0;
            for (const char* press : {"Cm_ReadAll_Rl(1)", button}) {
                bench.press(press);
                EXPECT_EQ(status(), statusOfRow | (wakes ? 0x4000U : 0U)) << press;
            }
            const forms::Color one = bench.lit(row, striped).empty() ? plain : striped;
            EXPECT_EQ(bench.lit(row, one), Bits{bit});
            bench.press(button);
            EXPECT_EQ(bench.lit(row, one), Bits{});
            EXPECT_EQ(status() & 0xFF00, 0U);
        }
    }
}

TEST(ChipBehindPanel, LightsThePinsAndWhichChipItIs) {
    PanelBench bench("zt72518d");
    for (const auto& [name, button, row, label, caption] :
         {std::tuple{"Pins/RST", "Cm_Mux_Rl", "Reg_W", 13, "RST"},
          {"Pins/INT", "Cm_Mux_Rl", "Reg_W", 15, "INT"},
          {"Pins/Debug", "Cm_RFh(0)", "Mode_Rm_RFh", 0, "DEBUG Staus"},
          {"Pins/Debug", "Cm_RFl(0)", "Mode_Rm_RFl", 0, "Debug Status"},
          {"Pins/SAFE", "Cm_RFh(0)", "Mode_Rm_RFh", 1, "SAFE Status"}, // lit when it is off
          {"Pins/SAFE", "Cm_RFl(0)", "Mode_Rm_RFl", 1, "SAFE Status"},
          {"Pins/I/O 0", "Cm_I0_Rh", "IO_Rh", 0, "I/O 0 State"},
          {"Pins/I/O 1", "Cm_I0_Rh", "IO_Rh", 2, "I/O 1 state"},
          {"Pins/I/O 2", "Cm_I0_Rh", "IO_Rh", 4, "I/O 2 state"},
          {"Pins/I/O 3", "Cm_I0_Rh", "IO_Rh", 6, "I/O 3 State"},
          {"Identity/Rev-0", "Cm_Interrupts_Rh", "interrupts_Rh", 0, "Rev-0"},
          {"Identity/Rev-4", "Cm_Interrupts_Rh", "interrupts_Rh", 4, "Rev-4"},
          {"Identity/Device ID0", "Cm_Interrupts_Rh", "interrupts_Rh", 5, "Device ID0"},
          {"Identity/Device ID1", "Cm_Interrupts_Rh", "interrupts_Rh", 6, "Device ID1"},
          {"Identity/VDD_ID", "Cm_Interrupts_Rh", "interrupts_Rh", 7, "VDD_ID"}}) {
        SCOPED_TRACE(fmt::format("{} {}", name, button));
        EXPECT_EQ(bench.caption(fmt::format("{}({})", row, label)), caption);
        for (const bool on : {true, false}) {
            bench.turn(name, on);
            bench.press(button);
            const forms::Color colour =
                bench.on<forms::Label>(fmt::format("{}({})", row, label)).backColor();
            const bool litWhen = std::string_view(name) != "Pins/SAFE";
            EXPECT_EQ(colour == plain || colour == striped, on == litWhen);
        }
    }
}

TEST(ChipBehindPanel, IsOutOfReachOnTheParallelPort) {
    const Texts refusal{"WordToSend(i) is neither a 1 or a 0!!!\r\n"
                        "Check the USB cable and restart program"};
    TestBench bench("zt72518d");
    bench.configure("16");
    bench.program.forms().show("ZT72518");
    const auto press = [&](const std::string& button) {
        bench.session().LinkFailed = false;
        bench.click("ZT72518." + button);
        return bench.boxes.takeTexts();
    };
    for (const char* button :
         {"Cm_MUX_W", "Cm_Init_Reg_Rl", "Cm_RFl(1)", "Cm_ReadAll_Rl(1)", "Cm_ReadAll_RFl",
          "Cm_ReadAll_Rh", "Send_pre_prog(0)", "Send_pre_prog(6)", "watchdog(12)"}) {
        EXPECT_EQ(press(button), refusal) << button;
        EXPECT_TRUE(bench.session().LinkFailed) << button;
    }
    EXPECT_EQ(press("Cm_ReadAll_Rl(0)").size(), 15U) << "does not look whether the link failed";
    EXPECT_EQ(press("Cm_Mux_Rl"), Texts{}) << "a word of random bits";
    EXPECT_FALSE(bench.session().LinkFailed);
    bench.click("TestMode.term_send");
    EXPECT_EQ(bench.boxes.takeTexts(), refusal);
}

TEST(RegisterPages, AddTheParityBitThatWasComputedLast) {
    PanelBench bench;
    for (const auto& [hands, words] : {std::pair{"Mux_W=00 Cm_MUX_W", "4000"},
                                       {"Ch_Init_Misc(6) Cm_MUX_W", "4100"},
                                       {"Mux_W=07 Cm_MUX_W", "4007"},
                                       {"Cm_Spe_Mode_W(0)", "5200"},          // never on this one
                                       {"Ch_Init_Misc(6) Cm_MUX_W", "4107"}}) // goes on
        EXPECT_EQ(bench.effectsOf(hands), words) << hands;
}

TEST(RegisterPages, StoreWhatTheUserSends) {
    PanelBench bench;
    auto& store = bench.panel().part<CommandStore>();
    std::string stored;
    store.write = [&stored](const std::string& name, const std::string& value) {
        stored += fmt::format(" *{}={}", name, value);
    };
    store.StoreCommands = true;
    for (const auto& [hands, effects] : {std::pair{"RAM=0C Cm_Write_RAM(2)", "460C *Write RAM=C"},
                                         {"Cm_Read_RAM(2)", "0700"},
                                         {"Cm_CAN_Rh", "2180 *CAN Read High="},
                                         {"Cm_Spe_Mode_W(0)", "5200 *Special Mode=0"},
                                         {"Cm_RFl(4)", "E500 *Interrupts Read Flag Low="},
                                         {"Cm_RFh(4)", "E580 *Interrupts Read Flag High=80"},
                                         {"Cm_Mode_RM_W(1)", "5C10 *Mode RM Write=10"},
                                         {"Cm_ReadAll_Rl(1)", "BF00"}}) {
        const std::string words = bench.effectsOf(hands);
        EXPECT_EQ(words + std::exchange(stored, ""), effects);
    }
}

} // namespace
} // namespace bitlux::test
