#include "panels/panel_bench.h"

#include <map>
#include <set>
#include <sstream>

namespace bitlux::test {
namespace {

/// A press of a button, with what it must do.
struct Step {
    /// The button, behind "Row=E8" when bits of a write row are clicked until it has that byte
    /// first. "!Name" turns a switch of the chip in place of a press, and 20 ms pass.
    const char* button;
    /// Words, commands and lines; "%" stands for the part that depends on the variant.
    const char* effects;
    /// What is seen then, parted by semicolons: "Row=E8" and "Row~E8" are a row of labels lit in
    /// the plain and the striped colour, "Label:text" a caption, "Label!" a label that is visible,
    /// "Name>text" what the chip itself shows of its state.
    const char* shows = "";
    unsigned status = 0; ///< what the status row shows
};

/// Every button of the form, as somebody with one chip in front of him presses them: first all
/// writes, which are read back then, the flags, the modes with the watchdog, the test commands.
constexpr Step walk[] = {
    {"!VSUV", ""},
    {"!Vsuv Batfail", ""},
    {"!CAN Low/Tx Dom", ""},
    {"!CANH to Vdd", ""},
    {"!VSUP2_UV", ""},
    {"!SPI Goto SLP", ""},
    {"!Vaux OV", ""},
    {"!VDD low RST", ""},
    {"Mux_W=E8 Cm_MUX_W", "40E8", "", 0xB7CF},
    {"Seq_MUX_W", "+MUX Write=E8", "", 0xB7CF},
    {"RAM=11 Cm_Write_RAM(0)", "4211", "", 0xB7CF},
    {"RAM=22 Cm_Write_RAM(1)", "4422", "", 0xB7CF},
    {"RAM=33 Cm_Write_RAM(2)", "4633", "", 0xB7CF},
    {"RAM=44 Cm_Write_RAM(3)", "4844", "", 0xB7CF},
    {"INIT_Vreg_W=96 Cm_Init_Vreg_W", "4A96", "", 0xB7CF},
    {"Seq_Init_Vreg_W", "+Init Vreg Write=96", "", 0xB7CF},
    {"Init_Wdog_W=31 Cm_Init_Wdog_W", "4C31", "", 0xB7CF},
    {"Seq_Init_Wdog_W", "+Init Wdog Write=31", "", 0xB7CF},
    {"Init_Lin_W=77 Cm_Init_Lin_Io_W", "4E77", "", 0xB7CF},
    {"Seq_Init_Lin_Io", "+Init Lin IO Write=77", "", 0xB7CF},
    {"Init_Misc_W=2D Cm_Init_Misc_W", "502D", "", 0xB7CF},
    {"Seq_Init_Misc_W", "+Init Misc Write=2D", "", 0xB7CF},
    {"Timer0_W=5F Cm_Timer0_W", "545F", "", 0xB7CF},
    {"Seq_Timer_W(0)", "+Timer 0 Write=5F", "", 0xB7CF},
    {"Timer1_W=AA Cm_Timer1_W", "56AA", "", 0xB7CF},
    {"Seq_Timer_W(1)", "+Timer 1 Write=AA", "", 0xB7CF},
    {"Timer2_W=B5 Cm_Timer2_W", "58B5", "", 0xB7CF},
    {"Seq_Timer_W(2)", "+Timer 2 Write=B5", "", 0xB7CF},
    {"Regulator_W=DE Cm_Regulator_W", "5EDE", "", 0xB7CF},
    {"Seq_Regulator_W", "+Regulator Write=DE", "", 0xB7CF},
    {"Can_W=C9 Cm_Can_W", "60C9", "", 0xB7CF},
    {"Seq_Can_W", "+CAN Write=C9", "", 0xB7CF},
    {"IO_W=F9 Cm_Io_W", "62F9", "", 0xB7CF},
    {"Seq_Io_W", "+IO Write=F9", "", 0xB7CF},
    {"Interrupts_W=BB Cm_Interrupts_W", "64BB", "", 0xB7CF},
    {"Seq_Interrupts_W", "+Interrupts Write=BB", "", 0xB7CF},
    {"Lin0_W=C4 Cm_Lin0_W", "66C4", "", 0xB7CF},
    {"Seq_Lin0_W", "+LIN 0 Write=C4", "", 0xB7CF},
    {"Lin1_W=84 Cm_Lin1_W", "6884", "", 0xB7CF},
    {"Seq_Lin1_W", "+LIN 1 Write=84", "", 0xB7CF},
    {"Cm_OK_val_hexa", "", "", 0xB7CF},
    {"Cm_ReadAll_Rl(0)", "0100 0B00 0D00 0F00 1100 1300 1500 1700 1900 1B00 1F00 2100 2300 2500%",
     "Init_Reg_Rl~96;Init_Wdog_Rl=31;Init_Lin_Rl~77;Init_Misc_Rl=2D;Spe_Mode_Rl=7C;Timer0_Rl=5F;"
     "Timer1_Rl~AA;Timer2_Rl=B5;Wd_Refresh_Rl~1F;Regulateur_Rl~DE;CAN_Rl=C9;IO_Rl~F9;Interrupts_Rl="
     "BB",
     0xB7CF},
    {"Cm_ReadAll_Rh", "1D80 2180 2380 2580%",
     "Mode_Rm_Rh=07;CAN_Rh=C0;IO_Rh~50;interrupts_Rh=%;Mode_Rm_Rh(14):%", 0xB7CF},
    {"Cm_Mux_Rl", "0100", "Mux_Rl=E8", 0xB7CF},
    {"Seq_Mux_Rl", "+MUX Read Low=", "", 0xB7CF},
    {"Cm_Read_RAM(0)", "0300", "RAM_A=11", 0xB7CF},
    {"Cm_Read_RAM(1)", "0500", "RAM_B=22", 0xB7CF},
    {"Cm_Read_RAM(2)", "0700", "RAM_C=33", 0xB7CF},
    {"Cm_Read_RAM(3)", "0900", "RAM_D=44", 0xB7CF},
    {"Cm_RAM_Rl_All", "0300 0500 0700 0900", "RAM_A=11;RAM_B=22;RAM_C=33;RAM_D=44", 0xB7CF},
    {"Cm_Init_Reg_Rl", "0B00", "Init_Reg_Rl~96", 0xB7CF},
    {"Seq_Init_Reg_Rl", "+Init Vreg Read Low=", "", 0xB7CF},
    {"Cm_Init_Wdog_Rl", "0D00", "Init_Wdog_Rl=31", 0xB7CF},
    {"Seq_Init_Wdog_Rl", "+Init Wdog Read Low=", "", 0xB7CF},
    {"Cm_Init_Lin_Io_Rl", "0F00", "Init_Lin_Rl~77", 0xB7CF},
    {"Seq_Init_Lin_Io_Rl", "+Init Lin IO Read Low=", "", 0xB7CF},
    {"Cm_Init_Misc_Rl", "1100", "Init_Misc_Rl=2D", 0xB7CF},
    {"Seq_Init_Misc_Rl", "+Init Misc Read Low=", "", 0xB7CF},
    {"Cm_Timer0_Rl", "1500", "Timer0_Rl=5F", 0xB7CF},
    {"Seq_Timer0_Rl", "+Timer 0 Read Low=", "", 0xB7CF},
    {"Cm_Timer1_Rl", "1700", "Timer1_Rl~AA", 0xB7CF},
    {"Seq_Timer1_Rl", "+Timer 1 Read Low=", "", 0xB7CF},
    {"Cm_Timer2_Rl", "1900", "Timer2_Rl=B5", 0xB7CF},
    {"Seq_Timer2_Rl", "+Timer 2 Read Low=", "", 0xB7CF},
    {"Cm_Wd_Refresh_Rl", "1B00", "Wd_Refresh_Rl~1F", 0xB7CF},
    {"Seq_Wd_Refresh_Rl", "+Wd Refresh Read Low=", "", 0xB7CF},
    {"Cm_Regulateur_Rl", "1F00", "Regulateur_Rl~DE", 0xB7CF},
    {"Seq_Regulateur_Rl", "+Regulator Read Low=", "", 0xB7CF},
    {"Cm_CAN_Rl", "2100", "CAN_Rl=C9", 0xB7CF},
    {"Seq_CAN_Rl", "+CAN Read Low=", "", 0xB7CF},
    {"Cm_CAN_Rh", "2180", "CAN_Rh=C0", 0xB7CF},
    {"Seq_Can_Rh", "+CAN Read High=", "", 0xB7CF},
    {"Cm_Io_Rl", "2300", "IO_Rl~F9", 0xB7CF},
    {"Seq_IO_Rl", "+IO Read Low=", "", 0xB7CF},
    {"Cm_I0_Rh", "2380", "IO_Rh~50", 0xB7CF},
    {"Seq_IO_Rh", "+IO Read High=", "", 0xB7CF},
    {"Cm_interrupts_Rl", "2500", "Interrupts_Rl=BB", 0xB7CF},
    {"Seq_Interrupts_Rl", "+Interrupts Read Low=", "", 0xB7CF},
    {"Cm_Interrupts_Rh", "2580", "interrupts_Rh=%", 0xB7CF},
    {"Seq_Interrupts_Rh", "+Interrupts Read High=", "", 0xB7CF},
    {"Cm_Lin0_Rl", "2700", "Lin0_Rl~C4", 0xB7CF},
    {"Seq_Lin0_Rl", "+LIN 0 Read Low=", "", 0xB7CF},
    {"CM_Lin0_Rh", "2780", "Lin0_Rh~C0", 0xB7CF},
    {"Seq_Lin0_Rh", "+LIN 0 Read High=", "", 0xB7CF},
    {"Cm_Lin1_Rl", "2900", "Lin1_Rl=84", 0xB7CF},
    {"Seq_Lin1_Rl", "+LIN 1 Read Low=", "", 0xB7CF},
    {"Cm_Lin1_Rh", "2980", "Lin1_Rh=80", 0xB7CF},
    {"Seq_Lin1_Rh", "+LIN 1 Read High=", "", 0xB7CF},
    {"Cm_ReadAll_Rl(1)", "BF00", "", 0xB7CF},
    {"Cm_RFl(1)", "DF00", "Regulator_RFl~02", 0xB7CF},
    {"Cm_RFl(2)", "E100", "CAN_RFl~04", 0xB7CF},
    {"Cm_RFl(3)", "E300", "IO_RFl~08", 0xB7CF},
    {"Cm_RFl(4)", "E500", "Interrupts_RFl~02", 0xB7CF},
    {"Cm_RFl(5)", "E700", "Lin0_RFl=00", 0x37CF},
    {"Cm_RFl(6)", "E900", "Lin1_RFl=00", 0x37CF},
    {"Cm_RFh(1)", "DF80", "Regulator_RFh~02", 0x37CF},
    {"Cm_RFh(2)", "E180", "CAN_RFh~02", 0x36CF},
    {"Cm_RFh(3)", "E380", "IO_RFh~04", 0x26CF},
    {"Cm_RFh(4)", "E580", "Interrupts_RFl(8)~08", 0x22CF},
    {"Cm_ReadAll_Rl(1)", "BF00"},
    {"!SPI ERR", ""},
    {"Cm_ReadAll_RFl", "DF00 E100 E300 E500% DF80 E180 E380 E580", "IO_RFl~20"},
    {"Seq_RFl(0)", "+Mode RM Read Flag Low="},
    {"Seq_RFl(1)", "+Regulator Read Flag Low="},
    {"Seq_RFl(2)", "+CAN Read Flag Low="},
    {"Seq_RFl(3)", "+IO Read Flag Low="},
    {"Seq_RFl(4)", "+Interrupts Read Flag Low="},
    {"Seq_RFl(5)", "+LIN 0 Read Flag Low="},
    {"Seq_RFl(6)", "+LIN 1 Read Flag Low="},
    {"Seq_RFl(7)", "+Interrupts Read Flag High=80"},
    {"Seq_RFh(0)", "+Mode RM Read Flag High=80"},
    {"Seq_RFh(1)", "+Regulator Read Flag High=80"},
    {"Seq_RFh(2)", "+CAN Read Flag High=80"},
    {"Seq_RFh(3)", "+IO Read Flag High=80"},
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
    {"Cm_Spe_Mode_Rl", "1300", "Spe_Mode_Rl=7C;Spe_Mode_W=03"},
    {"Cm_Spe_Mode_Rl_b", "1300", "Spe_Mode_Rl=7C"},
    {"Seq_Spe_Mode_Rl", "+Spe Mode Read Low="},
    {"Spe_Mode_W=83 Cm_Spe_Mode_W(0)", "5283", "Mode>Flash"},
    {"Seq_Spe_Mode_W", "+Special Mode=2"},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~0B"},
    {"Spe_Mode_W=40 Cm_Spe_Mode_W(1)", "1300 526E", "Spe_Mode_Rl=91;Mode>Init"},
    {"Cm_Spe_Mode_W(2)", "1300 5237", "Spe_Mode_Rl=78"},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~01"},
    {"Cm_RFl(0)", "DD00", "Mode_Rm_RFl~01"},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~02"},
    {"Cm_Mode_Rm_Rl", "1D00", "Mode_Rm_Rl=07"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=07;Mode_Rm_Rh(8)!"},
    {"Seq_Mode_Rm_Rl", "+Mode RM Read Low="},
    {"Seq_Mode_Rm_Rh", "+Mode RM Read High="},
    {"Wd_Refresh_W=A5 Cm_Wd_Refresh_W", "5AA5", "Mode>Normal"},
    {"Seq_Wd_Refresh_W", "+Wd Refresh Write=A5"},
    {"Cm_Wd_Refresh_Rl", "1B00", "Wd_Refresh_Rl~BA"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=1F;Mode_Rm_Rh(11)!"},
    {"Mode_Rm_W=A0 Cm_Mode_RM_W(0)", "5CA0", "Mode>Low Power Vdd On (Stop)"},
    {"Seq_Mode_RM_W", "+Mode RM Write=A0"},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=A0;Mode_Rm_Rh(12)!"},
    {"Cm_Mode_RM_W(1)", "5C10", "Mode>Normal Request"},
    {"Cm_Mode_RM_W(2)", "+Mode RM Write=10"},
    {"Cm_RFh(3)", "E380", "IO_RFh~20", 0x4400},
    {"Cm_Mode_Rm_Rh", "1D80", "Mode_Rm_Rh=10;Mode_Rm_Rh(10)!"},
    {"watchdog(0)", "<00 15 00 08 06 00 00 00>", "wd_aff(1):Watch Dog is ON"},
    {"watchdog(1)", "+Simple WD=100ms"},
    {"watchdog(4)", "<00 45 00 10 00 05 01 00>"},
    {"watchdog(8)", "<00 45 00 10 00 05 01 00>"},
    {"watchdog(5)", "+Start Watchdog Current="},
    {"watchdog(9)", "+Start Watchdog Current="},
    {"watchdog(6)", "<00 45 00 00 00 00 00 00>"},
    {"watchdog(10)", "<00 45 00 00 00 00 00 00>"},
    {"watchdog(7)", "+Stop Watchdog Current="},
    {"watchdog(11)", "+Stop Watchdog Current="},
    {"Cm_RFh(0)", "DD80", "Mode_Rm_RFh~1B"},
    {"watchdog(2)", "<00 15 00 20 00 00 00 00>", "wd_aff(1):Watch Dog is OFF"},
    {"watchdog(3)", "+Stop Watchdog="},
    {"watchdog(12)", "5A00"},
    {"watchdog(13)", "+One Simple Watchdog="},
    {"watchdog(14)", "5A00"},
    {"watchdog(15)", ""},
    {"Cm_Wait", "+Wait=10"},
    {"Cm_Remove_Line", ""},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(1)", "%", "Mode>Low Power Vdd On (Stop)"},
    {"Send_pre_prog(3)", "5C10", "Mode>Normal Request"},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(2)", "%", "Mode>Low Power Vdd Off (Sleep)"},
    {"!CAN WU", "", "Mode>Normal Request"},
    {"Send_pre_prog(0)", "%", "Mode>Normal"},
    {"Send_pre_prog(4)", "1300 527E", "Mode>Init"},
    {"watchdog(12)", "5A00", "Mode>Normal"},
    {"Send_pre_prog(6)", "1300 523E", "Mode>Reset"},
    {"!I/O 0", "", "Mode>Normal Request"},
    {"watchdog(14)", "5A00", "Mode>Normal"},
    {"Send_pre_prog(5)", "1300 528D", "Mode>Flash"},
    {"TestMode.enter_test_mode", "<00 0D 7F 00 00 00 00 00>", "Test mode>11 22"},
    {"TestMode.can_lin(0)", "4210 4400", "Test mode>10 00"},
    {"TestMode.can_lin(1)", "4210 4401", "Test mode>10 01"},
    {"TestMode.can_lin(2)", "4210 4402", "Test mode>10 02"},
    {"TestMode.can_lin(3)", "4210 4403", "Test mode>10 03"},
    {"TestMode.can_lin(4)", "4210 4404", "Test mode>10 04"},
    {"TestMode.can_lin(5)", "4210 4405", "Test mode>10 05"},
    {"TestMode.can_lin(6)", "4210 4406", "Test mode>10 06"},
    {"TestMode.can_lin(7)", "4210 4407", "Test mode>10 07"},
    {"TestMode.can_lin(8)", "4210 4408", "Test mode>10 08"},
    {"TestMode.can_lin(9)", "4210 4409", "Test mode>10 09"},
    {"TestMode.can_lin(10)", "4210 440A", "Test mode>10 0A"},
    {"TestMode.can_lin(11)", "4210 440B", "Test mode>10 0B"},
    {"TestMode.can_lin(12)", "4210 440C", "Test mode>10 0C"},
    {"TestMode.term_send", "4230", "Test mode>30 0C"},
    {"TestMode.thres_send", "", "Test mode>30 0C"},
    {"TestMode.trim_send", "4221 4404", "Test mode>21 04"},
    {"TestMode.tests_send(0)", "4250", "Test mode>50 04"},
    {"TestMode.tests_send(1)", "4260", "Test mode>60 04"},
    {"TestMode.tests_send(2)", "4270", "Test mode>70 04"},
    {"TestMode.tests_send(3)", "4280 4400", "Test mode>80 00"},
    {"Cm_RAM_Rl_All", "0300 0500 0700 0900", "RAM_A=80;RAM_B=00;RAM_C=33;RAM_D=44", 0x5400},
};

using Names = std::set<std::string>;

/// A variant: what it disables, what it reads when it reads all, and the way between its modes.
struct Variant {
    int index;
    const char* device;
    Names disabled;
    std::map<std::string, const char*> differs; ///< in place of "%" beside a button or in a row
};

const Names muxButtons{"Cm_MUX_W", "Seq_MUX_W", "Cm_Mux_Rl", "Seq_Mux_Rl"};
const Names lin1Buttons{"Cm_Lin0_W",   "Seq_Lin0_W",  "Cm_Lin0_Rl", "CM_Lin0_Rh",
                        "Seq_Lin0_Rl", "Seq_Lin0_Rh", "Cm_RFl(5)",  "Seq_RFl(5)"};
const Names lin2Buttons{"Cm_Lin1_W",   "Seq_Lin1_W",  "Cm_Lin1_Rl", "Cm_Lin1_Rh",
                        "Seq_Lin1_Rl", "Seq_Lin1_Rh", "Cm_RFl(6)",  "Seq_RFl(6)"};

Names together(std::initializer_list<Names> sets) {
    Names all;
    for (const auto& set : sets)
        all.insert(set.begin(), set.end());
    return all;
}

const std::vector<Variant> variants{
    {2,
     "zt72518d",
     {},
     {{"Cm_ReadAll_Rl(0)", " 2700 2900"},
      {"Cm_ReadAll_Rh", " 2780 2980"},
      {"Cm_ReadAll_RFl", " E700 E900"},
      {"interrupts_Rh", "EA"},
      {"Mode_Rm_Rh(14)", "5V - ZT72518D - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 66C4 68C4 6200 DF80 5E4F"},
      {"Send_pre_prog(1)", "6000 6684 6884 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6684 6884 6200 5E01 5C60"}}},
    {3,
     "zt72518s",
     lin2Buttons,
     {{"Cm_ReadAll_Rl(0)", " 2700"},
      {"Cm_ReadAll_Rh", " 2780"},
      {"Cm_ReadAll_RFl", " E700"},
      {"interrupts_Rh", "CA"},
      {"Mode_Rm_Rh(14)", "5V - ZT72518S - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 66C4 6200 DF80 5E4F"},
      {"Send_pre_prog(1)", "6000 6684 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6684 6800 6200 5E01 5C60"}}},
    {4,
     "zt72511",
     together({lin1Buttons, lin2Buttons}),
     {{"interrupts_Rh", "AA"},
      {"Mode_Rm_Rh(14)", "5V - ZT72511 - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 6200 DF80 5E4F"},
      {"Send_pre_prog(1)", "6000 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6600 6800 6200 5E01 5C60"}}},
    {5,
     "zt72514",
     together({muxButtons, lin1Buttons, lin2Buttons}),
     {{"interrupts_Rh", "8A"},
      {"Mode_Rm_Rh(14)", "5V - ZT72514 - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 6200 DF80"},
      {"Send_pre_prog(1)", "6000 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6600 6800 6200 5E01 5C60"}}},
    {6, // reading all leaves LIN out here too
     "zt72514d",
     {},
     {{"interrupts_Rh", "8A"},
      {"Mode_Rm_Rh(14)", "5V - ZT72514 - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 66C4 68C4 6200 DF80"},
      {"Send_pre_prog(1)", "6000 6684 6884 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6684 6884 6200 5E01 5C60"}}},
    {7,
     "zt72514s",
     lin2Buttons,
     {{"interrupts_Rh", "8A"},
      {"Mode_Rm_Rh(14)", "5V - ZT72514 - v2.1"},
      {"Send_pre_prog(0)", "5A00 6000 68C4 6200 DF80"},
      {"Send_pre_prog(1)", "6000 6884 6200 5C80"},
      {"Send_pre_prog(2)", "6000 6600 6884 6200 5E01 5C60"}}},
};

/// The button of a step, without the row that is set before; empty for a switch.
std::string buttonOf(const Step& step) {
    const std::string text = step.button;
    return text[0] == '!' ? "" : text.substr(text.find(' ') + 1);
}

/// A chip behind the dongle, and the panel on its variant.
class Walk : public PanelBench {
public:
    explicit Walk(const Variant& variant) : PanelBench(variant.device), variant_(variant) {
        choose(fmt::format("opt_vb({})", variant.index));
        for (const auto& [list, item] : {std::pair{0, 0}, {1, 6}, {2, 1}})
            on<forms::ComboBox>(fmt::format("wd_config({})", list)).select(item);
    }

    void take(const Step& step) {
        SCOPED_TRACE(step.button);
        if (step.button[0] == '!') {
            turn(step.button + 1);
            clock.idle(20 * millisecond);
        } else if (!press(step)) {
            return;
        }
        for (const std::string& item : itemsOf(step.shows))
            EXPECT_EQ(shown(item), forVariant(item, nameIn(item)));
    }

    Names refused;

private:
    bool press(const Step& step) {
        const std::string button = buttonOf(step);
        auto& control = get<forms::Button>(
            button.find('.') == std::string::npos ? fmt::format("ZT72518.{}", button) : button);
        if (!control.enabled()) {
            refused.insert(button);
            EXPECT_EQ(effects([&] { EXPECT_THROW(control.click(), forms::Unreachable); }), "");
            return false;
        }
        if (const std::string before = step.button; before != button)
            pokeTo(nameIn(before), std::stoi(before.substr(before.find('=') + 1), nullptr, 16));
        for (const std::string& item : itemsOf(step.shows))
            if (kindOf(item) == '=' || kindOf(item) == '~')
                row(nameIn(item)).show(0);
        session().WordToSend.assign(16, 1); // as the page for single words leaves it
        EXPECT_EQ(effects([&] { control.click(); }), forVariant(step.effects, button));
        EXPECT_EQ(status(), fmt::format("{:04X}", step.status));
        return true;
    }

    static std::vector<std::string> itemsOf(const std::string& list) {
        std::vector<std::string> items;
        std::istringstream rest(list);
        for (std::string item; std::getline(rest, item, ';');)
            items.push_back(item);
        return items;
    }
    static std::size_t endOfName(const std::string& item) { return item.find_first_of("=~:!>"); }
    static std::string nameIn(const std::string& item) { return item.substr(0, endOfName(item)); }
    static char kindOf(const std::string& item) { return item.at(endOfName(item)); }

    [[nodiscard]] std::string forVariant(std::string text, const std::string& key) const {
        const auto own = variant_.differs.find(key);
        if (const std::size_t mark = text.find('%'); mark != std::string::npos)
            text.replace(mark, 1, own == variant_.differs.end() ? "" : own->second);
        return text;
    }

    /// An item as it is really seen.
    std::string shown(const std::string& item) {
        const std::string name = nameIn(item);
        switch (kindOf(item)) {
        case ':':
            return fmt::format("{}:{}", name, caption(name));
        case '!':
            return fmt::format("{}{}", name, on<forms::Label>(name).visible() ? "!" : " is hidden");
        case '>':
            return fmt::format("{}>{}", name, reading(name));
        default:
            return name + rowText(row(name));
        }
    }

    const LabelRow& row(const std::string& name) {
        const std::size_t index = name.find('(');
        const std::string labels = name.substr(0, index);
        return panel().pageControls.row(
            {labels, index == std::string::npos ? 0 : std::stoi(name.substr(index + 1))});
    }
    static std::string rowText(const LabelRow& row) {
        std::set<forms::Color> colours;
        unsigned byte = 0;
        for (int bit = 0; bit < row.size(); ++bit)
            if (const forms::Color colour = row.label(bit).backColor();
                colour != forms::windowColor) {
                colours.insert(colour);
                byte |= 1U << bit;
            }
        const bool isStriped = colours == std::set<forms::Color>{0xFFC0C0};
        const bool isPlain = colours.empty() || colours == std::set<forms::Color>{0xFFFFC0};
        return fmt::format("{}{:02X}", isStriped ? "~" : isPlain ? "=" : " in odd colours ", byte);
    }

    const Variant& variant_;
};

TEST(RegisterPages, DoWhatTheirButtonsSayOnEveryVariant) {
    for (const Variant& variant : variants) {
        SCOPED_TRACE(variant.device);
        Walk bench(variant);
        for (const Step& step : walk)
            bench.take(step);
        EXPECT_EQ(bench.refused, variant.disabled);
        EXPECT_EQ(bench.boxes.takeTexts(),
                  (std::vector<std::string>{"Please select a command to send",
                                            "To leave test mode, ZT72518 must be powered down",
                                            "To leave test mode, ZT72518 must be powered down"}));
    }
}

TEST(RegisterPages, HaveNoButtonThatTheWalkLeavesOut) {
    PanelBench bench;
    Names known{"Cm_CLEAR_lists", "Cm_SAVE_Seq",  "Cm_LOAD_Seq", // a sequence's tests press them
                "Cm_Run_Seq",     "Cm_Stop_Loop", "Cm_PassCondition1", "Cm_PassCondition2"};
    for (const Step& step : walk)
        known.insert(buttonOf(step));
    for (forms::Form* form : {static_cast<forms::Form*>(&bench.panel()),
                              &bench.get<forms::Button>("TestMode.term_send").form()})
        for (const forms::Control* control : form->controls())
            if (control->kind() == forms::Control::Kind::Button) {
                EXPECT_TRUE(known.contains(form == &bench.panel() ? control->localName()
                                                                  : control->fullName()))
                    << control->fullName();
            }
    EXPECT_EQ(bench.on<forms::Button>("Cm_Interrupts_Rh").tooltip(), "0x2580");
    EXPECT_EQ(bench.on<forms::Button>("Cm_RFh(1)").tooltip(), "0xDF80");
    EXPECT_EQ(bench.on<forms::Button>("Cm_Spe_Mode_Rl_b").tooltip(), "0x1300");
}

TEST(RegisterPages, AddTheParityBitThatWasComputedLast) {
    PanelBench bench;
    const auto writes = [&](int byte) {
        bench.panel().pageControls.row("Mux_W").show(static_cast<std::uint8_t>(byte));
        return bench.effectsOf("Cm_MUX_W");
    };
    EXPECT_EQ(writes(0x00), "4000");
    bench.tick("Ch_Init_Misc(6)");
    EXPECT_EQ(writes(0x00), "4100");
    EXPECT_EQ(writes(0x07), "4007");
    EXPECT_EQ(bench.effectsOf("Cm_Spe_Mode_W(0)"), "5200") << "never on this one";
    bench.tick("Ch_Init_Misc(6)");
    EXPECT_EQ(writes(0x07), "4107") << "goes on being added";
}

TEST(RegisterPages, StoreWhatTheHandSends) {
    PanelBench bench;
    bench.panel().part<CommandStore>().StoreCommands = true;
    bench.panel().pageControls.row("RAM").show(0x0C);
    for (const Step& step :
         {Step{"Cm_Write_RAM(2)", "460C *Write RAM=C"}, Step{"Cm_Read_RAM(2)", "0700"},
          Step{"Cm_CAN_Rh", "2180 *CAN Read High="},
          Step{"Cm_Spe_Mode_W(0)", "5200 *Special Mode=0"},
          Step{"Cm_RFl(4)", "E500 *Interrupts Read Flag Low="},
          Step{"Cm_RFh(4)", "E580 *Interrupts Read Flag High=80"},
          Step{"Cm_Mode_RM_W(1)", "5C10 *Mode RM Write=10"}, Step{"Cm_ReadAll_Rl(1)", "BF00"}})
        EXPECT_EQ(bench.effectsOf(step.button), step.effects);
}

} // namespace
} // namespace bitlux::test
