#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

struct TestModeBench : PanelBench {
    void choose(const std::string& option) {
        get<forms::OptionButton>("TestMode." + option).click();
    }
    std::string after(const std::string& button) {
        sent();
        click("TestMode." + button);
        return sent();
    }
    forms::ComboBox& combo(const std::string& name) {
        return get<forms::ComboBox>("TestMode." + name);
    }
};

TEST(TestMode, SendsTheConditionThatWasChosen) {
    TestModeBench bench;
    EXPECT_EQ(bench.label("TestMode.can_lin_lbl(12)"), "LIN1 output signal on when detecting DPI");
    bench.choose("term_cond(1)");
    EXPECT_EQ(bench.after("term_send"), "4231");
}

TEST(TestMode, SendsAThresholdThatWasChosen) {
    TestModeBench bench;
    EXPECT_EQ(bench.after("thres_send"), "");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Please select a command to send"});
    for (const auto& [index, first, second, words] :
         {std::tuple{0, "Vdd5thr2 : Threshold 1  from VDD (5V - normal mode)",
                     "Vdd5thr1 : Threshold 2  from VDD (5V - normal mode)", "4240 4400"},
          {9, "RXc sense : RXcan sense output input threshold", "", "4240 4409"},
          {18, "BIAS_STP", "", "4240 4412"}}) {
        bench.combo("thres_combox").select(index);
        EXPECT_EQ(bench.label("TestMode.thres_lbl(0)"), first);
        EXPECT_EQ(bench.label("TestMode.thres_lbl(1)"), second);
        EXPECT_EQ(bench.after("thres_send"), words);
        EXPECT_EQ(bench.after("thres_send"), words);
    }
    bench.after("can_lin(0)");
    EXPECT_EQ(bench.after("thres_send"), "");
}

TEST(TestMode, TrimsWithAndWithoutBurning) {
    TestModeBench bench;
    EXPECT_EQ(bench.after("trim_send"), "4221 4404");
    for (const char* option : {"trim_version(3)", "trim_osci(7)", "trim_bias(3)", "trim_fuse(2)"})
        bench.choose(option);
    EXPECT_EQ(bench.after("trim_send"), "4227 44FE");
    bench.choose("trim_volt(1)");
    bench.choose("trim_lin(1)");
    const forms::ScrollBar& txd = bench.get<forms::ScrollBar>("TestMode.trimming_txd");
    EXPECT_FALSE(txd.visible());
    bench.choose("trim_fuse(3)");
    EXPECT_TRUE(txd.visible());
    EXPECT_EQ(bench.label("TestMode.trimming(1)"), "~ 3 µs");
    bench.get<forms::ScrollBar>("TestMode.trimming_txd").move(100);
    EXPECT_EQ(bench.label("TestMode.trimming(1)"), "~ 129 µs");
    EXPECT_EQ(bench.after("trim_send"), "<00 25 00 26 FB 64 00 00>");
    bench.choose("trim_fuse(0)");
    EXPECT_FALSE(txd.visible());
}

TEST(TestMode, SendsAPatternInWordsOfTypeOne) {
    TestModeBench bench;
    bench.trace.clear();
    bench.get<forms::CheckBox>("TestMode.bit_6").click();
    bench.combo("periph_dec").select(5);
    bench.combo("periph_scan_list").select(2);
    EXPECT_EQ(bench.text("TestMode.Text1"), "01101010");
    bench.click("TestMode.tests_send(3)");
    EXPECT_EQ(bench.trace.accesses().front().frame[1] & 7, 0) << "type 1";
    EXPECT_EQ(bench.sent(), "4280 446A");
    EXPECT_EQ(bench.session().SPIType, 2);
    bench.edit("TestMode.Text1", "10000000");
    bench.combo("periph_scan_list").select(3);
    EXPECT_EQ(bench.text("TestMode.Text1"), "11101011") << "bit 7 is the user's";
    bench.edit("TestMode.Text1", "101");
    EXPECT_EQ(bench.after("tests_send(3)"), "4280 4405");
    for (const char* text : {"", "2", "101010101"}) {
        bench.edit("TestMode.Text1", text);
        EXPECT_EQ(bench.after("tests_send(3)"), "") << text;
    }
    EXPECT_EQ(bench.boxes.takeTexts(),
              Texts(3, "Please enter a pattern of up to eight binary digits"));
    bench.edit("TestMode.Text1", "1");
    bench.session().SPIBaudRate = 999; // leaves its byte
    bench.after("tests_send(3)");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_EQ(bench.session().SPIType, 2) << "also after a failure";
}

} // namespace
} // namespace bitlux::test
