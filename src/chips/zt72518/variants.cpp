#include "chips/zt72518/variants.h"

namespace bitlux::oldchips::zt72518 {

namespace {

constexpr VariantSet withVaux = v518D | v518S | v511; // and with four I/Os
constexpr VariantSet allBut514 = withVaux | v514D | v514S;
constexpr VariantSet withLin1 = v518D | v518S | v514D | v514S;
constexpr VariantSet withLin2 = v518D | v514D;

} // namespace

constexpr std::array<VariantControls, 39> variantControls{{{"R_MUX", allBut514},
                                                           {"Mux_W", allBut514},
                                                           {"Ch_Mux", allBut514},
                                                           {"Cm_MUX_W", allBut514},
                                                           {"Seq_MUX_W", allBut514},
                                                           {"Cm_Mux_Rl", allBut514},
                                                           {"Seq_Mux_Rl", allBut514},
                                                           {"Mux_Rl", allBut514},
                                                           {"init_vreg_frame", withVaux, 2, 2},
                                                           {"R_Init_Vreg", withVaux, 0, 1},
                                                           {"frame_reg", withVaux, 0, 0},
                                                           {"R_Reg", withVaux, 4, 7},
                                                           {"Ch_Reg", allBut514, 1, 2},
                                                           {"R_Lin0", withLin1},
                                                           {"Lin0_W", withLin1},
                                                           {"Cm_Lin0_W", withLin1},
                                                           {"Seq_Lin0_W", withLin1},
                                                           {"Cm_Lin0_Rl", withLin1},
                                                           {"Seq_Lin0_Rl", withLin1},
                                                           {"Lin0_Rl", withLin1},
                                                           {"CM_Lin0_Rh", withLin1},
                                                           {"Seq_Lin0_Rh", withLin1},
                                                           {"Lin0_Rh", withLin1},
                                                           {"Cm_RFl", withLin1, 5, 5},
                                                           {"Seq_RFl", withLin1, 5, 5},
                                                           {"R_Lin1", withLin2},
                                                           {"Lin1_W", withLin2},
                                                           {"Cm_Lin1_W", withLin2},
                                                           {"Seq_Lin1_W", withLin2},
                                                           {"Cm_Lin1_Rl", withLin2},
                                                           {"Seq_Lin1_Rl", withLin2},
                                                           {"Lin1_Rl", withLin2},
                                                           {"Cm_Lin1_Rh", withLin2},
                                                           {"Seq_Lin1_Rh", withLin2},
                                                           {"Lin1_Rh", withLin2},
                                                           {"Cm_RFl", withLin2, 6, 6},
                                                           {"Seq_RFl", withLin2, 6, 6},
                                                           {"i_o_frame", withVaux, 1, 2},
                                                           {"i_o_frame", withVaux | v514S, 3, 3}}};

constexpr std::array<VariantBox, 5> variantBoxes{
    {{6, v518D | v518S | v514D},
     {1, v518D | v518S | v514D},
     // LIN 2, and not LIN 1, goes with the ZT72514S here
     {7, v518D | v514D | v514S},
     {2, v518D | v514D | v514S},
     {9, withVaux}}};

constexpr std::array<VariantCaption, 20> variantCaptions{
    {{{"INIT_Vreg_W", 2}, "Vaux5", withVaux},
     {{"Init_Reg_Rl", 2}, "Vaux5", withVaux},
     {{"Regulator_W", 1}, "PNP on Auto", allBut514},
     {{"Regulateur_Rl", 1}, "PNP on Auto", allBut514},
     {{"Regulator_W", 2}, "PNP ON", allBut514},
     {{"Regulateur_Rl", 2}, "PNP ON", allBut514},
     {{"Regulator_W", 6}, "Vaux on/off [0]", withVaux},
     {{"Regulateur_Rl", 6}, "Vaux on/off [0]", withVaux},
     {{"Regulator_W", 7}, "Vaux on/off [1]", withVaux},
     {{"Regulateur_Rl", 7}, "Vaux on/off [1]", withVaux},
     {{"IO_Rh", 2}, "I/O 1 state", withVaux},
     {{"IO_Rh", 4}, "I/O 2 state", withVaux},
     {{"IO_Rh", 6}, "I/O 3 state", withVaux},
     {{"IO_Rh", 6}, "I/O 3 State", v514S},
     {{"Regulator_RFl", 7}, "Vaux low (in NOR)", withVaux},
     {{"Regulator_RFl", 6}, "Vaux OC", withVaux},
     {{"Regulator_RFl", 2}, "Vsense low", allBut514},
     {{"Interrupts_RFl", 1}, "Vaux OV", withVaux},
     {{"IO_RFh", 6}, "I/O_0_2 INT_WU", withVaux | v514S},
     {{"IO_RFh", 7}, "I/O_1_3 INT_WU", withVaux | v514S}}};

} // namespace bitlux::oldchips::zt72518
