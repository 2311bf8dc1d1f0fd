#pragma once

#include "chips/register_map.h"

namespace bitlux::oldchips::zt72518 {

/// Flags that one word reads, and the row of labels that shows them. Reading clears them.
struct FlagRow {
    std::string_view title;    ///< of the button that reads it
    std::uint8_t wordHigh = 0; ///< high byte of the word, without the read bit
    bool highView = false;     ///< low byte of the word: 0x80 for the high view, else 0x00
    std::string_view labels;   ///< control array
    int firstLabel = 0;        ///< element of it that shows bit 0
    std::string_view sequenceName;
    BitCaptions captions{};
};

/// Of the rows of flags, bit 0 first.
namespace captions {
inline constexpr std::array<std::string_view, 8> modeRmRFlBits{
    "Debug Status", "SAFE Status", "-", "Mode0", "Mode1", "Mode2", "Mode3", "Mode4"};
inline constexpr std::array<std::string_view, 8> regulatorRFlBits{
    "IDD OC INT",       "VSUV",    "Vsense low",       "5V CAN OC", "5V CAN low",
    "5V-CAN Tshutdown", "Vaux OC", "Vaux low (in NOR)"};
inline constexpr std::array<std::string_view, 8> canRFlBits{
    "Over Current", "CAN Bus dom clamp", "Tx Dom", "Rx high", "Rx Low", "Over Temp", "-", "CAN WU"};
inline constexpr std::array<std::string_view, 8> ioRFlBits{
    "WD flash 50%",  "I/O_0 T Shutdown", "VSUP1_OV",   "VSUP2_UV",
    "CSB low 2.5ms", "SPI ERR",          "HS2 to GND", "HS3 to GND"};
inline constexpr std::array<std::string_view, 8> interruptsRFlBits{"-",
                                                                   "Vaux OV",
                                                                   "VDD OV",
                                                                   "VDD low INT",
                                                                   "VDD Tpre Warning",
                                                                   "SAFE_RES MisMatch",
                                                                   "RST2HIGH (VDDOFF)",
                                                                   "MCU REQ INT"};
inline constexpr std::array<std::string_view, 8> lin0RFlBits{
    "Bus Dom Clamp", "Tx Dom", "Rx High", "Rx Low", " Over Temp", "TERM to GND", "LIN 1 WU", "-"};
inline constexpr std::array<std::string_view, 8> lin1RFlBits{
    "Bus Dom Clamp", "Tx Dom", "Rx High", "Rx Low", " Over Temp", "TERM to GND", "LIN 2 WU", "-"};
inline constexpr std::array<std::string_view, 8> modeRmRFhBits{
    "DEBUG Staus", "SAFE Status", "-", "Mode0", "Mode1", "Mode2", "Mode3", "Mode4"};
inline constexpr std::array<std::string_view, 8> regulatorRFhBits{
    "IDD OC WU", "Vsuv Batfail", "RST2LOW (T<100ms)", "-", "VDD Tshutdown", "-", "-", "-"};
inline constexpr std::array<std::string_view, 8> canRFhBits{
    "CANH to gnd", "CANH to Vdd",  "CANH to Vsup", "CANL to Gnd",
    "CANL to Vdd", "CANL to Vsup", "CAN-F",        "CAN_UF"};
inline constexpr std::array<std::string_view, 8> ioRFhBits{
    "PIN_Leave debug ", "SPI Goto RST",   "SPI Goto SLP",  "INT Serv_TO", "FWU",
    "SPI WU CSB_STP",   "I/O_0_2 INT_WU", "I/O_1_3 INT_WU"};
inline constexpr std::array<std::string_view, 8> interruptsRFlHighBits{"SPI W/D refresh fail",
                                                                       "Multiple RST",
                                                                       "Rst Low 100ms",
                                                                       "VDD low RST",
                                                                       "VDD Low 100ms",
                                                                       "-",
                                                                       "-",
                                                                       "-"};
} // namespace captions

/// The low views, in the order of their buttons.
inline constexpr std::array<FlagRow, 7> lowFlagRows{{
    {"Leave DBG", 0xDC, false, "Mode_Rm_RFl", 0, "Mode RM Read Flag Low", captions::modeRmRFlBits},
    {"Reg Low", 0xDE, false, "Regulator_RFl", 0, "Regulator Read Flag Low",
     captions::regulatorRFlBits},
    {"CAN Low ", 0xE0, false, "CAN_RFl", 0, "CAN Read Flag Low", captions::canRFlBits},
    {"I/O Low", 0xE2, false, "IO_RFl", 0, "IO Read Flag Low", captions::ioRFlBits},
    {"Safe INT", 0xE4, false, "Interrupts_RFl", 0, "Interrupts Read Flag Low",
     captions::interruptsRFlBits},
    {"Lin 1", 0xE6, false, "Lin0_RFl", 0, "LIN 0 Read Flag Low", captions::lin0RFlBits},
    {"Lin 2", 0xE8, false, "Lin1_RFl", 0, "LIN 1 Read Flag Low", captions::lin1RFlBits},
}};

/// The high views, in the order of their buttons.
inline constexpr std::array<FlagRow, 5> highFlagRows{{
    {"Mode", 0xDC, true, "Mode_Rm_RFh", 0, "Mode RM Read Flag High", captions::modeRmRFhBits},
    {"Reg High", 0xDE, true, "Regulator_RFh", 0, "Regulator Read Flag High",
     captions::regulatorRFhBits},
    {"CAN High", 0xE0, true, "CAN_RFh", 0, "CAN Read Flag High", captions::canRFhBits},
    {"I/O High", 0xE2, true, "IO_RFh", 0, "IO Read Flag High", captions::ioRFhBits},
    {"Safe RST", 0xE4, true, "Interrupts_RFl", 8, "Interrupts Read Flag High",
     captions::interruptsRFlHighBits},
}};

} // namespace bitlux::oldchips::zt72518
