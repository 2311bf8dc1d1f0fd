#include "panels/panel_bench.h"

#include "platform/failure.h"

#include <tuple>

namespace bitlux::test {
namespace {

struct RunBench : PanelBench {
    explicit RunBench(const Texts& replies = {"0000"}) : PanelBench("scripted", replies) {}

    bool idle() { return get<forms::Button>("ZT72518.Cm_Run_Seq").enabled(); }
    std::string answers() {
        const Texts high = column("List_Val_read1");
        const Texts low = column("List_Val_read0");
        EXPECT_EQ(high.size(), low.size());
        Texts rows;
        for (std::size_t row = 1; row < high.size(); ++row)
            rows.push_back(high[row] + "," + low[row]);
        return fmt::format("{}", fmt::join(rows, "|"));
    }
    /// Lines that differ: MUX Write 1, 2, ...
    static std::string writes(int count) {
        std::string lines;
        for (int line = 1; line <= count; ++line)
            lines += fmt::format("MUX Write={:X};", line);
        return lines;
    }
    Texts numbers() { return column("List1"); }

    forms::FormSet otherForms{boxes};
};

constexpr const char* poll = " <00 05 00 00 00 00 00 00>";

TEST(SequenceRun, PlaysEveryKindOfLine) {
    RunBench bench({"A50C", "0F10", "FFD5", "0102"});
    bench.work("wd_config(0)=1 wd_config(1)=9");
    EXPECT_EQ(bench.run("MUX Write=5;Wrong name=7f;Special Mode=2;CAN Read Low=;Enhanced 2=10ms;"
                        "Simple WD=no time;Start Watchdog=;One Simple Watchdog=;Wait=1;"
                        "MUX Write= F F"),
              "4005 007F 1300 52AA 1D00 <00 15 00 0A 04 00 00 00> <00 15 00 08 04 00 00 00> "
              "<00 15 00 09 09 00 00 00> 5A00 40FF");
    EXPECT_EQ(bench.answers(), " 1010 0101  (A5), 0000  1100  (C)| 0000  1111  (F), 0001 0000  (10)"
                               "|,| 0000  0001  (1), 0000  0010  (2)|,|,|,|,|,"
                               "| 0000  0001  (1), 0000  0010  (2)");
    EXPECT_EQ(bench.numbers().at(10) + bench.numbers().at(11), "1011  ---->");
    EXPECT_TRUE(bench.idle());
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.run(""), "");
    EXPECT_EQ(bench.answers(), "");
    EXPECT_TRUE(bench.idle());
    bench.run(RunBench::writes(60));
    EXPECT_EQ(bench.numbers().back(), "61  ---->");
}

TEST(SequenceRun, ComputesAParityThatDoesNotCount) {
    RunBench bench;
    bench.panel().part<zt72518::ChipWords>().SPIParityEnabled = true;
    EXPECT_EQ(bench.run("MUX Write=1;Init Misc Write=40;MUX Write=3;CAN Read Low=5;"
                        "Init Misc Write=3F;MUX Write=4"),
              "4001 5040 4003 1D05 503F 4004");
    EXPECT_EQ(bench.panel().part<zt72518::ChipWords>().ParityBit, 1) << "that of 03";
}

TEST(SequenceRun, EndsAtALineThatCannotBe) {
    for (const auto& [line, text] : Rows<const char*, const char*>{
             {"MUX Write=zz", "The value \"zz\" is no hexadecimal number"},
             {"MUX Write=100", "The value \"100\" is more than 8 bits"},
             {"Special Mode=4", "There is no Special Mode 4"},
             {"Wait=a while", "Type mismatch: the text is no number"},
             {"Wait=", "Type mismatch: the text is no number"}}) {
        RunBench bench;
        EXPECT_EQ(bench.run(fmt::format("MUX Write=1;{};MUX Write=2", line)), "4001");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{text});
        EXPECT_TRUE(bench.idle());
    }
    RunBench bench;
    bench.loop.atTurn(2, [&] { bench.lists().clear(); });
    EXPECT_EQ(bench.run(RunBench::writes(4)), "4001 4002");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_TRUE(bench.idle());
}

TEST(SequenceRun, RepeatsLinesUntilItIsStopped) {
    RunBench bench;
    bench.work("Ch_Loop Val_loop(0)=3 Val_loop(1)=5");
    std::size_t most = 0;
    for (int turn = 1; turn < 20; ++turn)
        bench.loop.atTurn(turn,
                          [&] { most = std::max(most, bench.column("List_Val_read1").size()); });
    bench.atTurn(20, "Cm_Stop_Loop");
    EXPECT_EQ(bench.run(RunBench::writes(6)),
              "4001 4002 4003 4004 4005 4003 4004 4005 4003 4004 4005 4006");
    EXPECT_LE(most, 6U) << "never past line 5";
    EXPECT_EQ(bench.column("List_Val_read1").size(), 7U);
    EXPECT_EQ(bench.run(), "4001 4002 4003 4004 4005 4006") << "a stop goes on counting";
    bench.panel().sequence.variables.LoopStopRequest = false;
    bench.work("Val_loop(1)=7");
    EXPECT_EQ(bench.run(), "4001 4002 4003 4004 4005 4006") << "the loop is not within the lines";
}

