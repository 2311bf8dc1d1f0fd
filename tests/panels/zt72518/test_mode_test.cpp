#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

TEST(TestMode, SendsTheConditionThatWasChosen) {
    PanelBench().walk(std::initializer_list<PanelStep>{
        {"TestMode.term_cond(1) TestMode.term_send", "4231",
         "TestMode.can_lin_lbl(12):LIN1 output signal on when detecting DPI"},
    });
}

TEST(TestMode, SendsAThresholdThatWasChosen) {
    PanelBench().walk(std::initializer_list<PanelStep>{
        {"TestMode.thres_combox=0 TestMode.thres_send TestMode.thres_send", "4240 4400 4240 4400",
         "TestMode.thres_lbl(0):Vdd5thr2 : Threshold 1  from VDD (5V - normal mode);"
         "TestMode.thres_lbl(1):Vdd5thr1 : Threshold 2  from VDD (5V - normal mode)"},
        {"TestMode.thres_combox=9 TestMode.thres_send", "4240 4409",
         "TestMode.thres_lbl(0):RXc sense : RXcan sense output input threshold;"
         "TestMode.thres_lbl(1):"},
        {"TestMode.thres_combox=18 TestMode.thres_send", "4240 4412",
         "TestMode.thres_lbl(0):BIAS_STP"},
        {"TestMode.can_lin(0) TestMode.thres_send", "4210 4400 [Please select a command to send]"},
    });
}

TEST(TestMode, TrimsWithAndWithoutBurning) {
    PanelBench().walk(std::initializer_list<PanelStep>{
        {"TestMode.trim_send", "4221 4404"},
        {"TestMode.trim_version(3) TestMode.trim_osci(7) TestMode.trim_bias(3) "
         "TestMode.trim_fuse(2) TestMode.trim_send",
         "4227 44FE"},
        {"TestMode.trim_volt(1) TestMode.trim_lin(1)", "", "TestMode.trimming_txd-"},
        {"TestMode.trim_fuse(3)", "", "TestMode.trimming_txd+;TestMode.trimming(1):~ 3 µs"},
        {"TestMode.trimming_txd=100 TestMode.trim_send", "<00 25 00 26 FB 64 00 00>",
         "TestMode.trimming(1):~ 129 µs"},
        {"TestMode.trim_fuse(0)", "", "TestMode.trimming_txd-"},
    });
}

TEST(TestMode, SendsAPatternInWordsOfTypeOne) {
    PanelBench bench;
    bench.work("TestMode.bit_6 TestMode.periph_dec=5 TestMode.periph_scan_list=2");
    bench.expect("TestMode.Text1:01101010");
    bench.trace.clear();
    bench.click("TestMode.tests_send(3)");
    EXPECT_EQ(bench.trace.accesses().front().frame[1] & 7, 0) << "type 1";
    EXPECT_EQ(bench.sent(), "4280 446A");
    EXPECT_EQ(bench.session().SPIType, 2);
    bench.walk(std::initializer_list<PanelStep>{
        {"TestMode.Text1=10000000 TestMode.periph_scan_list=3", "",
         "TestMode.Text1:11101011"}, // bit 7 is the user's
        {"TestMode.Text1=101 TestMode.tests_send(3)", "4280 4405"},
    });
    for (const char* text : {"", "2", "101010101"})
        EXPECT_EQ(bench.outcomeOf(fmt::format("TestMode.Text1={} TestMode.tests_send(3)", text)),
                  "[Please enter a pattern of up to eight binary digits]");
    bench.work("TestMode.Text1=1");
    bench.session().SPIBaudRate = 999; // leaves its byte
    bench.click("TestMode.tests_send(3)");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_EQ(bench.session().SPIType, 2) << "also after a failure";
}

} // namespace
} // namespace bitlux::test
