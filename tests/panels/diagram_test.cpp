#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

constexpr forms::Color present = 0xC0C000;

struct Mode {
    int button;
    const char* words;
};

/// What they send on the ZT72518D with every box the other way round than at first.
const std::vector<Mode> turned{
    {0, "5A00 60C0 6600 6800 62FF DF80 5E0F"},
    {1, "E380 E100 E700 E900 6080 6600 6800 6255 580E 5CC0"},
    {2, "E380 E100 E700 E900 6080 6600 6800 6255 580E 5E01 5C70"},
    {4, "1300 5256 4A04 4C00 4E56 5000 DF80"},
};

TEST(Diagram, LeadsFromModeToModeAsItsBoxesTell) {
    PanelBench bench("scripted", {"03E9"}); // normal mode, 10 1001 at random
    const auto button = [](int index) { return fmt::format("Send_pre_prog({})", index); };
    for (int box = 0; box <= 16; ++box)
        if (box != 10)
            bench.tick(fmt::format("pre_prog_box({})", box));
    for (const Mode& mode : turned)
        EXPECT_EQ(bench.effectsOf(button(mode.button)), mode.words) << mode.button;
    bench.on<forms::Button>(button(4)).setBackColor(present);
    EXPECT_EQ(bench.effectsOf(button(4)), "4A04 4C00 4E56 5000 DF80") << "is in Init already";
    EXPECT_EQ(bench.on<forms::Button>(button(3)).tooltip(), "0x5C10");
}

TEST(Diagram, StopsWhereTheLinkFails) {
    PanelBench bench;
    bench.session().LinkFailed = true; // as a transfer before has left it
    EXPECT_EQ(bench.effectsOf("Send_pre_prog(0)"), "5A00");
    EXPECT_EQ(bench.effectsOf("Send_pre_prog(6)"), "1300");
    EXPECT_EQ(bench.effectsOf("Cm_ReadAll_RFl"), "DF00");
    EXPECT_EQ(bench.effectsOf("Cm_ReadAll_Rh"), "1D80");
}

struct Shown {
    const char* reply;
    const char* caption;
    const char* highlight;
    std::vector<int> lines;
};

TEST(Diagram, ShowsThePresentModeWhileItIsRead) {
    PanelBench bench;
    const auto highlighted = [&] {
        std::string all;
        for (const forms::Control* control : bench.panel().controls())
            if (control->backColor() == present)
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
    for (const Shown& shown :
         {Shown{"001B", "Normal Mode", "Send_pre_prog(0)", {0, 2, 3, 5, 6}},
          Shown{"001A", "Normal Mode", "Send_pre_prog(0)", {0, 2, 3, 5, 6}},
          Shown{"0003", "Initialization Mode", "Send_pre_prog(4)", {0}},
          Shown{"000B", "Flash Mode", "Send_pre_prog(5)", {4, 5}},
          Shown{"0000", "Low Power Vdd Off         (or no SPI)", "Send_pre_prog(2)", {7}},
          Shown{"0013", "Normal Request", "read_pre_prog(1)", {9}},
          Shown{"001C", "Low Power Vdd On", "Send_pre_prog(1)", {1, 7, 8}},
          Shown{"00FF", "Low Power Vdd On", "Send_pre_prog(1)", {1, 7, 8}},
          Shown{"8C0A", "8C  A", "", {}}, Shown{"0119", "1  19", "", {}}}) {
        SCOPED_TRACE(shown.reply);
        bench.bench.connect(makeDevice("scripted", {replyFromHex(shown.reply)}));
        EXPECT_EQ(bench.effects([&] { bench.panel().call("timer_auto_pre_Timer"); }), "DD80");
        EXPECT_EQ(bench.caption("read_pre_prog(0)"), shown.caption);
        EXPECT_EQ(highlighted(), shown.highlight);
        EXPECT_EQ(lines(), shown.lines);
    }
}

TEST(Diagram, IsReadFourTimesASecondUntilThePageIsLeft) {
    PanelBench bench;
    bench.loop.drive(bench.program.forms());
    const auto reads = [&](int milliseconds) {
        const std::int64_t end = bench.clock.nanoseconds() + milliseconds * millisecond;
        const std::string words = bench.effects([&] {
            while (bench.clock.nanoseconds() < end)
                bench.loop.waitForEvents(end - bench.clock.nanoseconds());
        });
        return words.empty() ? 0U : (words.size() + 1) / 5;
    };
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

TEST(Diagram, TellsOnceThatThereIsNoBus) {
    PanelBench bench;
    bench.loop.drive(bench.program.forms());
    bench.session().USBReady = false;
    bench.tick("pre_prog_box(10)");
    bench.boxes.takeTexts();
    for (int i = 0; i < 8; ++i)
        bench.loop.waitForEvents(250 * millisecond);
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_FALSE(bench.on<forms::CheckBox>("pre_prog_box(10)").checked());
}

} // namespace
} // namespace bitlux::test
