#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

constexpr const char* everyRead =
    "0100 0B00 0D00 0F00 1100 1300 1500 1700 1900 1B00 1D00 1F00 2100 2300 2500 2700 2900 "
    "1D80 2180 2380 2580 2780 2980 DD00 DF00 E100 E300 E500 E700 E900 "
    "DD80 DF80 E180 E380 E580 BF00";

struct AutoBench : PanelBench {
    forms::CheckBox& box(int index) { return panel().part<AutoReads>().boxes(index); }
    std::string ticked() {
        Texts numbers;
        for (int index = 0; index <= 43; ++index)
            if (box(index).checked())
                numbers.push_back(fmt::format("{}", index));
        return fmt::format("{}", fmt::join(numbers, " "));
    }
    void tickAll() {
        for (int index = 0; index <= 36; ++index)
            if (index != 34)
                box(index).setValue(1);
    }
};

TEST(AutoReads, ReadWhatIsTickedTwiceASecondInOneOrder) {
    AutoBench bench;
    bench.tickAll();
    EXPECT_EQ(bench.pass(2000), "");
    bench.tick("read_auto(34)");
    EXPECT_EQ(bench.pass(499), "");
    EXPECT_EQ(bench.pass(1), everyRead);
    for (int index = 0; index <= 36; ++index)
        if (index != 35 && index != 3 && index != 34)
            bench.box(index).setValue(0);
    EXPECT_EQ(bench.pass(1000), "0F00 E580 0F00 E580");
    bench.tick("read_auto(34)");
    EXPECT_EQ(bench.pass(1000), "") << "although boxes are ticked";
}

TEST(AutoReads, SwitchAndTickTogether) {
    AutoBench bench;
    for (const auto& [box, ticked] : {std::pair{34, "34 37 38"},
                                      {37, "34 37"},
                                      {38, "34 37 38"},
                                      {41, "0 1 2 3 4 5 6 7 8 9 11 12 13 14 15 16 41"},
                                      {42, "17 18 19 20 21 22 42"},
                                      {43, "24 25 26 27 28 29 30 31 32 33 35 43"}}) {
        bench.tick(fmt::format("read_auto({})", box));
        EXPECT_EQ(bench.ticked(), ticked);
        EXPECT_EQ(bench.panel().part<AutoReads>().timer.enabled(), box < 39);
        bench.tick(fmt::format("read_auto({})", box));
        EXPECT_EQ(bench.ticked(), "");
        EXPECT_FALSE(bench.panel().part<AutoReads>().timer.enabled());
    }
}

TEST(AutoReads, EndWhenTheChipIsOutOfReach) {
    AutoBench failed;
    failed.tickAll();
    failed.tick("read_auto(34)");
    failed.session().LinkFailed = true;
    EXPECT_EQ(failed.pass(1000), "");
    EXPECT_FALSE(failed.panel().part<AutoReads>().timer.enabled());
    EXPECT_FALSE(failed.box(34).checked()) << "a tick that means nothing";
    EXPECT_TRUE(failed.box(0).checked());

    for (const bool unplugged : {true, false}) {
        AutoBench bench;
        bench.tickAll();
        bench.tick("read_auto(34)");
        if (unplugged)
            bench.session().USBReady = false; // and there is no port
        else
            bench.dongle.setFaults(DongleFaults({dongleFaultFrom("gone")}));
        bench.pass(2000);
        EXPECT_EQ(bench.boxes.takeTexts().size(), 1U) << "one message is enough";
        EXPECT_EQ(bench.ticked(), "35 36");
        EXPECT_FALSE(bench.panel().part<AutoReads>().timer.enabled());
    }
}

} // namespace
} // namespace bitlux::test
