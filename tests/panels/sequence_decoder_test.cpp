#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

struct Line {
    const char* name;
    int high;
    bool isWrite = false;
};

constexpr Line decodedLines[] = {
    {"Wait", 0},
    {"Wd Refresh Read Low", 27},
    {"Wd Refresh Read High", 0},
    {"Wd Refresh Write", 0},
    {"MUX Write", 64, true},
    {"MUX Read Low", 1},
    {"MUX Read High", 1},
    {"Init Vreg Write", 74, true},
    {"Init Vreg Read High", 11},
    {"Init Wdog Write", 76, true},
    {"Init Wdog Read Low", 13},
    {"Init Lin IO Write", 78, true},
    {"Init Lin IO Read Low", 15},
    {"Init Misc Write", 80, true},
    {"Init Misc Read High", 17},
    {"Special Mode", 0},
    {"Spe Mode Write", 0},
    {"Spe Mode Read Low", 19},
    {"Spe Mode Read High", 19},
    {"Timer 0 Write", 84, true},
    {"Timer 1 Write", 86, true},
    {"Timer 2 Write", 88, true},
    {"Timer 0 Read High", 21},
    {"Timer 1 Read Low", 23},
    {"Timer 2 Read Low", 25},
    {"Mode RM Write", 92, true},
    {"Mode RM Read High", 29},
    {"Mode RM Read Flag Low", 221},
    {"Mode RM Read Flag High", 221},
    {"Regulator Write", 94, true},
    {"Regulator Read Low", 31},
    {"Regulator Read High", 0},
    {"Regulator Read Flag High", 223},
    {"CAN Write", 96, true},
    {"CAN Read Low", 29},
    {"CAN Read High", 33},
    {"CAN Read Flag Low", 225},
    {"IO Write", 98, true},
    {"IO Read Low", 35},
    {"IO Read Flag High", 227},
    {"Interrupts Write", 100, true},
    {"Interrupts Read High", 37},
    {"Interrupts Read Flag High", 229},
    {"LIN 0 Write", 102, true},
    {"LIN 0 Read High", 39},
    {"LIN 0 Read Flag Low", 231},
    {"LIN 0 Read Flag High", 0},
    {"LIN 1 Write", 104, true},
    {"LIN 1 Read Low", 41},
    {"LIN 1 Read Flag Low", 233},
    {"Simple WD", 0},
    {"Enhanced 4", 0},
    {"Write RAM", 0},
    {" Write", 0},
    {"mux write", 0},
    {"", 0},
};

TEST(SequenceDecoder, KnowsTheLinesOfTheChip) {
    PanelBench bench;
    const auto& variables = bench.panel().part<zt72518::LineCommands>();
    for (const Line& line : decodedLines) {
        bench.panel().call("Decod_Name", line.name);
        EXPECT_EQ(variables.SequenceHighByte, line.high) << line.name;
        EXPECT_EQ(variables.SequenceIsWrite, line.isWrite) << line.name;
        EXPECT_FALSE(variables.SequenceIsWatchdog) << line.name;
    }
    // What a command of the watchdog sends, its button sends.
    bench.choose("opt_vb(2)");
    bench.on<forms::ComboBox>("wd_config(0)").select(1);
    bench.on<forms::ComboBox>("wd_config(1)").select(2);
    bench.on<forms::ComboBox>("wd_config(2)").select(3);
    for (const auto& [line, button] : {std::pair{"Start Watchdog", 0},
                                       {"Stop Watchdog", 2},
                                       {"Start Watchdog Current", 4},
                                       {"Stop Watchdog Current", 6},
                                       {"One Simple Watchdog", 12}}) {
        const std::string pressed = bench.effectsOf(fmt::format("watchdog({})", button));
        EXPECT_NE(pressed, "");
        const auto decode = [&bench, name = line] { bench.panel().call("Decod_Name", name); };
        EXPECT_EQ(bench.effects(decode), pressed) << line;
        EXPECT_TRUE(variables.SequenceIsWatchdog) << line;
        EXPECT_EQ(variables.SequenceHighByte, 0) << line;
    }
}

} // namespace
} // namespace bitlux::test
