#include "waveform_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Waveform, ShowsTheEdgesOfEveryType) {
    // The word 2 of two bits in a loop, an access a microsecond. Types 5 to 8 read before they
    // move the lines, so the answer comes a bit late.
    for (const auto& [type, order, lines, bits] : Rows<int, const char*, const char*, const char*>{
             {1, "optMSBfirst", "H 0L 8H, L 2H 4L 5H 7L, L 1H 4L, ? 2H 5L", "1:1/1@3 0:0/0@6"},
             {2, "optMSBfirst", "H 0L 7H, L 1H 2L 4H 5L, L 1H 4L, ? 2H 5L", "1:1/1@3 0:0/0@6"},
             {3, "optMSBfirst", "H 0L 8H, H 2L 4H 5L 7H, L 1H 4L, ? 2H 5L", "1:1/1@3 0:0/0@6"},
             {4, "optMSBfirst", "H 0L 7H, H 1L 2H 4L 5H, L 1H 4L, ? 2H 5L", "1:1/1@3 0:0/0@6"},
             {5, "optMSBfirst", "H 0L 7H, L 1H 3L 6H 7L, L 3H 5L, ? 1L 3H", "1:1/0@2 0:0/1@4"},
             {5, "optLSBfirst", "H 0L 7H, L 1H 3L 4H 6L, L 6H 7L, ? 1L", "0:0/0@2 1:1/0@5"},
             {6, "optMSBfirst", "H 0L 7H, L 2H 3L 5H 6L, L 2H 5L, ? 0L 3H", "1:1/0@1 0:0/1@4"},
             {7, "optMSBfirst", "H 0L 8H, H 1L 3H 4L 6H 7L 9H, L 3H 6L, ? 1L 4H",
              "1:1/0@2 0:0/1@5"},
             {8, "optMSBfirst", "H 0L 7H, H 2L 3H 5L 6H, L 2H 5L, ? 0L 3H", "1:1/0@1 0:0/1@4"}}) {
        WaveformBench bench;
        bench.configure("2", {"optHex", order});
        bench.setType(type);
        bench.record();
        bench.send("2");
        const Waveform waveform = bench.last();
        EXPECT_EQ(linesOf(waveform), lines) << type << order;
        EXPECT_EQ(bitsOf(waveform), bits) << type << order;
        EXPECT_EQ(waveform.type, type);
        EXPECT_TRUE(waveform.complete);
        EXPECT_FALSE(waveform.asCommanded);
    }
}

TEST(Waveform, TakesWiringAndPolaritiesAsTheyWereAtTheWord) {
    WaveformBench bench("scripted", {"1"});
    bench.configure("2", {"optHex", "optCSpositive", "optDIpolarity_neg", "optDOpolarity_neg"});
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbCS").edit("9");
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbCLK").edit("5");
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbDO").edit("15");
    bench.click("frmConfigureSPI.cmdApply");
    bench.record();
    bench.send("2");
    bench.configure("8", {"optCSnegative", "optDIpolarity_pos", "optDOpolarity_pos"});
    const Waveform waveform = bench.last();
    EXPECT_EQ(linesOf(waveform), "L 0H 8L, L 2H 4L 5H 7L, H 1L 4H, ? 2H 5L");
    EXPECT_EQ(waveform.sent, "2");
    EXPECT_EQ(waveform.received, "1");
    EXPECT_TRUE(waveform.selectedWhenHigh);
}

TEST(Waveform, ShowsTheExtraPinsThatMoved) {
    WaveformBench bench;
    bench.configure("2");
    bench.enablePin("Data", 0, "7");
    bench.enablePin("Data", 1, "8");
    bench.enablePin("Control", 0, "1");
    bench.click("frmConfigureSPI.cmdApply");
    bench.record();
    bench.send("2");
    EXPECT_EQ(bench.last().lines.size(), Waveform::firstExtra);
    bench.get<forms::OptionButton>("frmMain.optSetHighNow(1)").click();
    bench.get<forms::OptionButton>("frmMain.optSetHighNow(2)").click();
    bench.send("2");
    const Waveform waveform = bench.last();
    ASSERT_EQ(waveform.lines.size(), Waveform::firstExtra + 2);
    EXPECT_EQ(waveform.lines[4].name, "Data 1");
    EXPECT_EQ(textOf(waveform.lines[4]), "L -2H");
    EXPECT_EQ(waveform.lines[5].name, "Control 0");
    EXPECT_EQ(textOf(waveform.lines[5]), "L -1H"); // a pin that the hardware inverts
    bench.send("2");
    EXPECT_EQ(bench.last().lines.size(), Waveform::firstExtra);
}

TEST(Waveform, IsAsCommandedThroughTheDongle) {
    // A loop of eight bits; half a period of 500 kHz is a microsecond.
    for (const auto& [type, clock, lines, bits] : Rows<int, int, const char*, const char*>{
             {1, 2,
              "H 0L 17H, L 1H 2L 3H 4L 5H 6L 7H 8L 9H 10L 11H 12L 13H 14L 15H 16L, "
              "L 0H 2L, ? 1H 3L",
              "7:1/1@1 6:0/0@3"},
             {4, 2,
              "H 0L 17H, H 1L 2H 3L 4H 5L 6H 7L 8H 9L 10H 11L 12H 13L 14H 15L 16H, "
              "L 1H 3L, ? 2H 4L",
              "7:1/1@2 6:0/0@4"},
             {6, 2,
              "H 0L 17H, L 1H 2L 3H 4L 5H 6L 7H 8L 9H 10L 11H 12L 13H 14L 15H 16L, "
              "L 1H 3L, ? 0L 2H 4L",
              "7:1/0@1 6:0/1@3"},
             {8, 3,
              "H 0L 136H, H 8L 16H 24L 32H 40L 48H 56L 64H 72L 80H 88L 96H 104L 112H 120L 128H, "
              "L 8H 24L, ? 0L 16H 32L",
              "7:1/0@8 6:0/1@24"}}) {
        WaveformBench bench("loopback", {}, TestBench::WithDongle::Yes);
        bench.configure("8", {"optHex", fmt::format("SPIBaudRate({})", clock)});
        bench.setType(type);
        bench.record();
        bench.send("80");
        const Waveform waveform = bench.last();
        EXPECT_EQ(linesOf(waveform), lines) << type;
        EXPECT_EQ(bitsOf(waveform).substr(0, std::string(bits).size()), bits) << type;
        EXPECT_EQ(waveform.sent, "80");
        EXPECT_TRUE(waveform.asCommanded);
    }
}

TEST(Waveform, ShowsWhatWentOutOfAWordThatFailed) {
    WaveformBench port;
    port.configure("4");
    port.record();
    port.session().WordToSend = {1, 1, 2, 1};
    port.program.engine().SendSPI();
    EXPECT_EQ(linesOf(port.last()), "H 0L, L 2H, L 1H, ? 2H");
    EXPECT_EQ(bitsOf(port.last()), "3:1/1@3");
    EXPECT_EQ(port.last().sent, "?");
    EXPECT_FALSE(port.last().complete);

    WaveformBench dongle("echo", {}, TestBench::WithDongle::Yes);
    dongle.configure("8");
    dongle.record();
    dongle.dongle.setFaults(DongleFaults({dongleFaultFrom("gone")}, 1));
    dongle.send("A5");
    EXPECT_EQ(dongle.last().sent, "A5");
    EXPECT_EQ(dongle.last().received, "??");
    EXPECT_EQ(textOf(dongle.last().lines[Waveform::dataOut]), "?");
}

} // namespace
} // namespace bitlux::test
