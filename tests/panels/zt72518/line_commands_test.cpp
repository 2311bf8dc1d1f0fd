#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

/// Names that no button appends, or that mean another word than their button sends.
TEST(LineCommands, DecodeOddNames) {
    PanelBench bench;
    const auto& variables = bench.panel().part<zt72518::LineCommands>();
    for (const auto& [name, high] : Rows<const char*, int>{{"MUX Read High", 1},
                                                           {"Init Misc Read High", 17},
                                                           {"Spe Mode Read High", 19},
                                                           {"CAN Read Low", 29},
                                                           {"Wait", 0},
                                                           {"Wd Refresh Read High", 0},
                                                           {"Special Mode", 0},
                                                           {"Wd Refresh Write", 0},
                                                           {"Spe Mode Write", 0},
                                                           {"Simple WD", 0},
                                                           {"Regulator Read High", 0},
                                                           {"LIN 0 Read Flag High", 0},
                                                           {"Enhanced 4", 0},
                                                           {"Write RAM", 0},
                                                           {" Write", 0},
                                                           {"mux write", 0},
                                                           {"", 0}}) {
        bench.panel().call("Decod_Name", name);
        EXPECT_EQ(variables.SequenceHighByte, high) << name;
        EXPECT_FALSE(variables.SequenceIsWrite || variables.SequenceIsWatchdog) << name;
    }
    bench.panel().call("Decod_Name", "MUX Write");
    EXPECT_TRUE(variables.SequenceIsWrite);
    bench.panel().call("Decod_Name", "One Simple Watchdog");
    EXPECT_TRUE(variables.SequenceIsWatchdog);
}

} // namespace
} // namespace bitlux::test