TEST(SequenceRun, StopsForTheLinesOfTheChip) {
    const std::string first = "Ch_FirstCondition Text_FirstCondition=2 ";
    const std::string second = first + "Ch_SecondCondition Cm_PassCondition1 "
                                       "Text_SecondCondition=3 ";
    for (const auto& [hands, reset, lines, before, after] :
         Rows<std::string, bool, int, std::string, const char*>{
             {first + "R_Condition1(0)", true, 2, "4001 4002", " 4003 4004"},
             {first + "R_Condition1(1)", false, 2, "4001 4002", " 4003 4004"},
             {second + "R_Condition2(0)", true, 3, "4001 4002 4003", " 4004"},
             {second + "R_Condition2(1)", false, 3, "4001 4002 4003", " 4004"}}) {
        RunBench bench;
        bench.work(hands);
        // The other line does not count; the right one ends it.
        for (const auto& [turn, isReset] : {std::pair{lines + 2, reset}, {lines + 4, !reset}})
            bench.loop.atTurn(turn,
                              [&dongle = bench.dongle, on = isReset] { dongle.setLines(on, !on); });
        EXPECT_EQ(bench.run(RunBench::writes(4)), before + poll + poll + poll + poll + poll + after)
            << hands;
        const auto& stops = bench.panel().part<SequenceStops>();
        EXPECT_FALSE(stops.Condition1Seen || stops.Condition2Seen);
    }
}

