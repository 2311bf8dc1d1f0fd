// Every button of the panel and of the forms beside it, against the model of the chip.

#include "bench.h"

namespace bitlux::test::zt72516 {
namespace {

constexpr PanelStep walk[] = {
    // Writes, and the rows cleared before they are read back
    {"RAM_A=123ABC WriteRAM_A", "41123ABC",
     "SPIWordSent:SPI Word Sent:4112-3ABC;SPIWordRcvd:SPI Word Rcvd:0000-0000"},
    {"RAM_B=FEDCBA WriteRAM_B", "42FEDCBA"},
    {"ReadRAM_A", "01000000", "RAM_A_Read=123ABC;RAM_A=123ABC;SPI_Word=123ABC"},
    {"ReadRAM_B", "02000000", "RAM_B_Read=FEDCBA;SPIWordRcvd:SPI Word Rcvd:00FE-DCBA"},
    {"SetBitsRAM_A", "", "RAM_A=123ABC"},
    {"SetBitsRAM_B", "", "RAM_B=FEDCBA"},
    {"Btn_Read_Init_reg", "03000000", "Init_Reg=000010"},
    {"Init_Reg=580090 Btn_Write_Init_reg Init_Reg=000000 Btn_Read_Init_reg", "43580090 03000000",
     "Init_Reg=580090"},
    {"Btn_Seq_Write_Init_reg", "+Init Reg Write=43580090"},
    {"Btn_Seq_Read_Init_reg", "+Init Reg Read=03000000"},
    {"Btn_Read_TIMER_Reg", "05000000", "TIMER_Reg=F0001E"},
    {"TIMER_Reg=5A5A5A Btn_Write_TIMER_Reg TIMER_Reg=000000 Btn_Read_TIMER_Reg",
     "455A5A5A 05000000", "TIMER_Reg=5A5A5A"},
    {"Btn_Seq_Write_TIMER_Reg", "+TIMER Reg Write=455A5A5A"},
    {"Btn_Seq_Read_TIMER_Reg", "+TIMER Reg Read=05000000"},
    {"AMUX_Reg=1FF Btn_Write_AMUX_Reg", "460001F8", "AMUX_Reg=1FF"},
    {"Btn_Seq_Write_AMUX_Reg", "+AMUX Reg Write=460001FF"},
    {"Btn_Read_AMUX_Reg", "06000000", "AMUX_Reg=1F8"},
    {"Interrupt_Reg=FEFF Btn_Write_Int_Reg Btn_Seq_Write_Int_Reg Interrupt_Reg=0000 "
     "Btn_Read_Int_Reg",
     "4800FEFF 08000000 +Interrupt Reg Write=4800FEFF", "Interrupt_Reg=FEFF"},
    {"MODE_Reg=25 Btn_Write_MODE_Reg Btn_Seq_Write_MODE_Reg", "49000025 +MODE Reg Write=49000025"},
    {"Btn_Read_MODE_Reg", "09000000", "MODE_Reg=0C"},
    {"Regulator_Reg=DE Btn_Write_Regulator_Reg Btn_Seq_Write_Regulator_Reg Regulator_Reg=00 "
     "Btn_Read_Regulator_Reg",
     "4A0000DE 0A000000 +Regulator Reg Write=4A0000DE", "Regulator_Reg=DE"},
    {"CAN01_Reg=1A05 Btn_Write_CAN01_reg Btn_Seq_Write_CAN01_reg CAN01_Reg=0000 Btn_Read_CAN01_reg",
     "4B001A05 0B000000 +CAN01 Reg Write=4B001A05", "CAN01_Reg=1A05"},
    {"LIN01_Reg=2A5 Btn_Write_LIN01_Reg Btn_Seq_Write_LIN01_Reg LIN01_Reg=000 Btn_Read_LIN01_Reg",
     "4C0002A5 0C000000 +LIN01 Reg Write=4C0002A5", "LIN01_Reg=2A5"},
    {"LIN23_Reg=15A Btn_Write_LIN23_Reg Btn_Seq_Write_LIN23_Reg LIN23_Reg=000 Btn_Read_LIN23_Reg",
     "4D00015A 0D000000 +LIN23 Reg Write=4D00015A", "LIN23_Reg=15A"},
    {"Btn_Read_SGWU_Reg", "0E000000", "SGWU_Reg=FFFF"},
    {"SGWU_Reg=8001 Btn_Write_SGWU_Reg Btn_Seq_Write_SGWU_Reg SGWU_Reg=0000 Btn_Read_SGWU_Reg",
     "4E008001 0E000000 +SGWU Reg Write=4E008001", "SGWU_Reg=8001"},
    {"SGFS_Reg=4002 Btn_Write_SGFS_Reg Btn_Seq_Write_SGFS_Reg SGFS_Reg=0000 Btn_Read_SGFS_Reg",
     "4F004002 0F000000 +SGFS Reg Write=4F004002", "SGFS_Reg=4002"},
    {"SGWUD_Reg=2004 Btn_Write_SGWUD_Reg Btn_Seq_Write_SGWUD_Reg SGWUD_Reg=0000 Btn_Read_SGWUD_Reg",
     "50002004 10000000 +SGWUD Reg Write=50002004", "SGWUD_Reg=2004"},
    {"Btn_Read_SGM0_Reg", "11000000", "SGM0_Reg=B6DB6D"},
    {"SGM0_Reg=123456 Btn_Write_SGM0_Reg Btn_Seq_Write_SGM0_Reg SGM0_Reg=000000 Btn_Read_SGM0_Reg",
     "51123456 11000000 +SGM0 Reg Write=51123456", "SGM0_Reg=123456"},
    {"SGM1_Reg=654321 Btn_Write_SGM1_Reg Btn_Seq_Write_SGM1_Reg SGM1_Reg=000000 Btn_Read_SGM1_Reg",
     "52654321 12000000 +SGM1 Reg Write=52654321", "SGM1_Reg=654321"},
    {"SGMT_Reg=0F0F Btn_Write_SGMT_Reg Btn_Seq_Write_SGMT_Reg SGMT_Reg=0000 Btn_Read_SGMT_Reg",
     "53000F0F 13000000 +SGMT Reg Write=53000F0F", "SGMT_Reg=0F0F"},
    {"SGT_Reg=F0F0 Btn_Write_SGT_Reg Btn_Seq_Write_SGT_Reg SGT_Reg=0000 Btn_Read_SGT_Reg",
     "5400F0F0 14000000 +SGT Reg Write=5400F0F0", "SGT_Reg=F0F0"},
    // Flags, and the summary of them
    {"!Interrupt/Reset_high"},
    {"!MODE/WDI_mode"},
    {"!Regulator/VPRE_Over_current"},
    {"!CAN01/TxD0_Dom"},
    {"!CAN01/CAN1_UF"},
    {"!LIN01/TXD1_Dom"},
    {"!LIN23/LIN3_Wakeup"},
    {"!Status/SG-G"},
    {"Btn_Read_Int_Flags", "88000080", "Interrupt_Flag=0040;ZT72516ReadFlags.Interrupt_Flag=0"},
    {"Btn_Read_MODE_Flags", "89000000", "MODE_Flags=00C"},
    {"Btn_Read_Regulator_Flags", "8A000000", "Regulator_Flag=040000"},
    {"Btn_Read_CAN0_Flags", "8B000000", "CAN0_Flags=0004;CAN1_Flags=0000"},
    {"Btn_Read_CAN1_Flags", "8B800000", "CAN1_Flags=8000;CAN0_Flags=0004"},
    {"Btn_Read_LIN01_Flags", "8C000000", "LIN01_Flags=0200"},
    {"Btn_Read_LIN23_Flags", "8D000000",
     "LIN23_Flags=4000;SPIWordRcvd:SPI Word Rcvd:EC00-4000;SPI_Word=EC004000"},
    {"Regulator_Reg=00 Btn_Write_Regulator_Reg", "4A000000", "SPI_Word=ECF00000"},
    {"Btn_Read_Flags"},
    {"ZT72516ReadFlags.Btn_Read_All_Flags",
     "8A000000 89000000 88000080 8B000000 8B800000 8C000000 8D000000",
     "ZT72516ReadFlags.Regulator_Flag=040000;ZT72516ReadFlags.MODE_Flags=00C;"
     "ZT72516ReadFlags.Interrupt_Flag=0040;ZT72516ReadFlags.CAN0_Flags=0004;"
     "ZT72516ReadFlags.CAN1_Flags=8000;ZT72516ReadFlags.LIN01_Flags=0200;"
     "ZT72516ReadFlags.LIN23_Flags=4000;SPIWordSent:SPI Word Sent:8D00-0000"},
    {"Btn_INT_Request", "48000100", "SPIWordSent:SPI Word Sent:4800-0100"},
    {"Btn_Read_Int_Flags", "88000080", "Interrupt_Flag=00C0"},
    {"Btn_Seq_INT_Request", "+INT Request=72000010"},
    // Modes; the chip's codes are BC, 1F, 51, F8, BA, F0 and E8, and the complement answers each
    {"Btn_Read_SPE_MODE", "04000000", "SPE_MODE_Reg=1BC"},
    {"SPE_MODE_Reg=2BC Btn_Write_SPE_MODE", "440002BC", "Mode>Init"},
    {"Btn_Seq_Write_SPE_MODE", "+SPE_MODE Reg Write=440002BC"},
    {"Btn_Seq_Read_SPE_MODE", "+SPE_MODE Reg Read=04000000"},
    {"Btn_GotoFlashMode", "04000000 440002E0", "SPE_MODE_Reg=2E0;Mode>Flash"},
    {"Btn_SeqGotoFlashMode", "+Goto Flash Mode="},
    {"Btn_ResetSgInputs", "04000000 440003AE", "SPIWordSent:SPI Word Sent:4400-03AE"},
    {"Btn_SeqResetSgInputs", "+Reset SG Inputs="},
    {"Btn_Read_SGT_Reg", "14000000", "SGT_Reg=FFFF"},
    {"Btn_GotoInitModeWithWD", "47000000 04000000 44000107", "Mode>Init"},
    {"Btn_SeqGotoInitModeWithWD", "+Goto Init with WD Refresh ="},
    {"Btn_GotoResetMode", "04000000 44000045", "Mode>Reset"},
    {"Btn_SeqGotoResetMode", "+Goto Reset Mode="},
    {"@25", "", "Mode>Init"},
    {"Btn_Goto_Init_and_Send_Init", "04000000 4400010F 43580090", "Mode>Init"},
    {"Btn_GotoInitMode", "04000000 44000117"},
    {"Btn_SeqGotoInitMode", "+Goto Init Mode="},
    // The watchdog
    {"TIMER_Reg=F0001E Btn_Write_TIMER_Reg", "45F0001E"},
    {"Btn_Out_of_WD_Inhibit", "5E000000", "SPIWordSent:SPI Word Sent:5E00-0000;Watchdog>off"},
    {"Btn_Seq_Out_of_WD_Inhibit", "+Out of Watchdog Inhibit="},
    {"Btn_Write_WD_Refresh", "47000000", "Mode>Normal;SPIWordSent:SPI Word Sent:4700-0000"},
    {"Btn_Seq_Write_WD_Refresh", "+Simple Watchdog Refresh=47000000"},
    {"@200", "", "Mode>Normal"},
    {"Btn_Write_WD_Refresh2", "47000000", "Mode>Normal"},
    {"@200", "", "Mode>Normal"},
    {"Btn_Start_Watchdog", "<00 16 00 08 05 00 00 00>",
     "Watchdog_Status:Watch Dog is ON;Mode>Normal"},
    {"@2000", "", "Mode>Normal"},
    {"Btn_Stop_Watchdog", "<00 16 00 00 00 00 00 00>", "Watchdog_Status:Watch Dog is OFF"},
    {"MODE_Reg=80 Btn_Write_MODE_Reg", "49000080", "Mode>Low power VDD on"},
    {"Btn_Wakeup_Via_SPI_Write", "49000010", "Mode>Normal"},
    {"Btn_Seq_Wakeup_Via_SPI_Write", "+Wakeup Via SPI Write="},
    {"@300", "", "Mode>Init"},
    {"Btn_Read_MODE_Flags", "89000000", "MODE_Flags=10C"},
    {"Btn_Ack_Safe_Cond", "5F000000", "SPIWordSent:SPI Word Sent:5F00-0000"},
    {"Btn_Seq_Ack_Safe_Cond", "+Ack Safe Condition=5F000000"},
    {"Btn_Read_MODE_Flags", "89000000", "MODE_Flags=00C"},
    {"Btn_Read_Int_Flags", "88000080", "Interrupt_Flag=21E0"},
    // The test side
    {"Btn_Test_Mode"},
    {"ZT72516TestMode.TM0=81 ZT72516TestMode.Btn_Write_TM0", "71000081"},
    {"ZT72516TestMode.Btn_Read_TM0", "31000000", "ZT72516TestMode.TM0=00"},
    {"ZT72516TestMode.Btn_Read_Passcode", "30000000", "ZT72516TestMode.Passcode=02"},
    {"ZT72516TestMode.Btn_Send_Passcode", "70A5C396", "ZT72516TestMode.Passcode=02"},
    {"ZT72516TestMode.Btn_Read_Passcode", "30000000", "ZT72516TestMode.Passcode=03"},
    {"ZT72516TestMode.TM0=81 ZT72516TestMode.Btn_Write_TM0 ZT72516TestMode.TM0=00 "
     "ZT72516TestMode.Btn_Read_TM0",
     "71000081 31000000", "ZT72516TestMode.TM0=81"},
    {"ZT72516TestMode.TM1=42 ZT72516TestMode.Btn_Write_TM1", "72000042"},
    {"ZT72516TestMode.Btn_7MHz_Always_On", "72000010",
     "ZT72516TestMode.TM1=42;SPIWordSent:SPI Word Sent:7200-0010"},
    {"ZT72516TestMode.Btn_Read_TM1", "32000000", "ZT72516TestMode.TM1=10"},
    {"ZT72516TestMode.TM2=24 ZT72516TestMode.Btn_Write_TM2 ZT72516TestMode.TM2=00 "
     "ZT72516TestMode.Btn_Read_TM2",
     "73000024 33000000", "ZT72516TestMode.TM2=24"},
    {"ZT72516TestMode.TM3=18 ZT72516TestMode.Btn_Write_TM3 ZT72516TestMode.TM3=00 "
     "ZT72516TestMode.Btn_Read_TM3",
     "74000018 34000000", "ZT72516TestMode.TM3=18"},
    {"ZT72516TestMode.TM_Fuse_State=C3 ZT72516TestMode.Btn_Write_Fuse_State "
     "ZT72516TestMode.TM_Fuse_State=00 ZT72516TestMode.Btn_Read_Fuse_State",
     "780000C3 38000000", "ZT72516TestMode.TM_Fuse_State=C3"},
    {"ZT72516TestMode.TM_Fuse_Address=1A5 ZT72516TestMode.Btn_Write_Fuse_Address "
     "ZT72516TestMode.TM_Fuse_Address=000 ZT72516TestMode.Btn_Read_Fuse_Address",
     "790001A5 39000000", "ZT72516TestMode.TM_Fuse_Address=1A5"},
    {"ZT72516TestMode.TM_Fuse_Data=3C ZT72516TestMode.Btn_Write_Fuse_Data "
     "ZT72516TestMode.TM_Fuse_Data=00 ZT72516TestMode.Btn_Read_Fuse_Data",
     "7A00003C 3A000000", "ZT72516TestMode.TM_Fuse_Data=3C"},
    {"ZT72516TestMode.TM_Fuse_Mirror_Address=99 ZT72516TestMode.Btn_Write_Fuse_Mirror "
     "ZT72516TestMode.TM_Fuse_Mirror_Address=00 ZT72516TestMode.Btn_Read_Fuse_Mirror",
     "7B000099 3B000000", "ZT72516TestMode.TM_Fuse_Mirror_Address=99"},
    {"ZT72516TestMode.TM_Fuse_Cell_Param=66 ZT72516TestMode.Btn_Write_Fuse_Cell_Param "
     "ZT72516TestMode.TM_Fuse_Cell_Param=00 ZT72516TestMode.Btn_Read_Fuse_Cell_Param",
     "7C000066 3C000000", "ZT72516TestMode.TM_Fuse_Cell_Param=66"},
};

TEST(Zt72516Pages, DoWhatTheirButtonsSay) {
    Bench bench("zt72516");
    bench.panel().pageControls.find("Btn_Test_Mode")->show();
    bench.effectsOf("Check_UseSpiDongleForWD Watchdog_Mode=0 Watchdog_Timing=5");
    bench.walk(walk);
}

TEST(Zt72516Pages, HaveNoButtonThatTheWalkLeavesOut) {
    Bench bench;
    bench.expectAllButtonsIn(walk, {"ZT72516", "ZT72516ReadFlags", "ZT72516TestMode"},
                             "Cm_CLEAR_lists Cm_SAVE_Seq Cm_LOAD_Seq Cm_Run_Seq Cm_Stop_Loop "
                             "Cm_Wait Cm_Remove_Line cm_MoveUp cm_MoveDown Cm_PassCondition1 "
                             "Cm_PassCondition2"); // tests of the sequence press them
    std::string pages;
    for (const std::string& page : bench.panel().chip().registerPages())
        pages += page + " ";
    EXPECT_EQ(pages, "RAM_A RAM_B INIT SPE_MODE TIMER AMUX W/D Refresh Interrupt MODE Regulator "
                     "CAN01 LIN01 LIN23 SGWU SGFS SGWUD SGM0 SGM1 SGMT SGT ");
    EXPECT_EQ(bench.panel().registerTabs.count(), 20);
    EXPECT_EQ(bench.on<forms::Button>("Btn_Seq_Write_SGT_Reg").caption(), "> Seq");
    EXPECT_EQ(bench.on<forms::Button>("Btn_Write_Init_reg").tooltip(), "0x43xxxxxx");
    EXPECT_EQ(bench.on<forms::Button>("Btn_Goto_Init_and_Send_Init").caption(),
              "Go To Init + Init");
}

} // namespace
} // namespace bitlux::test::zt72516
