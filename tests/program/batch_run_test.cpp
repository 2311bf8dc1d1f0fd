#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Plays a Batch of two words, a wait, a pause and a pin that goes high and low, and returns what
/// was on the wire.
Texts play(TestBench& bench, const std::string& pin) {
    bench.program.mainForm().commands.setToSend(
        {"a", "* Wait 5 ms", "* Set HIGH: " + pin, "* Pause", "b", "* Set LOW: " + pin});
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.boxes.answer(MessageBox::Answer::Ok);
    return traceOf(bench, [&bench] { bench.click("frmMain.cmdSendOnce"); });
}

TEST(BatchRun, IsOnThePortAsItsLinesSay) {
    TestBench bench;
    bench.enablePin("Data", 0, "5", "EN");
    bench.configure("2");
    bench.save("a", "2");
    bench.save("b", "1");
    // Bit 0 is chip select, bit 1 data in, bit 2 the clock, bit 3 the pin.
    EXPECT_EQ(
        play(bench, "EN"),
        (Texts{"0 W 378 00",       "1000 W 378 02",    "2000 W 378 06",    "3000 R 379 20",
               "4000 W 378 00",    "5000 W 378 04",    "6000 R 379 00",    "7000 W 378 00",
               "8000 W 378 01",    "5009000 W 378 09", "5010000 W 378 08", "5011000 W 378 08",
               "5012000 W 378 0C", "5013000 R 379 00", "5014000 W 378 0A", "5015000 W 378 0E",
               "5016000 R 379 20", "5017000 W 378 08", "5018000 W 378 09", "5019000 W 378 01"}));
}

TEST(BatchRun, IsOnTheDongleAsItsLinesSay) {
    TestBench bench("loopback", {}, TestBench::WithDongle::Yes);
    bench.program.dialog().extraPins.Check(1).setValue(1);
    bench.program.dialog().optHex.setValue(true);
    bench.program.dialog().cmdApply_Click();
    bench.save("a", "A5");
    bench.save("b", "3C");
    // A pin travels with the word of the single-word page.
    EXPECT_EQ(
        play(bench, "Data 1"),
        (Texts{"0 OUT 08 70 00 A5 00 00 00 00", "2008000 IN 08 70 00 A5 00 00 00 00",
               "7008000 OUT 48 70 02 3C 00 00 00 00", "9016000 IN 48 70 02 3C 00 00 00 00",
               "9016000 OUT 08 70 02 3C 00 00 00 00", "11024000 IN 08 70 02 3C 00 00 00 00",
               "11024000 OUT 48 70 00 3C 00 00 00 00", "13032000 IN 48 70 00 3C 00 00 00 00"}));
}

} // namespace
} // namespace bitlux::test
