#include "panels/zt72518/mode_words.h"

namespace bitlux::zt72518 {

namespace {

constexpr std::array<ModeWord, 7> normalWords{
    {{.word = 0x5A00},
     {.word = 0x60C0, .box = 5, .whenClear = 0x6000},
     {.word = 0x66C4, .box = 6, .whenClear = 0x6600, .onlyWhereEnabled = true},
     {.word = 0x68C4, .box = 7, .whenClear = 0x6800, .onlyWhereEnabled = true},
     {.word = 0x62FF, .box = 8, .whenClear = 0x6200},
     {.word = 0xDF80},
     {.word = 0x5E4F, .box = 9, .whenClear = 0x5E0F, .onlyWhereEnabled = true}}};

constexpr std::array<ModeWord, 10> vddOnWords{
    {{.word = 0xE380, .box = 16},
     {.word = 0xE100, .box = 16},
     {.word = 0xE700, .box = 16},
     {.word = 0xE900, .box = 16},
     {.word = 0x6080, .box = 0, .whenClear = 0x6000},
     {.word = 0x6684, .box = 1, .whenClear = 0x6600, .onlyWhereEnabled = true},
     {.word = 0x6884, .box = 2, .whenClear = 0x6800, .onlyWhereEnabled = true},
     {.word = 0x6255, .box = 3, .whenClear = 0x6200},
     {.word = 0x580E, .box = 4},
     {.word = 0x5CC0, .box = 4, .whenClear = 0x5C80}}};

// The words for LIN are sent on every variant here.
constexpr std::array<ModeWord, 11> vddOffWords{{{.word = 0xE380, .box = 16},
                                                {.word = 0xE100, .box = 16},
                                                {.word = 0xE700, .box = 16},
                                                {.word = 0xE900, .box = 16},
                                                {.word = 0x6080, .box = 0, .whenClear = 0x6000},
                                                {.word = 0x6684, .box = 1, .whenClear = 0x6600},
                                                {.word = 0x6884, .box = 2, .whenClear = 0x6800},
                                                {.word = 0x6255, .box = 3, .whenClear = 0x6200},
                                                {.word = 0x580E, .box = 4},
                                                {.word = 0x5E01},
                                                {.word = 0x5C70, .box = 4, .whenClear = 0x5C60}}};

constexpr std::array<ModeWord, 1> wakeUpWords{{{.word = 0x5C10}}};

constexpr std::array<ModeWord, 5> initWords{{{.word = 0x4A04, .box = 11},
                                             {.word = 0x4C00, .box = 12},
                                             {.word = 0x4E56, .box = 13},
                                             {.word = 0x5000, .box = 14},
                                             {.word = 0xDF80, .box = 15}}};

constexpr std::array linesFromNormal{0, 2, 3, 5, 6};
constexpr std::array linesFromInit{0};
constexpr std::array linesFromFlash{4, 5};
constexpr std::array linesFromVddOff{7};
constexpr std::array linesFromRequest{9};
constexpr std::array linesFromVddOn{1, 7, 8};

} // namespace

constexpr std::array<ModeButton, 7> modeButtons{
    {{.caption = "Normal mode", .words = normalWords},
     {.caption = "Low Power Vdd ON", .words = vddOnWords},
     {.caption = "Low Power Vdd OFF", .words = vddOffWords},
     {.caption = "WU by CSb", .words = wakeUpWords},
     {.caption = "Init Mode", .words = initWords, .select = 1, .skipsEntry = true},
     {.caption = "Flash", .words = {}, .select = 2},
     {.caption = "Reset", .words = {}, .select = 0}}};

constexpr std::array<std::string_view, 17> modeBoxes{
    "CAN wake up",     "LIN 1 wake up", "LIN 2 wake up",     "I/O wake up",
    "Forced wake up",  "CAN Tx Rx",     "LIN 1 Tx Rx",       "LIN 2 Tx Rx",
    "I/O High Side",   "Vaux ON",       "Auto Mode reading", "Init Vreg",
    "Init Wdog",       "Init LIN I/O",  "Init Misc",         "Read regulator flags",
    "Read flags first"};

constexpr std::array<ShownMode, 6> shownModes{
    {{26, 27, "Normal Mode", {"Send_pre_prog", 0}, linesFromNormal},
     {3, 3, "Initialization Mode", {"Send_pre_prog", 4}, linesFromInit},
     {11, 11, "Flash Mode", {"Send_pre_prog", 5}, linesFromFlash},
     {0, 0, "Low Power Vdd Off         (or no SPI)", {"Send_pre_prog", 2}, linesFromVddOff},
     {19, 19, "Normal Request", {"read_pre_prog", 1}, linesFromRequest},
     {28, 255, "Low Power Vdd On", {"Send_pre_prog", 1}, linesFromVddOn}}};

} // namespace bitlux::zt72518
