#include "chips/zt72518/registers.h"
#include "panels/panel_bench.h"

#include <set>

namespace bitlux::test {
namespace {

struct Press {
    const char* button;
    const char* effects;
};

/// Every button of the pages of registers and flags, with all write rows at A5 before each press
/// and an answer that repeats the word.
constexpr Press presses[] = {
    {"Cm_MUX_W", "40A5"},
    {"Seq_MUX_W", "+MUX Write=A5"},
    {"Cm_Mux_Rl", "0100"},
    {"Seq_Mux_Rl", "+MUX Read Low="},
    {"Cm_Write_RAM(0)", "42A5"},
    {"Cm_Write_RAM(1)", "44A5"},
    {"Cm_Write_RAM(2)", "46A5"},
    {"Cm_Write_RAM(3)", "48A5"},
    {"Cm_Read_RAM(0)", "0300"},
    {"Cm_Read_RAM(1)", "0500"},
    {"Cm_Read_RAM(2)", "0700"},
    {"Cm_Read_RAM(3)", "0900"},
    {"Cm_RAM_Rl_All", "0300 0500 0700 0900"},
    {"Cm_OK_val_hexa", ""},
    {"Cm_Init_Vreg_W", "4AA5"},
    {"Seq_Init_Vreg_W", "+Init Vreg Write=A5"},
    {"Cm_Init_Reg_Rl", "0B00"},
    {"Seq_Init_Reg_Rl", "+Init Vreg Read Low="},
    {"Cm_Init_Wdog_W", "4CA5"},
    {"Seq_Init_Wdog_W", "+Init Wdog Write=A5"},
    {"Cm_Init_Wdog_Rl", "0D00"},
    {"Seq_Init_Wdog_Rl", "+Init Wdog Read Low="},
    {"Cm_Init_Lin_Io_W", "4EA5"},
    {"Seq_Init_Lin_Io", "+Init Lin IO Write=A5"},
    {"Cm_Init_Lin_Io_Rl", "0F00"},
    {"Seq_Init_Lin_Io_Rl", "+Init Lin IO Read Low="},
    {"Cm_Init_Misc_W", "50A5"},
    {"Seq_Init_Misc_W", "+Init Misc Write=A5"},
    {"Cm_Init_Misc_Rl", "1100"},
    {"Seq_Init_Misc_Rl", "+Init Misc Read Low="},
    {"Cm_Spe_Mode_W(0)", "52A5"},
    {"Cm_Spe_Mode_W(1)", "1300 52BF"},
    {"Cm_Spe_Mode_W(2)", "1300 520F"},
    {"Seq_Spe_Mode_W", "+Special Mode=0"},
    {"Cm_Spe_Mode_Rl", "1300"},
    {"Cm_Spe_Mode_Rl_b", "1300"},
    {"Seq_Spe_Mode_Rl", "+Spe Mode Read Low="},
    {"Cm_Timer0_W", "54A5"},
    {"Seq_Timer_W(0)", "+Timer 0 Write=A5"},
    {"Cm_Timer0_Rl", "1500"},
    {"Seq_Timer0_Rl", "+Timer 0 Read Low="},
    {"Cm_Timer1_W", "56A5"},
    {"Seq_Timer_W(1)", "+Timer 1 Write=A5"},
    {"Cm_Timer1_Rl", "1700"},
    {"Seq_Timer1_Rl", "+Timer 1 Read Low="},
    {"Cm_Timer2_W", "58A5"},
    {"Seq_Timer_W(2)", "+Timer 2 Write=A5"},
    {"Cm_Timer2_Rl", "1900"},
    {"Seq_Timer2_Rl", "+Timer 2 Read Low="},
    {"Cm_Wd_Refresh_W", "5AA5"},
    {"Seq_Wd_Refresh_W", "+Wd Refresh Write=A5"},
    {"Cm_Wd_Refresh_Rl", "1B00"},
    {"Seq_Wd_Refresh_Rl", "+Wd Refresh Read Low="},
    {"Cm_Mode_RM_W(0)", "5CA5"},
    {"Cm_Mode_RM_W(1)", "5C10"},
    {"Cm_Mode_RM_W(2)", "+Mode RM Write=10"},
    {"Seq_Mode_RM_W", "+Mode RM Write=A5"},
    {"Cm_Mode_Rm_Rl", "1D00"},
    {"Cm_Mode_Rm_Rh", "1D80"},
    {"Seq_Mode_Rm_Rl", "+Mode RM Read Low="},
    {"Seq_Mode_Rm_Rh", "+Mode RM Read High="},
    {"Cm_Regulator_W", "5EA5"},
    {"Seq_Regulator_W", "+Regulator Write=A5"},
    {"Cm_Regulateur_Rl", "1F00"},
    {"Seq_Regulateur_Rl", "+Regulator Read Low="},
    {"Cm_Can_W", "60A5"},
    {"Seq_Can_W", "+CAN Write=A5"},
    {"Cm_CAN_Rl", "2100"},
    {"Cm_CAN_Rh", "2180"},
    {"Seq_CAN_Rl", "+CAN Read Low="},
    {"Seq_Can_Rh", "+CAN Read High="},
    {"Cm_Io_W", "62A5"},
    {"Seq_Io_W", "+IO Write=A5"},
    {"Cm_Io_Rl", "2300"},
    {"Cm_I0_Rh", "2380"},
    {"Seq_IO_Rl", "+IO Read Low="},
    {"Seq_IO_Rh", "+IO Read High="},
    {"Cm_Interrupts_W", "64A5"},
    {"Seq_Interrupts_W", "+Interrupts Write=A5"},
    {"Cm_interrupts_Rl", "2500"},
    {"Cm_Interrupts_Rh", "2580"},
    {"Seq_Interrupts_Rl", "+Interrupts Read Low="},
    {"Seq_Interrupts_Rh", "+Interrupts Read High="},
    {"Cm_Lin0_W", "66A5"},
    {"Seq_Lin0_W", "+LIN 0 Write=A5"},
    {"Cm_Lin0_Rl", "2700"},
    {"CM_Lin0_Rh", "2780"},
    {"Seq_Lin0_Rl", "+LIN 0 Read Low="},
    {"Seq_Lin0_Rh", "+LIN 0 Read High="},
    {"Cm_Lin1_W", "68A5"},
    {"Seq_Lin1_W", "+LIN 1 Write=A5"},
    {"Cm_Lin1_Rl", "2900"},
    {"Cm_Lin1_Rh", "2980"},
    {"Seq_Lin1_Rl", "+LIN 1 Read Low="},
    {"Seq_Lin1_Rh", "+LIN 1 Read High="},
    {"Cm_RFl(0)", "DD00"},
    {"Cm_RFl(1)", "DF00"},
    {"Cm_RFl(2)", "E100"},
    {"Cm_RFl(3)", "E300"},
    {"Cm_RFl(4)", "E500"},
    {"Cm_RFl(5)", "E700"},
    {"Cm_RFl(6)", "E900"},
    {"Cm_RFh(0)", "DD80"},
    {"Cm_RFh(1)", "DF80"},
    {"Cm_RFh(2)", "E180"},
    {"Cm_RFh(3)", "E380"},
    {"Cm_RFh(4)", "E580"},
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
    {"Cm_ReadAll_Rl(1)", "BF00"},
    {"Cm_ReadAll_Rl(2)",
     "+MUX Read Low= +Init Vreg Read Low= +Init Wdog Read Low= +Init Lin IO Read Low= +Init Misc "
     "Read Low= +Spe Mode Read Low= +Timer 0 Read Low= +Timer 1 Read Low= +Timer 2 Read Low= +Wd "
     "Refresh Read Low= +Regulator Read Low= +CAN Read Low= +IO Read Low= +Interrupts Read Low= "
     "+LIN 0 Read Low= +LIN 1 Read Low="},
    {"Seq_All_Rh",
     "+Mode RM Read High= +CAN Read High= +IO Read High= +Interrupts Read High= +LIN 0 Read High= "
     "+LIN 1 Read High="},
    {"Seq_All_RFl",
     "+Mode RM Read Flag High=80 +Regulator Read Flag Low= +Regulator Read Flag High=80 +CAN Read "
     "Flag Low= +CAN Read Flag High=80 +IO Read Flag Low= +IO Read Flag High=80 +LIN 0 Read Flag "
     "Low= +LIN 1 Read Flag Low= +Interrupts Read Flag Low= +Interrupts Read Flag High=80"},
};

/// A variant: what it leaves out of the walk, and what it reads when it reads all.
struct Variant {
    int index;
    std::set<std::string> disabled;
    const char* lin;      ///< behind the other registers
    const char* linHigh;  ///< behind the other high views
    const char* linFlags; ///< amid the other flags
};

const std::set<std::string> muxButtons{"Cm_MUX_W", "Seq_MUX_W", "Cm_Mux_Rl", "Seq_Mux_Rl"};
const std::set<std::string> lin1Buttons{"Cm_Lin0_W",   "Seq_Lin0_W",  "Cm_Lin0_Rl", "CM_Lin0_Rh",
                                        "Seq_Lin0_Rl", "Seq_Lin0_Rh", "Cm_RFl(5)",  "Seq_RFl(5)"};
const std::set<std::string> lin2Buttons{"Cm_Lin1_W",   "Seq_Lin1_W",  "Cm_Lin1_Rl", "Cm_Lin1_Rh",
                                        "Seq_Lin1_Rl", "Seq_Lin1_Rh", "Cm_RFl(6)",  "Seq_RFl(6)"};

std::set<std::string> together(std::initializer_list<std::set<std::string>> sets) {
    std::set<std::string> all;
    for (const auto& set : sets)
        all.insert(set.begin(), set.end());
    return all;
}

const std::vector<Variant> variants{
    {2, {}, " 2700 2900", " 2780 2980", " E700 E900"},
    {3, lin2Buttons, " 2700", " 2780", " E700"},
    {4, together({lin1Buttons, lin2Buttons}), "", "", ""},
    {5, together({muxButtons, lin1Buttons, lin2Buttons}), "", "", ""},
    {6, {}, "", "", ""}, // reading all leaves LIN out here too
    {7, lin2Buttons, "", "", ""},
};

class Walk : public PanelBench {
public:
    std::set<std::string> pressAll() {
        std::set<std::string> refused;
        for (const Press& press : presses) {
            if (!on<forms::Button>(press.button).enabled()) {
                refused.insert(press.button);
                continue;
            }
            for (const chips::Register& row : chips::zt72518::registers)
                panel().pageControls.row(row.writeLabels).show(0xA5);
            session().WordToSend.assign(16, 1); // as the page for single words leaves it
            EXPECT_EQ(effectsOf(press.button), press.effects) << press.button;
        }
        return refused;
    }
};

TEST(RegisterPages, SendAndAppendWhatTheirButtonsSayOnEveryVariant) {
    Walk walk;
    walk.poke("RAM(0)"); // fills its text
    for (const Variant& variant : variants) {
        SCOPED_TRACE(variant.index);
        walk.on<forms::OptionButton>(fmt::format("opt_vb({})", variant.index)).setValue(true);
        EXPECT_EQ(walk.pressAll(), variant.disabled);
        EXPECT_EQ(walk.effectsOf("Cm_ReadAll_Rl(0)"),
                  fmt::format("0100 0B00 0D00 0F00 1100 1300 1500 1700 1900 1B00 1F00 2100 2300 "
                              "2500{}",
                              variant.lin));
        EXPECT_EQ(walk.effectsOf("Cm_ReadAll_Rh"),
                  fmt::format("1D80 2180 2380 2580{}", variant.linHigh));
        EXPECT_EQ(walk.effectsOf("Cm_ReadAll_RFl"),
                  fmt::format("DF00 E100 E300 E500{} DF80 E180 E380 E580", variant.linFlags));
    }
    EXPECT_TRUE(walk.boxes.shown().empty());
}

TEST(RegisterPages, HaveNoButtonThatTheWalkLeavesOut) {
    PanelBench bench;
    std::set<std::string> known{"Cm_ReadAll_Rl(0)", "Cm_ReadAll_Rh", "Cm_ReadAll_RFl"};
    for (const Press& press : presses)
        known.insert(press.button);
    for (const forms::Control* control : bench.panel().controls()) {
        const bool isOfPages =
            control->kind() == forms::Control::Kind::Button && control->name() != "Send_pre_prog" &&
            bench.panel().pageControls.find({control->name(), control->index().value_or(-1)}) !=
                nullptr;
        EXPECT_TRUE(!isOfPages || known.contains(control->localName())) << control->localName();
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
    bench.panel().variables().StoreCommands = true;
    bench.panel().pageControls.row("RAM").show(0x0C);
    for (const Press& press :
         {Press{"Cm_Write_RAM(2)", "460C *Write RAM=C"}, Press{"Cm_Read_RAM(2)", "0700"},
          Press{"Cm_CAN_Rh", "2180 *CAN Read High="},
          Press{"Cm_Spe_Mode_W(0)", "5200 *Special Mode=0"},
          Press{"Cm_RFl(4)", "E500 *Interrupts Read Flag Low="},
          Press{"Cm_RFh(4)", "E580 *Interrupts Read Flag High=80"},
          Press{"Cm_Mode_RM_W(1)", "5C10 *Mode RM Write=10"}, Press{"Cm_ReadAll_Rl(1)", "BF00"}})
        EXPECT_EQ(bench.effectsOf(press.button), press.effects);
}

} // namespace
} // namespace bitlux::test