TEST(SequenceRun, LetsTheUserPassACondition) {
    RunBench bench;
    bench.work("Ch_FirstCondition Text_FirstCondition=1");
    bench.atTurn(3, "Cm_PassCondition1");
    EXPECT_EQ(bench.run(RunBench::writes(2)), std::string("4001") + poll + poll + " 4002");
    EXPECT_EQ(bench.run(), "4001 4002") << "one press goes on counting";
    for (const char* beyond : {"7", "1e300", "-3"}) {
        bench.work(fmt::format("Text_FirstCondition={}", beyond));
        EXPECT_EQ(bench.run(), "4001 4002") << beyond;
    }
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(SequenceRun, ReportsOnceThatTheDongleIsGoneDuringACondition) {
    for (const bool plugged : {true, false}) {
        RunBench bench;
        if (!plugged)
            bench.session().USBReady = false;
        bench.work("Ch_FirstCondition Text_FirstCondition=0");
        bench.loop.atTurn(2, [&] { bench.dongle.unplug(); });
        bench.loop.atTurn(3, [&] { EXPECT_FALSE(bench.idle()); });
        bench.atTurn(40, "Cm_PassCondition1");
        const std::int64_t start = bench.clock.nanoseconds();
        bench.run();
        EXPECT_EQ(bench.boxes.takeTexts().size(), plugged ? 1U : 0U);
        EXPECT_GT(bench.clock.nanoseconds() - start, 300 * millisecond) << "it sleeps";
    }
}

TEST(SequenceRun, SamplesAgainWhenTheDongleIsBack) {
    RunBench bench;
    bench.work("Ch_FirstCondition Text_FirstCondition=0");
    bench.loop.atTurn(2, [&] { bench.dongle.unplug(); });
    bench.loop.atTurn(9, [&] {
        bench.dongle.plug();
        bench.dongle.setLines(false, true);
        bench.program.mainForm().call("Start_USB");
    });
    EXPECT_EQ(bench.run(RunBench::writes(1)).substr(0, 25), "<00 05 00 00 00 00 00 00>");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
}

TEST(SequenceRun, KeepsTheSecondConditionThatTheFirstOneBrought) {
    RunBench bench;
    bench.work("Ch_FirstCondition Ch_SecondCondition Text_FirstCondition=1 "
               "Text_SecondCondition=2 Cm_PassCondition1");
    bench.atTurn(1, "Ch_FirstCondition");
    bench.atTurn(4, "Cm_PassCondition2");
    EXPECT_EQ(bench.run(RunBench::writes(3)), std::string("4001 4002") + poll + poll + " 4003");
}

TEST(SequenceRun, IsOneAtATime) {
    RunBench bench;
    bench.loop.atTurn(1, [&] { bench.panel().call("Cm_Run_Seq"); });
    EXPECT_EQ(bench.run(RunBench::writes(2)), "4001 4002");
    EXPECT_TRUE(bench.idle());
}

TEST(SequenceRun, WaitsAsLongAsItSays) {
    for (const auto& [value, milliseconds] : Rows<const char*, std::int64_t>{
             {"0", 0}, {"-5", 0}, {"1", 1}, {"2.6", 3}, {"70000", 70'000}}) {
        SCOPED_TRACE(value);
        RunBench bench;
        bench.fill(fmt::format("MUX Write=1;Wait={};MUX Write=2", value));
        constexpr std::int64_t word = 2 * SimulatedDongle::transferTime + 16'000;
        const std::int64_t start = bench.clock.nanoseconds();
        const std::int64_t wait = milliseconds * millisecond;
        const int turns = bench.loop.turns();
        if (wait > 0)
            bench.loop.atTime(start + word + wait - 1, [&] { EXPECT_EQ(bench.sent(), "4001"); });
        bench.press("Cm_Run_Seq");
        EXPECT_EQ(bench.clock.nanoseconds() - start, word + wait + word);
        EXPECT_EQ(bench.sent(), wait > 0 ? "4002" : "4001 4002");
        EXPECT_LE(bench.loop.turns() - turns, 5) << "it sleeps";
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    }
}

TEST(SequenceRun, EndsAWaitWhenItsTimerIsDisabled) {
    for (const bool driven : {true, false}) {
        RunBench bench;
        if (!driven)
            bench.loop.drive(bench.otherForms);
        const std::int64_t start = bench.clock.nanoseconds();
        if (driven)
            bench.loop.atTime(start + 70 * millisecond,
                              [&] { bench.panel().call("Timer1_Timer"); });
        bench.run("Wait=90");
        EXPECT_EQ(bench.clock.nanoseconds() - start, (driven ? 70 : 90) * millisecond);
        EXPECT_FALSE(bench.panel().sequence.player.Timer1.enabled());
    }
}

TEST(SequenceRun, ReportsItsPosition) {
    using Awaited = SequenceProgress::Awaited;
    RunBench bench;
    SequencePlayer& run = bench.panel().sequence.player;
    bench.work("Ch_FirstCondition Text_FirstCondition=2 R_Condition1(1)");
    std::vector<std::tuple<int, std::int64_t, Awaited>> seen;
    const Subscription watch = run.progressChanged.follow([&] {
        if (!run.progress())
            return;
        seen.emplace_back(run.progress()->line, run.remainingWait(), run.progress()->awaited);
        if (seen.back() == std::tuple(2, 0, Awaited::Interrupt))
            bench.press("Cm_PassCondition1");
    });
    bench.run("MUX Write=1;MUX Write=2;MUX Write=3;Wait=40");
    const decltype(seen) expected{{2, 0, Awaited::Interrupt},
                                  {2, 0, Awaited::Nothing},
                                  {4, 40 * millisecond, Awaited::Nothing},
                                  {4, 0, Awaited::Nothing}};
    EXPECT_EQ(seen, expected);
    EXPECT_FALSE(run.progress());

    bench.fill("MUX Write=1;MUX Write=no number");
    EXPECT_THROW(bench.panel().call("RunSequenceRange", 1, 2), Failure);
    EXPECT_FALSE(run.progress()) << "nor after a run that failed";
}

TEST(SequenceRun, TriggersAtOneLine) {
    RunBench bench;
    bench.work("Val_loop(3)=2");
    for (const auto& [lines, words] : Rows<const char*, const char*>{
             {"MUX Write=1;MUX Write=2;MUX Write=3", "4001 4002! 4003"},
             {"Wait=1;Simple WD=1ms;MUX Write=1", "<80 15 00 08 00 00 00 00> 4001"},
             {"MUX Write=1;Special Mode=0", "4001 1300! 523F"},
             {"MUX Write=1;Wait=1;MUX Write=2", "4001 4002"}})
        EXPECT_EQ(bench.run(lines), words);
}

TEST(SequenceRun, GoesOnWithoutSendingWhenTheFormGoes) {
    for (const auto& [hands, lines] : Rows<const char*, std::string>{
             {"", RunBench::writes(50)},
             {"", "MUX Write=1;Wait=90;MUX Write=2"},
             {"Ch_FirstCondition Text_FirstCondition=1", RunBench::writes(2)},
             {"Ch_Loop Val_loop(0)=1 Val_loop(1)=1", RunBench::writes(1)}}) {
        SCOPED_TRACE(lines);
        RunBench bench;
        bench.work(hands);
        bool gone = false;
        bench.program.forms().formGoing.subscribe([&](forms::Form&) {
            gone = true;
            bench.sent();
        });
        bench.loop.atTurn(2, [&] { bench.program.forms().unload("ZT72518"); });
        bench.fill(lines);
        bench.press("Cm_Run_Seq");
        EXPECT_TRUE(gone);
        EXPECT_EQ(bench.sent(), "");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
        EXPECT_TRUE(bench.panel().sequence.variables.RunEnabled) << "a new form starts fresh";
    }
}

TEST(SequenceRun, EndsWithTheProgram) {
    RunBench bench;
    bench.loop.atTurn(2, [&] { bench.program.end(); });
    EXPECT_EQ(bench.run("MUX Write=1;Wait=90;MUX Write=2"), "4001");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(SequenceRun, GoesOnAfterAFailedTransfer) {
    RunBench bench;
    bench.loop.atTurn(1, [&] { bench.dongle.unplug(); });
    EXPECT_EQ(bench.run(RunBench::writes(3)), "4001");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Check the USB cable and restart program"})
        << "once a run";
    EXPECT_EQ(bench.column("List_Val_read1").size(), 4U);
}

} // namespace
} // namespace bitlux::test
