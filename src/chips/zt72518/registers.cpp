#include "chips/zt72518/registers.h"

namespace bitlux::oldchips::zt72518 {

namespace {

// Lit colours of the read rows; neighbouring rows stripe.
constexpr std::uint32_t plain = 0xFFFFC0;
constexpr std::uint32_t striped = 0xFFC0C0;

template <std::size_t N>
using Texts = std::array<std::string_view, N>;

// MUX

constexpr Texts<8> muxCodes{"Disable", "i copy_Vdd", "Vref 2.5V", "V_temp",
                            "V_io0",   "V_io1",      "Vsup1 pin", "Vsense pin"};
constexpr std::array<OptionField, 1> muxOptions{
    {{.title = "MUX output", .options = "R_MUX", .lowBit = 5, .width = 3, .captions = muxCodes}}};
constexpr std::array<CheckBit, 2> muxChecks{
    {{{"Ch_Mux", 0}, 3, "I/O attenuation"}, {{"Ch_Mux", 1}, 4, "Enable int 2k"}}};

// Init Vreg

constexpr Texts<2> vauxVoltages{"Vaux = 3V", "Vaux = 5V"};
constexpr Texts<4> resetDurations{"Reset duration equal to 1ms after VDD low recover condition. ",
                                  "Reset duration equal to 5 ms after VDD crosses up the threshold",
                                  "Reset duration equal to 10ms after Vdd crosses up the threshold",
                                  "Reset duration equal to 20ms after VDD crosses up the theshold"};
constexpr Texts<4> resetThresholds{"Forces the RESET when VDD follow down 0.9*VDD (Typ 4.66V)",
                                   "Generate INT at 0.9*VDD and RST at 0.7*VDD(typ 3.33V)",
                                   "No Int. RST at 0.7*VDD (typ 3.33V)", "-"};
constexpr Texts<4> cyclicOnTimes{"200us", "400us", "800us", "1600us"};
constexpr std::array<OptionField, 4> initVregOptions{{{.title = "Vaux",
                                                       .options = "R_Init_Vreg",
                                                       .firstOption = 0,
                                                       .lowBit = 2,
                                                       .width = 1,
                                                       .captions = vauxVoltages,
                                                       .frame = {"init_vreg_frame", 2}},
                                                      {.title = "VDD low reset duration",
                                                       .options = "R_Init_Vreg",
                                                       .firstOption = 2,
                                                       .lowBit = 3,
                                                       .width = 2,
                                                       .captions = resetDurations,
                                                       .frame = {"init_vreg_frame", 1}},
                                                      {.title = "VDD low RST",
                                                       .options = "R_Init_Vreg",
                                                       .firstOption = 6,
                                                       .lowBit = 5,
                                                       .width = 2,
                                                       .captions = resetThresholds,
                                                       .frame = {"init_vreg_frame", 3}},
                                                      {.title = "IO0 on time, cyclic sense",
                                                       .options = "R_Init_Vreg",
                                                       .firstOption = 10,
                                                       .lowBit = 0,
                                                       .width = 2,
                                                       .captions = cyclicOnTimes,
                                                       .frame = {"init_vreg_frame", 0}}}};
constexpr std::array<CheckBit, 1> initVregChecks{
    {{{"Ch_INIT_VREG", 7},
      7,
      "I/Ox synchro : Configure the IO1, IO2 and IO3 (IOx) WU behavior in cyclic sense"}}};
constexpr Texts<8> initVregBits{"cyclic_on0",        "cyclic_on1",        "Vaux5",
                                "VDD low reset d_0", "VDD low reset d_1", "VDD low RST[0]",
                                "VDD low RST[1]",    "I/Ox synchro"};

// Init Wdog

constexpr Texts<4> refreshModes{
    "Simple 8/16bits", "Enhanced SPI1, just one SPI command using the RANDOM number",
    "Enhanced SPI2, Two SPI commands are needed to performe the WD refresh: the first one using "
    "RAND[7..4] and the second using RAND[3..2]",
    "Enhanced SPI4, four SPI commands are requested to perform the WD refresh. RAND [7..6]; "
    "RAND[5..4]; RAND[3..2]; RAND[1..0]"};
constexpr Texts<2> safeFailures{
    "the Safe pin is set to low at the FIRST WD refresh failure",
    "the Safe pin is set to low at the Second consecutive WD refresh failure"};
constexpr Texts<4> overCurrentWithWatchdog{
    "No Action", "No Action ", "MCU _OC = WAKE UP (100us)",
    "MCU shorter than I_MCU_STP timer = No Action / Longer than I_MCU_STP timer = WAKE UP"};
constexpr Texts<4> overCurrentWithoutWatchdog{
    "No action", "No action", "MCU_OC = WAKE UP(100us)",
    "MCU_OC shorter than I_MCU_STP timer= WD refresh/ longer than I_MCU_STP timer = WAKE UP"};
constexpr std::array<OptionField, 4> initWdogOptions{{{.title = "WD refresh mode",
                                                       .options = "R_Init_Wd",
                                                       .firstOption = 1,
                                                       .lowBit = 2,
                                                       .width = 2,
                                                       .captions = refreshModes,
                                                       .mirror = {"R_Wd_Refresh", 0}},
                                                      {.title = "Safe pin",
                                                       .options = "R_Init_Wd",
                                                       .firstOption = 5,
                                                       .lowBit = 4,
                                                       .width = 1,
                                                       .captions = safeFailures},
                                                      // the same two bits, told for either case
                                                      {.title = "MCU over current, watchdog on",
                                                       .options = "R_Init_Wd",
                                                       .firstOption = 7,
                                                       .lowBit = 5,
                                                       .width = 2,
                                                       .captions = overCurrentWithWatchdog,
                                                       .mirror = {"R_Init_Wd", 11}},
                                                      {.title = "MCU over current, watchdog off",
                                                       .options = "R_Init_Wd",
                                                       .firstOption = 11,
                                                       .lowBit = 5,
                                                       .width = 2,
                                                       .captions = overCurrentWithoutWatchdog,
                                                       .mirror = {"R_Init_Wd", 7}}}};
constexpr std::array<CheckBit, 3> initWdogChecks{
    {{{"Ch_Init_Wdog", 0}, 1, "Enable Window Wdog in Normal Mode (default)"},
     {{"Ch_Init_Wdog", 1},
      7,
      "WD2INT :Allow the remaining WD period+ two full period to read INT source"},
     {{"Ch_Init_Wdog", 2}, 0, "Crank"}}};
constexpr Texts<8> initWdogBits{"Crank",   "WD_NOR WINDOW", "WD_spi[0]", "WD_spi[1]",
                                "WD_safe", "OC_TIM",        "MCU_OC",    "WD2INT"};

// Init LIN I/O

constexpr Texts<4> lin1Terms{"Stuck at HZ (inconditionnal to 511 and 514)",
                             "Behave like LIN_TERM[1]", "Behaves like HighSide", "N/A"};
constexpr Texts<4> lin2Terms{"Stuck at HZ (inconditionnal to 511 and 514)",
                             "Behave like LIN_TERM[2]", "Behaves like HighSide", "N/A"};
constexpr std::array<OptionField, 2> initLinOptions{{{.title = "LIN 1",
                                                      .options = "R_Init_Lin",
                                                      .firstOption = 0,
                                                      .lowBit = 3,
                                                      .width = 2,
                                                      .captions = lin1Terms},
                                                     {.title = "LIN 2",
                                                      .options = "R_Init_Lin",
                                                      .firstOption = 4,
                                                      .lowBit = 5,
                                                      .width = 2,
                                                      .captions = lin2Terms}}};
constexpr std::array<CheckBit, 4> initLinChecks{
    {{{"Ch_Init_LIN_IO", 0}, 0, "I/O 0 output driver Inverted enable"},
     {{"Ch_Init_LIN_IO", 1}, 1, "Output Driver I/O 0 Enable"},
     {{"Ch_Init_LIN_IO", 2}, 2, "Output Driver I/O 1 Enable"},
     {{"Ch_Init_LIN_IO", 3}, 7, "I/01_OFF by Vaux/Vdd OV"}}};

// Init Misc

constexpr Texts<4> debugResistors{"Resistor 68k", "Resistor 33k", "Resistor 15k",
                                  "Resistor 3k or s/c gnd"};
constexpr Texts<2> interruptWidths{"INT pulse Width = 100us", "INT pulse width = 25 us"};
constexpr Texts<2> interruptShapes{"Select PULSE low",
                                   "Select LOW level up to SPI reading INT flag source"};
constexpr Texts<2> randomModes{"No random bits : RAND_M[3..0] need to be 0000",
                               "RAND[3..0] are needed to perform FSM mode transition"};
constexpr std::array<OptionField, 4> initMiscOptions{{{.title = "DBG pin resistor",
                                                       .options = "R_Init_Misc",
                                                       .firstOption = 0,
                                                       .lowBit = 0,
                                                       .width = 2,
                                                       .captions = debugResistors,
                                                       .gate = {"Ch_Init_Misc", 0}},
                                                      {.title = "INT width",
                                                       .options = "R_Init_Misc",
                                                       .firstOption = 4,
                                                       .lowBit = 4,
                                                       .width = 1,
                                                       .captions = interruptWidths},
                                                      {.title = "INT pulse",
                                                       .options = "R_Init_Misc",
                                                       .firstOption = 6,
                                                       .lowBit = 5,
                                                       .width = 1,
                                                       .captions = interruptShapes},
                                                      {.title = "Change of mode",
                                                       .options = "R_Init_Misc",
                                                       .firstOption = 8,
                                                       .lowBit = 7,
                                                       .width = 1,
                                                       .captions = randomModes}}};
constexpr std::array<CheckBit, 3> initMiscChecks{
    {{{"Ch_Init_Misc", 0}, 2, "Enable DBG pin resistor check"},
     {{"Ch_Init_Misc", 3},
      3,
      "Generate interuption in FLASH mode when WD window starts(period > 50%)"},
     {{"Ch_Init_Misc", 6}, 6, "Enable SPI Parity"}}};
constexpr Texts<8> initMiscBits{"Safe_RES [0]",  "Safe_RES [1]",    "Safe_RES [2]",
                                "INT Flash 50%", "INT WIDTH",       "INT PULSE LOW",
                                "SPI Parity",    "Ch_Mode with RDM"};

// Special Mode

constexpr Texts<4> specialModes{"Go to RESET", "Go to INIT", "Go to FLASH",
                                "When reading means NOR mode, when writing no change."};
constexpr std::array<OptionField, 1> specialModeOptions{{{.title = "Mode",
                                                          .options = "R_Spe_Mode",
                                                          .lowBit = 6,
                                                          .width = 2,
                                                          .captions = specialModes}}};

// Timers

constexpr Texts<32> watchdogTimes{
    "2.5 ms", "3 ms",   "3.5 ms", "4 ms",   "5 ms",   "6 ms",   "7 ms",   "8 ms",
    "10 ms",  "12 ms",  "14 ms",  "16 ms",  "20 ms",  "24 ms",  "28 ms",  "32 ms",
    "40 ms",  "48 ms",  "56 ms",  "64 ms",  "80 ms",  "96 ms",  "112 ms", "128 ms",
    "160 ms", "192 ms", "224 ms", "256 ms", "320 ms", "384 ms", "448 ms", "512 ms"};
constexpr Texts<8> mcuStopTimes{"3 ms", "4 ms", "6 ms", "8 ms", "12 ms", "16 ms", "24 ms", "32 ms"};
constexpr Texts<16> cyclicSenseTimes{"3 ms",   "4 ms",   "6 ms",   "8 ms",  "12 ms", "16 ms",
                                     "24 ms",  "32 ms",  "48 ms",  "64 ms", "96 ms", "128 ms",
                                     "192 ms", "256 ms", "384 ms", "512 ms"};
constexpr Texts<16> cyclicInterruptTimes{"6 ms",   "8 ms",   "12 ms",  "16 ms",  "24 ms",  "32 ms",
                                         "48 ms",  "64 ms",  "96 ms",  "128 ms", "192 ms", "256 ms",
                                         "384 ms", "512 ms", "768 ms", "1024 ms"};
constexpr Texts<16> watchdogStopTimes{
    "12 ms / 48 ms",    "16 ms / 256 ms",     "24 ms / 96 ms",     "32 ms / 512 ms",
    "48 ms / 192 ms",   "64 ms / 1024 ms",    "96 ms / 384 ms",    "128 ms / 2048 ms",
    "192 ms / 768 ms",  "256 ms / 4096 ms",   "384 ms / 1536 ms",  "512 ms / 8192 ms",
    "768 ms / 3072 ms", "1024 ms / 16384 ms", "1536 ms / 6144 ms", "2048 ms / 32768 ms "};
constexpr Texts<16> forcedWakeUpTimes{
    "48 ms",  "64 ms",   "96 ms",   "128 ms",  "192 ms",  "256 ms",  "384 ms",  "542 ms",
    "768 ms", "1024 ms", "1536 ms", "2096 ms", "3072 ms", "4096 ms", "6144 ms", "8192 ms"};
constexpr std::array watchdogIndexBits{3, 4, 0, 1, 2};
constexpr std::array mcuStopIndexBits{7, 5, 6};
constexpr std::array upperIndexBits{7, 4, 5, 6};
constexpr std::array lowerIndexBits{3, 0, 1, 2};
constexpr std::array<ComboField, 2> timer0Combos{
    {{"Combo_Wd", "Select WD Timer ", watchdogTimes, watchdogIndexBits},
     {"Combo_Imcu_Stp", "Select I MCU STP Timing", mcuStopTimes, mcuStopIndexBits}}};
constexpr std::array<ComboField, 2> timer1Combos{
    {{"Combo_Cyc_Sense", "Select CYC SENSE timing", cyclicSenseTimes, upperIndexBits},
     {"Combo_Cyc_Int", "Select CYC INT", cyclicInterruptTimes, lowerIndexBits}}};
constexpr std::array<ComboField, 2> timer2Combos{
    {{"Combo_Wd_Stp", "Select WD Stop / Flash timing", watchdogStopTimes, upperIndexBits},
     {"Combo_Fwu", "Select FWU timing", forcedWakeUpTimes, lowerIndexBits}}};
constexpr Texts<8> timer0Bits{"WD NOR PRE0", "WD NOR PRE1",    "WD NOR PRE2",    "WD NOR TIM0",
                              "WD NOR TIM1", "IMCU_STP PRE 0", "IMCU_STP PRE 1", "IMCU_STP TIM"};
constexpr Texts<8> timer1Bits{"CYC INT PRE0",   "CYC INT PRE1",   "CYC INT PRE2",
                              "CYC INT TIM",    "CYC SENSE PRE0", "CYC SENSE PRE1",
                              "CYC SENSE PRE2", "CYC SENSE TIM"};
constexpr Texts<8> timer2Bits{"FWU PRE 0",    "FWU PRE 1",    "FWU PRE 2",    "FWU TIM",
                              "WD_STP PRE 0", "WD_STP PRE 1", "WD_STP PRE 2", "WD_STP TIM"};

// Mode + random

constexpr Texts<8> modeBits{"RAND M0b", "RAND M1b", "RAND M2b", "Mode 0",
                            "Mode 1",   "Mode 2",   "Mode 3",   "Mode 4"};

// Regulator

constexpr Texts<4> canSupplyModes{
    "Turn OFF", "Turn ON : UV and OC monitors OFF",
    "Turn ON : UV and OC monitoring ON, but do not disable 5V CAN regulator",
    "Turn ON : OC monitoring ON, disable the 5V CAN regulator"};
constexpr Texts<4> vauxModes{"Turn OFF:  Vaux regulator in NORMAL Mode",
                             "Turn ON : UV and OC monitors OFF",
                             "Turn ON : UV and OC monitoring ON, but do not disable Vaux regulator",
                             "Turn ON : UV and OC monitoring ON, disable Vaux regulator"};
constexpr std::array<OptionField, 2> regulatorOptions{{{.title = "5V-CAN",
                                                        .options = "R_Reg",
                                                        .firstOption = 0,
                                                        .lowBit = 3,
                                                        .width = 2,
                                                        .captions = canSupplyModes,
                                                        .frame = {"frame_reg", 1}},
                                                       {.title = "Vaux",
                                                        .options = "R_Reg",
                                                        .firstOption = 4,
                                                        .lowBit = 6,
                                                        .width = 2,
                                                        .captions = vauxModes,
                                                        .frame = {"frame_reg", 0}}}};
constexpr std::array<CheckBit, 3> regulatorChecks{
    {{{"Ch_Reg", 0}, 0, "Alow disable VDD for Low Power VDD OFF Mode"},
     {{"Ch_Reg", 1}, 1, "VDD Ballast AUTO (when I>60mA)"},
     {{"Ch_Reg", 2}, 2, "VDD Ballast ENABLE"}}};
constexpr Texts<8> regulatorBits{"Vdd_Off     EN",    "PNP on Auto",       "PNP ON",
                                 "5V-CAN on/off [0]", "5V-CAN on/off [1]", "-",
                                 "Vaux on/off [0]",   "Vaux on/off [1]"};

// CAN

constexpr Texts<2> canInterrupts{
    "Generate INT when the CAN_BUS failure is fully defined (when the CAN-F flag is set",
    "Generate imediately INT when the CAN_BUS faillure is detected (first TXD pulse)"};
constexpr Texts<2> wakePulses{"3 Pulses", "Single Pulse"};
constexpr Texts<4> canSlewRates{"FAST", "MEDIUM", "SLOW", "SLOW"};
constexpr Texts<4> canModes{"Sleep Mode, Wake Up disable", "Rx only",
                            "Sleep Mode Wake Up enable and INT in Normal Mode",
                            "Tx Rx Mode (transmitter enable if TX is recessive and 5V CAN ok)"};
constexpr std::array<OptionField, 4> canOptions{{{.title = "CAN INT",
                                                  .options = "R_Can",
                                                  .firstOption = 0,
                                                  .lowBit = 0,
                                                  .width = 1,
                                                  .captions = canInterrupts},
                                                 {.title = "Wake up",
                                                  .options = "R_Can",
                                                  .firstOption = 2,
                                                  .lowBit = 3,
                                                  .width = 1,
                                                  .captions = wakePulses},
                                                 {.title = "Slew rate",
                                                  .options = "R_Can",
                                                  .firstOption = 4,
                                                  .lowBit = 4,
                                                  .width = 2,
                                                  .captions = canSlewRates},
                                                 {.title = "CAN mode",
                                                  .options = "R_Can",
                                                  .firstOption = 8,
                                                  .lowBit = 6,
                                                  .width = 2,
                                                  .captions = canModes}}};
constexpr Texts<8> canBits{"CAN_INT mode", "-",           "-",          "Wake 1/3 pulse",
                           "Slew rate 0",  "Slew rate 1", "CAN mode 0", "CAN mode 1"};

// I/O

constexpr Texts<4> io0Modes{
    "HIGH Z state Wake/INT disable",
    "HIGH Z state Wake/INT enable  (INT in NOR, WU in LP mode by voltage transition) Default by "
    "SAFE mode",
    "Low Side enable (I/O0 = GND) available also in low power,  (400uA)",
    "High Side enable (I/O0 = VSUP) available also in low power but without short circuit or over "
    "temperature protection  (20mA)"};
constexpr Texts<4> io1Modes{"HIGH Z state Wake/INT disable",
                            "HIGH Z state Wake/INT enable. Default by SAFE mode",
                            "Low Side enable (I/O1 = GND) available also in low power (400uA)",
                            "High Side enable (I/O1 = VSUP) available also in low power (400uA)"};
constexpr Texts<4> io2Modes{"HIGH Z state Wake disable",
                            "HIGH Z state Wake enable. Default by SAFE mode", "N/A",
                            "High Side enable (I/O2 = VSUP) available also in low power"};
constexpr Texts<4> io3Modes{"HIGH Z state Wake disable",
                            "HIGH Z state Wake enable. Default by SAFE mode", "N/A",
                            "High Side enable (I/O3 = VSUP) available also in low power"};
constexpr std::array<OptionField, 4> ioOptions{{{.title = "I/O 0",
                                                 .options = "R_I_O",
                                                 .firstOption = 0,
                                                 .lowBit = 0,
                                                 .width = 2,
                                                 .captions = io0Modes,
                                                 .frame = {"i_o_frame", 0}},
                                                {.title = "I/O 1",
                                                 .options = "R_I_O",
                                                 .firstOption = 4,
                                                 .lowBit = 2,
                                                 .width = 2,
                                                 .captions = io1Modes,
                                                 .frame = {"i_o_frame", 1}},
                                                {.title = "I/O 2",
                                                 .options = "R_I_O",
                                                 .firstOption = 8,
                                                 .lowBit = 4,
                                                 .width = 2,
                                                 .captions = io2Modes,
                                                 .frame = {"i_o_frame", 2}},
                                                {.title = "I/O 3",
                                                 .options = "R_I_O",
                                                 .firstOption = 12,
                                                 .lowBit = 6,
                                                 .width = 2,
                                                 .captions = io3Modes,
                                                 .frame = {"i_o_frame", 3}}}};
constexpr Texts<8> ioBits{"I/O 0[0]", "I/O 0[1]", "I/O 1[0]", "I/O 1[1]",
                          "I/O 2[0]", "I/O 2[1]", "I/O 3[0]", "I/O 3[1]"};

// Interrupts

constexpr std::array<CheckBit, 8> interruptChecks{
    {{{"Ch_interrupts", 0}, 0, "Vmon_Fail INT enable"},
     {{"Ch_interrupts", 1}, 1, "SPI_Fail  INT enable"},
     {{"Ch_interrupts", 2}, 2, "SAFE INT enable"},
     {{"Ch_interrupts", 3}, 3, "I/O_x_INT enable"},
     {{"Ch_interrupts", 4}, 4, "LIN_2_FAIL INT enable"},
     {{"Ch_interrupts", 5}, 5, "LIN_1_FAIL INT enable"},
     {{"Ch_interrupts", 6}, 6, "MCU_REQ_INT flag"},
     {{"Ch_interrupts", 7}, 7, "CAN_FAIL INT enable"}}};

// LIN

constexpr Texts<4> linSlewRates{"20kb/s", "10kb/s", "N/A", "Fast"};
constexpr Texts<4> linModes{"Sleep Mode Wake Up disable", "Not used",
                            "Sleep Mode Wake Up enable and INT in Normal Mode",
                            "Tx Rx (transmitter enable if Tx recessive)"};
constexpr std::array<OptionField, 2> linOptions(std::string_view options) {
    return {{{.title = "Slew rate",
              .options = options,
              .firstOption = 0,
              .lowBit = 4,
              .width = 2,
              .captions = linSlewRates},
             {.title = "LIN mode",
              .options = options,
              .firstOption = 4,
              .lowBit = 6,
              .width = 2,
              .captions = linModes}}};
}
constexpr std::array<OptionField, 2> lin1Options = linOptions("R_Lin0");
constexpr std::array<OptionField, 2> lin2Options = linOptions("R_Lin1");
constexpr std::string_view linBelow6V = "LIN operates below 6V Vsup2  (not J2602)";
constexpr std::array<CheckBit, 2> lin1Checks{
    {{{"Ch_Lin", 0}, 2, "LIN 1 termination Switch ON"}, {{"Ch_Lin", 2}, 0, linBelow6V}}};
constexpr std::array<CheckBit, 2> lin2Checks{
    {{{"Ch_Lin", 1}, 2, "LIN 2 termination Switch ON"}, {{"Ch_Lin", 3}, 0, linBelow6V}}};
constexpr Texts<8> lin1Bits{"Vsup ext",   "-",          "LIN1 term ON", "-",
                            "Slew rate0", "Slew rate1", "LIN mode0",    "LIN mode1"};

// RAM

constexpr Texts<8> ramBits{"RAM 0", "RAM 1", "RAM 2", "RAM 3", "RAM 4", "RAM 5", "RAM 6", "RAM 7"};

/// The four bytes share the write row; only the command store knows them by a name.
constexpr Register ram(int number, std::string_view title, std::string_view labels,
                       BitCaptions captions) {
    return {.title = title,
            .address = static_cast<std::uint8_t>(ramA + number),
            .writeLabels = "RAM",
            .writeCaptions = ramBits,
            .writeButton = {"Cm_Write_RAM", number},
            .stem = {},
            .writeName = "Write RAM",
            .lines = {},
            .low = {.labels = labels,
                    .captions = captions,
                    .litColour = plain,
                    .readButton = {"Cm_Read_RAM", number}}};
}

// Captions of rows that stand alone

constexpr Texts<8> muxWBits{"-", "-", "-", "io-att", "int 2k   enable", "Mux 0", "MUX 1", "Mux 2"};
constexpr Texts<8> initLinWBits{"CYC_IO_0 INVERTED", "IO_0    OUT_En", "IO_1    OUT_En",
                                "LIN TERM0[1]",      "LIN TERM0[1]",   "LIN TERM1[2]",
                                "LIN TERM1[2]",      "I/01_OFF by OV"};
constexpr Texts<8> speModeWBits{"RAND_C0_b", "RAND_C1_b", "RAND_C2_b",   "RAND_C3_b",
                                "RAND_C4_b", "RAND_C5_b", "Sel Mode[0]", "Sel Mode[1]"};
constexpr Texts<8> wdRefreshWBits{"RAND   W0b",  "RAND    W1b", "RAND    W2b", "RAND    W3b",
                                  "RAND    W4b", "RAND    W5b", "RAND    W6b", "RAND    W7b"};
constexpr Texts<8> interruptsWBits{"Vmon_F INT",  "SPI_F INT",      "-",
                                   "I/O_x INT",   "LIN_2_FAIL INT", "LIN_1_FAIL INT",
                                   "MCU_REQ INT", "CAN_FAIL INT"};
constexpr Texts<8> lin1WBits{"Vsup ext",   "-",          "LIN2 term ON", "-",
                             "Slew rate0", "Slew rate1", "LIN mode0",    "LIN mode1"};
constexpr Texts<8> muxRlBits{"-", "-", "-", "IO ATTE", "INT 2K En", "MUX 0", "MUX 1", "MUX 2"};
constexpr Texts<8> initLinRlBits{
    "CYC_IO_0 INVERTED", "IO_0    OUT_En", "IO_1    OUT_En", "LIN TERM0[0]",
    "LIN TERM0[1]",      "LIN TERM1[0]",   "LIN TERM1[1]",   "-"};
constexpr Texts<8> speModeRlBits{"RAND_C0", "RAND_C1", "RAND_C2",     "RAND_C3",
                                 "RAND_C4", "RAND_C5", "Sel Mode[0]", "Sel Mode[1]"};
constexpr Texts<8> wdRefreshRlBits{"RAND W0b", "RAND W0b", "RAND W0b", "RAND W0b",
                                   "RAND W0b", "RAND W0b", "RAND W0b", "RAND W0b"};
constexpr Texts<8> canRhBits{"-", "-", "-", "-", "-", "Can Wu En", "Can Rx En", "Can Tx En"};
constexpr Texts<8> ioRhBits{"I/O 0 State", "-", "I/O 1 state", "-",
                            "I/O 2 state", "-", "I/O 3 State", "-"};
constexpr Texts<8> interruptsRlBits{"Wmon_F INT", "SPI_F INT",  "-",         "I/O_0 INT",
                                    "LIN_2_FAIL", "LIN_1_FAIL", "autoclear", "CAN_FAIL"};
constexpr Texts<8> interruptsRhBits{"Rev-0", "Rev-1",      "Rev-2",      "Rev-3",
                                    "Rev-4", "Device ID0", "Device ID1", "VDD_ID"};
constexpr Texts<8> lin0RhBits{"-", "-", "-", "-", "-", "-", " LIN 1 status 0", " LIN 1 status 1"};
constexpr Texts<8> lin1RlBits{"Vsup ext",   "LIN INT",    "LIN2 term ON", "30K pull up",
                              "Slew rate0", "Slew rate1", "LIN mode0",    "LIN mode1"};
constexpr Texts<8> lin1RhBits{"-", "-", "-", "-", "-", "-", "LIN 2 status 0", "LIN 2 status 1"};
constexpr Texts<8> ramABits{"RAM_A 0", "RAM_A 1", "RAM_A 2", "RAM_A 3",
                            "RAM_A 4", "RAM_A 5", "RAM_A 6", "RAM_A 7"};
constexpr Texts<8> ramBBits{"RAM_B 0", "RAM_B 1", "RAM_B 2", "RAM_B 3",
                            "RAM_B 4", "RAM_B 5", "RAM_B 6", "RAM_B 7"};
constexpr Texts<8> ramCBits{"RAM_C 0", "RAM_C 1", "RAM_C 2", "RAM_C 3",
                            "RAM_C 4", "RAM_C 5", "RAM_C 6", "RAM_C 7"};
constexpr Texts<8> ramDBits{"RAM_D 0", "RAM_D 1", "RAM_D 2", "RAM_D 3",
                            "RAM_D 4", "RAM_D 5", "RAM_D 6", "RAM_D 7"};

// Variants on which "read all" reads the LINs: bit i stands for opt_vb(i). It never
// reads those of the ZT72514 variants.
constexpr unsigned readsLin1 = 1U << 2 | 1U << 3;
constexpr unsigned readsLin2 = 1U << 2;

} // namespace

constexpr std::array<Register, 21> registers{{
    {.title = "MUX",
     .address = 0,
     .writeLabels = "Mux_W",
     .writeCaptions = muxWBits,
     .writeButton = {"Cm_MUX_W"},
     .sequenceButton = {"Seq_MUX_W"},
     .stem = "MUX",
     .options = muxOptions,
     .checks = muxChecks,
     .low = {.labels = "Mux_Rl",
             .captions = muxRlBits,
             .litColour = plain,
             .readButton = {"Cm_Mux_Rl"},
             .sequenceButton = {"Seq_Mux_Rl"}}},
    ram(0, "RAM A", "RAM_A", ramABits),
    ram(1, "RAM B", "RAM_B", ramBBits),
    ram(2, "RAM C", "RAM_C", ramCBits),
    ram(3, "RAM D", "RAM_D", ramDBits),
    {.title = "Init Vreg",
     .address = 5,
     .writeLabels = "INIT_Vreg_W",
     .writeCaptions = initVregBits,
     .writeButton = {"Cm_Init_Vreg_W"},
     .sequenceButton = {"Seq_Init_Vreg_W"},
     .stem = "Init Vreg",
     .options = initVregOptions,
     .checks = initVregChecks,
     .low = {.labels = "Init_Reg_Rl",
             .captions = initVregBits,
             .litColour = striped,
             .readButton = {"Cm_Init_Reg_Rl"},
             .sequenceButton = {"Seq_Init_Reg_Rl"}}},
    {.title = "Init Wdog",
     .address = initWdog,
     .writeLabels = "Init_Wdog_W",
     .writeCaptions = initWdogBits,
     .writeButton = {"Cm_Init_Wdog_W"},
     .sequenceButton = {"Seq_Init_Wdog_W"},
     .stem = "Init Wdog",
     .options = initWdogOptions,
     .checks = initWdogChecks,
     .low = {.labels = "Init_Wdog_Rl",
             .captions = initWdogBits,
             .litColour = plain,
             .readButton = {"Cm_Init_Wdog_Rl"},
             .sequenceButton = {"Seq_Init_Wdog_Rl"}}},
    {.title = "Init LIN I/O",
     .address = 7,
     .writeLabels = "Init_Lin_W",
     .writeCaptions = initLinWBits,
     .writeButton = {"Cm_Init_Lin_Io_W"},
     .sequenceButton = {"Seq_Init_Lin_Io"},
     .stem = "Init Lin IO",
     .options = initLinOptions,
     .checks = initLinChecks,
     .low = {.labels = "Init_Lin_Rl",
             .captions = initLinRlBits,
             .litColour = striped,
             .readButton = {"Cm_Init_Lin_Io_Rl"},
             .sequenceButton = {"Seq_Init_Lin_Io_Rl"}}},
    {.title = "Init Misc",
     .address = initMisc,
     .writeLabels = "Init_Misc_W",
     .writeCaptions = initMiscBits,
     .writeButton = {"Cm_Init_Misc_W"},
     .sequenceButton = {"Seq_Init_Misc_W"},
     .stem = "Init Misc",
     .options = initMiscOptions,
     .checks = initMiscChecks,
     .low = {.labels = "Init_Misc_Rl",
             .captions = initMiscBits,
             .litColour = plain,
             .readButton = {"Cm_Init_Misc_Rl"},
             .sequenceButton = {"Seq_Init_Misc_Rl"}}},
    // Two more write buttons, and a >SEQ that stores the choice and no byte: special_mode_page.
    {.title = "Special Mode",
     .address = specialMode,
     .writeLabels = "Spe_Mode_W",
     .writeCaptions = speModeWBits,
     .writeButton = {"Cm_Spe_Mode_W", 0},
     .stem = "Spe Mode",
     .writeName = "Special Mode",
     .lines = {.readLow = true, .readHigh = true},
     .addsParity = false,
     .options = specialModeOptions,
     .low = {.labels = "Spe_Mode_Rl",
             .captions = speModeRlBits,
             .litColour = plain,
             .readButton = {"Cm_Spe_Mode_Rl"},
             .sequenceButton = {"Seq_Spe_Mode_Rl"}}},
    {.title = "Timer 0",
     .address = 10,
     .writeLabels = "Timer0_W",
     .writeCaptions = timer0Bits,
     .writeButton = {"Cm_Timer0_W"},
     .sequenceButton = {"Seq_Timer_W", 0},
     .stem = "Timer 0",
     .combos = timer0Combos,
     .low = {.labels = "Timer0_Rl",
             .captions = timer0Bits,
             .litColour = plain,
             .readButton = {"Cm_Timer0_Rl"},
             .sequenceButton = {"Seq_Timer0_Rl"}}},
    {.title = "Timer 1",
     .address = 11,
     .writeLabels = "Timer1_W",
     .writeCaptions = timer1Bits,
     .writeButton = {"Cm_Timer1_W"},
     .sequenceButton = {"Seq_Timer_W", 1},
     .stem = "Timer 1",
     .combos = timer1Combos,
     .low = {.labels = "Timer1_Rl",
             .captions = timer1Bits,
             .litColour = striped,
             .readButton = {"Cm_Timer1_Rl"},
             .sequenceButton = {"Seq_Timer1_Rl"}}},
    {.title = "Timer 2",
     .address = 12,
     .writeLabels = "Timer2_W",
     .writeCaptions = timer2Bits,
     .writeButton = {"Cm_Timer2_W"},
     .sequenceButton = {"Seq_Timer_W", 2},
     .stem = "Timer 2",
     .combos = timer2Combos,
     .low = {.labels = "Timer2_Rl",
             .captions = timer2Bits,
             .litColour = plain,
             .readButton = {"Cm_Timer2_Rl"},
             .sequenceButton = {"Seq_Timer2_Rl"}}},
    {.title = "Watchdog Refresh",
     .address = watchdogRefresh,
     .writeLabels = "Wd_Refresh_W",
     .writeCaptions = wdRefreshWBits,
     .writeButton = {"Cm_Wd_Refresh_W"},
     .writeCaption = "Single WD write command",
     .sequenceButton = {"Seq_Wd_Refresh_W"},
     .stem = "Wd Refresh",
     .lines = {.readLow = true},
     .low = {.labels = "Wd_Refresh_Rl",
             .captions = wdRefreshRlBits,
             .litColour = striped,
             .readButton = {"Cm_Wd_Refresh_Rl"},
             .sequenceButton = {"Seq_Wd_Refresh_Rl"}}},
    // Two more write buttons, and choices that are no field of their own: mode_page.
    {.title = "Mode",
     .address = modeRandom,
     .writeLabels = "Mode_Rm_W",
     .writeCaptions = modeBits,
     .writeButton = {"Cm_Mode_RM_W", 0},
     .sequenceButton = {"Seq_Mode_RM_W"},
     .stem = "Mode RM",
     .low = {.labels = "Mode_Rm_Rl",
             .captions = modeBits,
             .litColour = plain,
             .readButton = {"Cm_Mode_Rm_Rl"},
             .sequenceButton = {"Seq_Mode_Rm_Rl"}},
     .high = {.labels = "Mode_Rm_Rh",
              .captions = modeBits,
              .litColour = plain,
              .readButton = {"Cm_Mode_Rm_Rh"},
              .sequenceButton = {"Seq_Mode_Rm_Rh"}}},
    {.title = "Regulator",
     .address = 15,
     .writeLabels = "Regulator_W",
     .writeCaptions = regulatorBits,
     .writeButton = {"Cm_Regulator_W"},
     .sequenceButton = {"Seq_Regulator_W"},
     .stem = "Regulator",
     .lines = {.write = true, .readLow = true},
     .options = regulatorOptions,
     .checks = regulatorChecks,
     .low = {.labels = "Regulateur_Rl",
             .captions = regulatorBits,
             .litColour = striped,
             .readButton = {"Cm_Regulateur_Rl"},
             .sequenceButton = {"Seq_Regulateur_Rl"}}},
    {.title = "CAN",
     .address = 16,
     .writeLabels = "Can_W",
     .writeCaptions = canBits,
     .writeButton = {"Cm_Can_W"},
     .sequenceButton = {"Seq_Can_W"},
     .stem = "CAN",
     .lowLineReads = modeRandom, // sequences are built on it
     .options = canOptions,
     .low = {.labels = "CAN_Rl",
             .captions = canBits,
             .litColour = plain,
             .readButton = {"Cm_CAN_Rl"},
             .sequenceButton = {"Seq_CAN_Rl"}},
     .high = {.labels = "CAN_Rh",
              .captions = canRhBits,
              .litColour = plain,
              .readButton = {"Cm_CAN_Rh"},
              .sequenceButton = {"Seq_Can_Rh"}}},
    {.title = "I/O",
     .address = 17,
     .writeLabels = "IO_W",
     .writeCaptions = ioBits,
     .writeButton = {"Cm_Io_W"},
     .sequenceButton = {"Seq_Io_W"},
     .stem = "IO",
     .options = ioOptions,
     .low = {.labels = "IO_Rl",
             .captions = ioBits,
             .litColour = striped,
             .readButton = {"Cm_Io_Rl"},
             .sequenceButton = {"Seq_IO_Rl"}},
     .high = {.labels = "IO_Rh",
              .captions = ioRhBits,
              .litColour = striped,
              .readButton = {"Cm_I0_Rh"},
              .sequenceButton = {"Seq_IO_Rh"}}},
    {.title = "Interrupts",
     .address = interrupts,
     .writeLabels = "Interrupts_W",
     .writeCaptions = interruptsWBits,
     .writeButton = {"Cm_Interrupts_W"},
     .sequenceButton = {"Seq_Interrupts_W"},
     .stem = "Interrupts",
     .checks = interruptChecks,
     .low = {.labels = "Interrupts_Rl",
             .captions = interruptsRlBits,
             .litColour = plain,
             .readButton = {"Cm_interrupts_Rl"},
             .sequenceButton = {"Seq_Interrupts_Rl"}},
     // the device's identity
     .high = {.labels = "interrupts_Rh",
              .captions = interruptsRhBits,
              .litColour = plain,
              .readButton = {"Cm_Interrupts_Rh"},
              .sequenceButton = {"Seq_Interrupts_Rh"}}},
    // LIN 1 and LIN 2 are LIN 0 and LIN 1 to controls and sequences.
    {.title = "LIN 1",
     .address = 19,
     .writeLabels = "Lin0_W",
     .writeCaptions = lin1Bits,
     .writeButton = {"Cm_Lin0_W"},
     .sequenceButton = {"Seq_Lin0_W"},
     .stem = "LIN 0",
     .options = lin1Options,
     .checks = lin1Checks,
     .low = {.labels = "Lin0_Rl",
             .captions = lin1Bits,
             .litColour = striped,
             .readButton = {"Cm_Lin0_Rl"},
             .sequenceButton = {"Seq_Lin0_Rl"}},
     .high = {.labels = "Lin0_Rh",
              .captions = lin0RhBits,
              .litColour = striped,
              .readButton = {"CM_Lin0_Rh"},
              .sequenceButton = {"Seq_Lin0_Rh"}}},
    {.title = "LIN 2",
     .address = 20,
     .writeLabels = "Lin1_W",
     .writeCaptions = lin1WBits,
     .writeButton = {"Cm_Lin1_W"},
     .sequenceButton = {"Seq_Lin1_W"},
     .stem = "LIN 1",
     .options = lin2Options,
     .checks = lin2Checks,
     .low = {.labels = "Lin1_Rl",
             .captions = lin1RlBits,
             .litColour = plain,
             .readButton = {"Cm_Lin1_Rl"},
             .sequenceButton = {"Seq_Lin1_Rl"}},
     .high = {.labels = "Lin1_Rh",
              .captions = lin1RhBits,
              .litColour = plain,
              .readButton = {"Cm_Lin1_Rh"},
              .sequenceButton = {"Seq_Lin1_Rh"}}},
}};

constexpr std::array<Page, 18> pages{{{"MUX", 0},
                                      {"RAM", ramA, ramCount},
                                      {"Init Vreg", 5},
                                      {"Init Wdog", initWdog},
                                      {"Init LIN I/O", 7},
                                      {"Init Misc", initMisc},
                                      {"Special Mode", specialMode},
                                      {"Timer 0", 10},
                                      {"Timer 1", 11},
                                      {"Timer 2", 12},
                                      {"Watchdog Refresh", watchdogRefresh},
                                      {"Mode", modeRandom},
                                      {"Regulator", 15},
                                      {"CAN", 16},
                                      {"I/O", 17},
                                      {"Interrupts", interrupts},
                                      {"LIN 1", 19},
                                      {"LIN 2", 20}}};

// RAM and the low view of the mode are left out: reading the latter has an effect on the chip.
constexpr std::array<ReadAllStep, 16> readAllLow{{{{"Cm_Mux_Rl"}},
                                                  {{"Cm_Init_Reg_Rl"}},
                                                  {{"Cm_Init_Wdog_Rl"}},
                                                  {{"Cm_Init_Lin_Io_Rl"}},
                                                  {{"Cm_Init_Misc_Rl"}},
                                                  {{"Cm_Spe_Mode_Rl"}},
                                                  {{"Cm_Timer0_Rl"}},
                                                  {{"Cm_Timer1_Rl"}},
                                                  {{"Cm_Timer2_Rl"}},
                                                  {{"Cm_Wd_Refresh_Rl"}},
                                                  {{"Cm_Regulateur_Rl"}},
                                                  {{"Cm_CAN_Rl"}},
                                                  {{"Cm_Io_Rl"}},
                                                  {{"Cm_interrupts_Rl"}},
                                                  {{"Cm_Lin0_Rl"}, readsLin1},
                                                  {{"Cm_Lin1_Rl"}, readsLin2}}};

constexpr std::array<ReadAllStep, 6> readAllHigh{{{{"Cm_Mode_Rm_Rh"}},
                                                  {{"Cm_CAN_Rh"}},
                                                  {{"Cm_I0_Rh"}},
                                                  {{"Cm_Interrupts_Rh"}},
                                                  {{"CM_Lin0_Rh"}, readsLin1},
                                                  {{"Cm_Lin1_Rh"}, readsLin2}}};

constexpr std::array<ReadAllStep, 10> readAllFlags{{{{"Cm_RFl", 1}},
                                                    {{"Cm_RFl", 2}},
                                                    {{"Cm_RFl", 3}},
                                                    {{"Cm_RFl", 4}},
                                                    {{"Cm_RFl", 5}, readsLin1},
                                                    {{"Cm_RFl", 6}, readsLin2},
                                                    {{"Cm_RFh", 1}},
                                                    {{"Cm_RFh", 2}},
                                                    {{"Cm_RFh", 3}},
                                                    {{"Cm_RFh", 4}}}};

constexpr std::array<ControlName, 16> sequenceAllLow{{{"Seq_Mux_Rl"},
                                                      {"Seq_Init_Reg_Rl"},
                                                      {"Seq_Init_Wdog_Rl"},
                                                      {"Seq_Init_Lin_Io_Rl"},
                                                      {"Seq_Init_Misc_Rl"},
                                                      {"Seq_Spe_Mode_Rl"},
                                                      {"Seq_Timer0_Rl"},
                                                      {"Seq_Timer1_Rl"},
                                                      {"Seq_Timer2_Rl"},
                                                      {"Seq_Wd_Refresh_Rl"},
                                                      {"Seq_Regulateur_Rl"},
                                                      {"Seq_CAN_Rl"},
                                                      {"Seq_IO_Rl"},
                                                      {"Seq_Interrupts_Rl"},
                                                      {"Seq_Lin0_Rl"},
                                                      {"Seq_Lin1_Rl"}}};

constexpr std::array<ControlName, 6> sequenceAllHigh{{{"Seq_Mode_Rm_Rh"},
                                                      {"Seq_Can_Rh"},
                                                      {"Seq_IO_Rh"},
                                                      {"Seq_Interrupts_Rh"},
                                                      {"Seq_Lin0_Rh"},
                                                      {"Seq_Lin1_Rh"}}};

constexpr std::array<ControlName, 11> sequenceAllFlags{{{"Seq_RFh", 0},
                                                        {"Seq_RFl", 1},
                                                        {"Seq_RFh", 1},
                                                        {"Seq_RFl", 2},
                                                        {"Seq_RFh", 2},
                                                        {"Seq_RFl", 3},
                                                        {"Seq_RFh", 3},
                                                        {"Seq_RFl", 5},
                                                        {"Seq_RFl", 6},
                                                        {"Seq_RFl", 4},
                                                        {"Seq_RFl", 7}}};

} // namespace bitlux::oldchips::zt72518
