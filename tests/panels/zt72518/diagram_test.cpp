#include "panels/panel_bench.h"

#include <tuple>

namespace bitlux::test {
namespace {

constexpr forms::Color presentColor = 0xC0C000;

TEST(Diagram, SendsTheWordsThatItsBoxesSelect) {
    PanelBench bench("scripted", {"03E9"}); // normal mode, 10 1001 at random
    for (int box = 0; box <= 16; ++box)
        if (box != 10)
            bench.tick(fmt::format("pre_prog_box({})", box));
    // Every box is the other way round than at first.
    for (const auto& [button, words] :
         {std::pair{"Send_pre_prog(0)", "5A00 60C0 6600 6800 62FF DF80 5E0F"},
          {"Send_pre_prog(1)", "E380 E100 E700 E900 6080 6600 6800 6255 580E 5CC0"},
          {"Send_pre_prog(2)", "E380 E100 E700 E900 6080 6600 6800 6255 580E 5E01 5C70"},
          {"Send_pre_prog(4)", "1300 5256 4A04 4C00 4E56 5000 DF80"}})
        EXPECT_EQ(bench.effectsOf(button), words);
    bench.control("Send_pre_prog(4)").setBackColor(presentColor);
    EXPECT_EQ(bench.effectsOf("Send_pre_prog(4)"), "4A04 4C00 4E56 5000 DF80")
        << "is in Init already";
    EXPECT_EQ(bench.control("Send_pre_prog(3)").tooltip(), "0x5C10");
}

TEST(Diagram, StopsWhereTheLinkFails) {
    PanelBench bench;
    bench.session().LinkFailed = true; // as a transfer before has left it
    EXPECT_EQ(bench.effectsOf("Send_pre_prog(0)"), "5A00");
    EXPECT_EQ(bench.effectsOf("Send_pre_prog(6)"), "1300");
    EXPECT_EQ(bench.effectsOf("Cm_ReadAll_RFl"), "DF00");
    EXPECT_EQ(bench.effectsOf("Cm_ReadAll_Rh"), "1D80");
}

TEST(Diagram, ShowsThePresentModeWhileItIsRead) {
    PanelBench bench;
    const auto highlighted = [&] {
        std::string all;
        for (const forms::Control* control : bench.panel().controls())
            if (control->backColor() == presentColor)
                all += control->localName();
        return all;
    };
    const auto lines = [&] {
        std::vector<int> all;
        for (int line = 0; line < 10; ++line)
            if (bench.on<forms::Label>(fmt::format("lin_pre({})", line)).visible())
                all.push_back(line);
        return all;
    };
    using Shown = std::tuple<const char*, const char*, const char*, Bits>;
    for (const auto& [reply, caption, highlight, visible] :
         {Shown{"001B", "Normal Mode", "Send_pre_prog(0)", {0, 2, 3, 5, 6}},
          {"001A", "Normal Mode", "Send_pre_prog(0)", {0, 2, 3, 5, 6}},
          {"0003", "Initialization Mode", "Send_pre_prog(4)", {0}},
          {"000B", "Flash Mode", "Send_pre_prog(5)", {4, 5}},
          {"0000", "Low Power Vdd Off         (or no SPI)", "Send_pre_prog(2)", {7}},
          {"0013", "Normal Request", "read_pre_prog(1)", {9}},
          {"001C", "Low Power Vdd On", "Send_pre_prog(1)", {1, 7, 8}},
          {"00FF", "Low Power Vdd On", "Send_pre_prog(1)", {1, 7, 8}},
          {"8C0A", "8C  A", "", {}},
          {"0119", "1  19", "", {}}}) {
        SCOPED_TRACE(reply);
        bench.bench.connect(makeDevice("scripted", {replyFromHex(reply)}));
        EXPECT_EQ(bench.effects([&] { bench.panel().call("timer_auto_pre_Timer"); }), "DD80");
        EXPECT_EQ(bench.caption("read_pre_prog(0)"), caption);
        EXPECT_EQ(highlighted(), highlight);
        EXPECT_EQ(lines(), visible);
    }
}

TEST(Diagram, IsReadFourTimesASecondUntilThePageIsLeft) {
    PanelBench bench;
    const auto reads = [&](int milliseconds) { return (bench.pass(milliseconds).size() + 1) / 5; };
    auto& tabs = bench.on<forms::TabStrip>("tab_518(0)");
    tabs.click(2);
    bench.tick("pre_prog_box(10)");
    EXPECT_EQ(reads(249), 0U);
    EXPECT_EQ(reads(10), 1U);
    EXPECT_EQ(reads(1000), 4U);
    tabs.click(2);
    EXPECT_TRUE(bench.on<forms::CheckBox>("pre_prog_box(10)").checked());
    tabs.click(3);
    EXPECT_FALSE(bench.on<forms::CheckBox>("pre_prog_box(10)").checked());
    EXPECT_EQ(reads(1000), 0U);
}

TEST(Diagram, ReportsOnceThatThereIsNoBus) {
    PanelBench bench;
    bench.session().USBReady = false;
    bench.tick("pre_prog_box(10)");
    bench.boxes.takeTexts();
    bench.pass(2000);
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_FALSE(bench.on<forms::CheckBox>("pre_prog_box(10)").checked());
}

} // namespace
} // namespace bitlux::test
