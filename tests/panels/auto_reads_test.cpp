#include "sequencer_bench.h"

#include <functional>
#include <memory>
#include <sstream>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* everyRead =
    "Cm_Mux_Rl Cm_Init_Reg_Rl Cm_Init_Wdog_Rl Cm_Init_Lin_Io_Rl Cm_Init_Misc_Rl Cm_Spe_Mode_Rl "
    "Cm_Timer0_Rl Cm_Timer1_Rl Cm_Timer2_Rl Cm_Wd_Refresh_Rl Cm_Mode_Rm_Rl Cm_Regulateur_Rl "
    "Cm_CAN_Rl Cm_Io_Rl Cm_interrupts_Rl Cm_Lin0_Rl Cm_Lin1_Rl Cm_Mode_Rm_Rh Cm_CAN_Rh Cm_I0_Rh "
    "Cm_Interrupts_Rh CM_Lin0_Rh Cm_Lin1_Rh Cm_RFl(0) Cm_RFl(1) Cm_RFl(2) Cm_RFl(3) Cm_RFl(4) "
    "Cm_RFl(5) Cm_RFl(6) Cm_RFh(0) Cm_RFh(1) Cm_RFh(2) Cm_RFh(3) Cm_RFh(4) Cm_ReadAll_Rl(1)";

/// Notes the reads in place of sending them.
struct AutoBench : SequencerBench {
    AutoBench() {
        std::istringstream names(everyRead);
        for (std::string name; names >> name;)
            replace(name, name.substr(0, name.find('(')));
    }
    void replace(const std::string& name, const std::string& button) {
        if (button == name)
            panel().procedure(button + "_Click", [this, name] { note(name); });
        else
            panel().procedure(button + "_Click", [this, button](int index) {
                note(fmt::format("{}({})", button, index));
            });
    }
    void note(const std::string& name) {
        done += (done.empty() ? "" : " ") + name;
        if (atRead)
            atRead();
    }
    forms::CheckBox& box(int index) { return panel().sequencer.autoReads.read_auto(index); }
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
    std::string pass(int milliseconds) {
        done.clear();
        for (const std::int64_t end = clock.nanoseconds() + milliseconds * millisecond;
             clock.nanoseconds() < end;)
            loop.waitForEvents(end - clock.nanoseconds());
        return done;
    }

    std::string done;
    std::function<void()> atRead;
};

TEST(AutoReads, ReadWhatIsTickedTwiceASecondInOneOrder) {
    AutoBench bench;
    bench.tickAll();
    EXPECT_EQ(bench.pass(2000), "");
    bench.toggle("read_auto(34)");
    EXPECT_EQ(bench.pass(499), "");
    EXPECT_EQ(bench.pass(1), everyRead);
    for (int index = 0; index <= 36; ++index)
        if (index != 35 && index != 3 && index != 34)
            bench.box(index).setValue(0);
    EXPECT_EQ(bench.pass(1000), "Cm_Init_Lin_Io_Rl Cm_RFh(4) Cm_Init_Lin_Io_Rl Cm_RFh(4)");
    bench.toggle("read_auto(34)");
    EXPECT_EQ(bench.pass(1000), "") << "although boxes are ticked";
}

TEST(AutoReads, SwitchAndTickTogether) {
    AutoBench bench;
    struct Case {
        int box;
        const char* on;
        const char* off;
    };
    for (const Case& c : {Case{34, "34 37 38", ""}, Case{37, "34 37", ""}, Case{38, "34 37 38", ""},
                          Case{41, "0 1 2 3 4 5 6 7 8 9 11 12 13 14 15 16 41", ""},
                          Case{42, "17 18 19 20 21 22 42", ""},
                          Case{43, "24 25 26 27 28 29 30 31 32 33 35 43", ""}}) {
        bench.toggle(fmt::format("read_auto({})", c.box));
        EXPECT_EQ(bench.ticked(), c.on);
        EXPECT_EQ(bench.panel().sequencer.autoReads.timer_auto.enabled(), c.box < 39);
        bench.toggle(fmt::format("read_auto({})", c.box));
        EXPECT_EQ(bench.ticked(), c.off);
        EXPECT_FALSE(bench.panel().sequencer.autoReads.timer_auto.enabled());
    }
}

TEST(AutoReads, EndWhenTheChipIsOutOfReach) {
    AutoBench failed;
    failed.tickAll();
    failed.toggle("read_auto(34)");
    failed.session().LinkFailed = true;
    EXPECT_EQ(failed.pass(1000), "");
    EXPECT_FALSE(failed.panel().sequencer.autoReads.timer_auto.enabled());

    for (const bool unplugged : {true, false}) {
        AutoBench bench;
        bench.tickAll();
        bench.toggle("read_auto(34)");
        bench.atRead = [&] {
            if (unplugged)
                bench.session().USBReady = false; // and there is no port
            else
                bench.session().LinkFailed = true;
        };
        EXPECT_EQ(bench.pass(1000), "Cm_Mux_Rl") << "one message is enough";
        EXPECT_EQ(bench.ticked(), "35 36");
        EXPECT_FALSE(bench.panel().sequencer.autoReads.timer_auto.enabled());
    }
}

TEST(AutoReads, DoNotBeginInEachOther) {
    AutoBench bench;
    bench.box(0).setValue(1);
    bench.box(1).setValue(1);
    bench.toggle("read_auto(34)");
    bench.atRead = [&] { // as under a box that stays on the screen
        bench.atRead = {};
        bench.loop.waitForEvents(700 * millisecond);
    };
    EXPECT_EQ(bench.pass(500), "Cm_Mux_Rl Cm_Init_Reg_Rl");
}

} // namespace
} // namespace bitlux::test
