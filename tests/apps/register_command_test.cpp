#include "bitlux_program.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

#include <string>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Outcomes = Rows<std::string, int, std::string>;

void expectOutcomes(const Outcomes& rows) {
    for (const auto& [arguments, code, output] : rows) {
        const Outcome outcome = bitlux("chip " + arguments);
        EXPECT_EQ(outcome.code, code) << arguments;
        EXPECT_EQ(outcome.output, output) << arguments;
    }
}

TEST(RegisterCommand, SendsTheWordsOfTheChipInItsShape) {
    expectOutcomes({
        {"read zt72518d 'timer 0' --bench zt72518d --bus dongle --trace -", 0,
         "0 OUT 10 71 00 15 00 00 00 00\n"
         "2016000 IN 10 71 00 00 1E 00 00 00\n"
         "Timer 0 = 0x1E\n"
         "    [6:5,7]      Select I MCU STP Timing = 0  3 ms\n"
         "    [2:0,4:3]    Select WD Timer  = 0x1B  256 ms\n"},
        {"write zt72516 TIMER=0x123456 INIT.WD_spi=1 --bench zt72516 --bus dongle --verify "
         "--trace - | grep -v '    '",
         0,
         "0 OUT 20 70 00 45 12 34 56 00\n"
         "2032000 IN 20 70 00 00 00 00 00 00\n"
         "TIMER = 0x123456\n"
         "2032000 OUT 20 70 00 05 00 00 00 00\n"
         "4064000 IN 20 70 00 00 12 34 56 00\n"
         "4064000 OUT 20 70 00 03 00 00 00 00\n"
         "6096000 IN 20 70 00 00 00 00 10 00\n"
         "6096000 OUT 20 70 00 43 00 02 10 00\n"
         "8128000 IN 20 70 00 00 00 00 00 00\n"
         "INIT = 0x000210\n"
         "8128000 OUT 20 70 00 03 00 00 00 00\n"
         "10160000 IN 20 70 00 00 00 02 10 00\n"},
    });
}

TEST(RegisterCommand, ReportsMistakesBeforeAWordIsSent) {
    expectOutcomes({
        {"write zt72516 INIT.WDspi=1 --bench zt72516 --trace -", 1,
         "There is no field of INIT \"WDspi\". Did you mean WD_spi?\n"},
        {"read zt72516 INTI --bench zt72516 --trace -", 1,
         "There is no register \"INTI\". Did you mean INIT?\n"},
        {"write zt72516 INIT --bench zt72516", 2,
         "INIT: This is neither REGISTER.FIELD=VALUE nor REGISTER=VALUE.\n"},
        {"write zt72516 AMUX --raw twelve --bench zt72516", 2, "twelve: This is no number.\n"},
        {"write zt72361 MCR.Mode=1 --bench zt72361 --trace -", 1,
         "MCR cannot be read, so that its other fields are not known: start from its reset value "
         "or give the whole value\n"},
        {"decode zt72516 143001A2B", 2, "143001A2B: This is no hexadecimal word of 32 bits.\n"},
        {"read zt72516 INIT --bench zt72516 --bus dongle --fault gone", 1,
         "Check the USB cable and restart program\n"},
    });
}

TEST(RegisterCommand, ComparesAndRestoresSnapshots) {
    const TemporaryFolder folder;
    const std::string before = folder.path() + "/before.toml";
    const std::string onBench = " --bench zt72516";
    expectOutcomes({{"dump zt72516 -o " + before + onBench, 0, ""},
                    {"diff zt72516 " + before + onBench, 0, ""}});
    const std::string after = folder.path() + "/after.toml";
    ASSERT_EQ(
        std::system(fmt::format("sed 's/^\"SGFS\" = .*/\"SGFS\" = 0x0009/' {} > {}", before, after)
                        .c_str()),
        0);
    const std::string change = "SGFS 0x0000 -> 0x0009\n"
                               "    [3]          SG3: 0 -> 1\n"
                               "    [0]          SG0: 0 -> 1\n";
    expectOutcomes({
        {"diff " + before + " " + after, 3, change},
        {"diff zt72516 " + before + " " + after + " --json", 3,
         R"({"kind":"difference","name":"SGFS","before":0,"after":9,"fields":[)"
         R"({"name":"SG3","bits":"3","before":0,"after":1},)"
         R"({"name":"SG0","bits":"0","before":0,"after":1}]})"
         "\n"},
        {"load zt72516 " + after + onBench + " --verify | head -1", 0, "SGFS = 0x0009\n"},
        // A line that answers only with ones.
        {"load zt72516 " + after + " --bench stuck-high --verify | grep SGFS", 0,
         "SGFS = 0x0009\nDid not take: SGFS 0x0009 -> 0xFFFF\n"},
        {"load zt72516 " + after + " --bench stuck-high --verify > /dev/null", 3, ""},
        {"load zt72518 " + after + " --bench zt72518d", 1,
         after + ": this is a snapshot of zt72516, not of zt72518\n"},
    });
}

TEST(RegisterCommand, DecodesAWordAndItsAnswer) {
    expectOutcomes({
        {"decode zt72361 A1 8", 0,
         "A1  TIM flags read\n08  answer\n"
         "TIM flags = 0x8\n"
         "    [3]          CanL to 5V = 1\n"
         "    [2]          CanL to Vbat = 0\n"
         "    [1]          CanL to gnd = 0\n"
         "    [0]          Tx dominant = 0\n"},
        {"decode zt72361 BC --json", 0,
         R"({"kind":"decoded","word":"BC","meaning":"TIM 2 write","written":{"name":"TIM 2",)"
         R"("value":4,"hex":"4","fields":[{"name":"Time","bits":"2:0","value":4,"text":"75 ms"}]}})"
         "\n"},
        {"decode zt72516 2", 0, "00000002  no word of this chip\n"},
    });
}

TEST(RegisterCommand, WatchesForChanges) {
    // The random code changes with each read.
    expectOutcomes(
        {{"watch zt72516 SGFS SPE_MODE --times 3 --every 1.5s --bench zt72516 --bus port "
          "| cut -c 1-40",
          0,
          "     0.000 s  SGFS 0x0000\n"
          "     0.000 s  SPE_MODE 0x1BC  Sel_MOD 0,\n"
          "     1.500 s  SPE_MODE 0x11F  Rnd_C 7 1 \n"
          "     3.000 s  SPE_MODE 0x151  Rnd_C 6 0 \n"}});
}

} // namespace
} // namespace bitlux::test
