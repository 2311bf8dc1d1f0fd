#include "batch_bench.h"

#include "transfer/extra_pins.h"

#include <functional>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A bench on the Batch page with the commands a (0x0A) and b (0x0B), all words logged.
struct RunBench : BatchBench {
    RunBench() {
        save("a", "A");
        save("b", "B");
        openBatchPage();
    }
    MultipleRun& run() { return program.mainForm().multiple; }
    /// The log after a run, in short: words as they were sent, texts unchanged.
    Texts logged() {
        EXPECT_EQ(runButtons(*this), idleButtons);
        Texts result;
        const Texts all = log();
        for (std::size_t i = 0; i < all.size(); ++i)
            if (all[i] == "SPI Word Sent:") {
                result.push_back(all[i + 1].substr(2));
                i += 4;
            } else if (all[i] != " ") {
                result.push_back(all[i]);
            }
        program.mainForm().log.clear();
        return result;
    }
    std::int64_t elapsedIn(const std::function<void()>& action) {
        const std::int64_t start = clock.nanoseconds();
        action();
        return clock.nanoseconds() - start;
    }
};

TEST(MultipleRun, PlaysTheLines) {
    const char* const noCommand = "No Quick Commands are selected!";
    const char* const noUnit = "There was a problem converting the units.";
    const char* const noMatch = "There was a problem.  No match found for '*' command.";
    const char* const noLevel = "Internal Error.  Couldn't determine High or Low.";
    const Rows<Texts, Texts, Texts> cases{
        {{"b", "a", "a"}, {"0B", "0A", "0A"}, {}},
        {{"a", "gone", "b"}, {"0A"}, {noCommand}},
        {{"A", "b"}, {}, {noCommand}},
        {{"a", "", "b"}, {"0A"}, {noCommand}},
        {{"* Wait 0 ms", "a"}, {"Waiting 0 ms ...", "Done Waiting", "0A"}, {}},
        {{"* Wait 5 weeks", "a"}, {}, {noUnit}},
        {{"* Wait x s", "a"}, {"Waiting x s ..."}, {"Type mismatch: the text is no number"}},
        {{"* Wait 1e400 s", "a"}, {"Waiting 1e400 s ..."}, {"Overflow"}},
        {{"* Wait 1  s", "a"}, {}, {noUnit}},
        {{"*", "a"}, {}, {noMatch}},
        {{"* pause", "a"}, {}, {noMatch}},
        {{"* Set HIGH: NO PIN", "a"}, {"0A"}, {}},
        {{"* Set HIGH: WAKE UP", "* Set HIGH: WAKE UP", "* Set LOW: WAKE UP", "* Set LOW: WAKE UP"},
         {"Set HIGH: WAKE UP", "Set HIGH: WAKE UP (already high)", "Set LOW: WAKE UP",
          "Set LOW: WAKE UP (already low)"},
         {}},
        {{"* Set UP: WAKE UP", "a"}, {"0A"}, {noLevel}},
    };
    for (const auto& [lines, log, boxes] : cases) {
        RunBench bench;
        nameDataPin(bench.session(), 5, "WAKE UP");
        bench.program.mainForm().extraPins.fill({"RESET", "WAKE UP"});
        EXPECT_EQ(bench.play(lines), boxes) << lines[0];
        EXPECT_EQ(bench.logged(), log) << lines[0];
        EXPECT_EQ(bench.session().DataPortPins.level(5), 0) << lines[0];
    }
}

TEST(MultipleRun, ReportsMissingPinsUntilTheNextRun) {
    RunBench bench;
    nameDataPin(bench.session(), 5, "WAKE");
    ExtraPinRows& pins = bench.program.mainForm().extraPins;
    pins.fill({"WAKE"});
    bench.play({"gone"});
    EXPECT_EQ(bench.notice(), "There is no Quick Command \"gone\"");
    bench.play({"* Wait 1 ms", "* Set LOW: A", "a", "* Set HIGH: WAKE", "* Set HIGH: B"});
    EXPECT_EQ(bench.notice(), "Line 2: there is no extra pin \"A\", nor those of 1 more line");
    pins.fill({"WAKE", "A"});
    EXPECT_EQ(bench.notice(), "Line 5: there is no extra pin \"B\"");
    bench.play({"* Set LOW: WAKE", "a"});
    EXPECT_EQ(bench.notice(), "");
    // In a continuous run a later pass keeps the notice.
    bench.setToSend({"* Set LOW: B", "a"});
    bench.sendContinuously(3);
    EXPECT_EQ(bench.notice(), "Line 1: there is no extra pin \"B\"");
}

TEST(MultipleRun, WaitsAsLongAsItSays) {
    RunBench bench;
    for (const auto& [wait, milliseconds] :
         {row("0 ms", 0), row("1 ms", 1), row("1.5 s", 1500), row("2 min", 120'000),
          row("3 hrs", 10'800'000), row("23 days", 1'987'200'000), row("-4 s", 0)}) {
        const std::int64_t start = bench.clock.nanoseconds();
        const int turns = bench.loop.turns();
        EXPECT_EQ(bench.play({fmt::format("* Wait {}", wait)}), Texts{});
        EXPECT_EQ(bench.clock.nanoseconds() - start, milliseconds * millisecond) << wait;
        EXPECT_LE(bench.loop.turns() - turns, 2) << wait << ": it sleeps";
    }
}

TEST(MultipleRun, PausesUntilTheUserGoesOn) {
    for (const bool goOn : {true, false})
        for (const char* button : {"frmMain.cmdSendOnce", "frmMain.cmdSendContinuous"}) {
            RunBench bench;
            bench.boxes.answer(goOn ? MessageBox::Answer::Ok : MessageBox::Answer::Cancel);
            bench.setToSend({"a", "* Pause", "b"});
            if (goOn)
                bench.loop.atTurn(1, [&] { bench.click("frmMain.cmdStopContinuous"); });
            bench.click(button);
            EXPECT_EQ(bench.boxes.takeTexts(),
                      Texts{"SPI routine paused.  Click OK to continue,\r\n"
                            "or click Cancel to stop."});
            const MessageBox& box = bench.boxes.shown().front();
            EXPECT_EQ(box.title, "SPI Transfers Paused");
            EXPECT_EQ(box.buttons, MessageBox::Buttons::OkCancel);
            EXPECT_EQ(box.icon, MessageBox::Icon::Information);
            EXPECT_EQ(bench.logged(), goOn ? (Texts{"0A", "0B"}) : Texts{"0A"}) << button;
        }
}

TEST(MultipleRun, EndsAWaitAtOnceAndPlaysTheRest) {
    for (const auto& [start, stop] :
         {row("cmdSendOnce", "cmdCancelSingle"), row("cmdSendContinuous", "cmdStopContinuous")}) {
        RunBench bench;
        forms::Form& form = bench.program.mainForm();
        forms::Control& startButton = form.control(start);
        forms::Control& stopButton = form.control(stop);
        bench.setToSend({"* Wait 1 hrs", "a", "* Wait 1 hrs", "b"});
        const std::int64_t at = bench.clock.nanoseconds() + 7 * millisecond;
        bench.loop.atTime(at - 5 * millisecond, [] {}); // an event that does not concern it
        bench.loop.atTime(at, [&] { stopButton.click(); });
        EXPECT_LT(bench.elapsedIn([&] { startButton.click(); }), 8 * millisecond) << start;
        EXPECT_EQ(bench.logged(), (Texts{"Waiting 1 hrs ...", "Done Waiting", "0A",
                                         "Waiting 1 hrs ...", "Done Waiting", "0B"}))
            << start;
    }
}

TEST(MultipleRun, WaitsOnWhileTheUserWorksElsewhere) {
    constexpr std::int64_t second = 1000 * millisecond;
    RunBench bench;
    bench.setToSend({"* Wait 600 s", "a"});
    bench.loop.atTime(bench.clock.nanoseconds() + 5 * second, [&] {
        bench.get<forms::TabStrip>("frmMain.TabStripMain").click(1);
        bench.edit("frmMain.txtHexWordToSend", "3C");
        bench.get<forms::TextBox>("frmMain.txtHexWordToSend").key(forms::KeyCode::Enter);
        EXPECT_EQ(runButtons(bench), ".+-.+");
    });
    EXPECT_EQ(bench.elapsedIn([&] { bench.click("frmMain.cmdSendOnce"); }) / second, 600);
    EXPECT_EQ(bench.logged().at(1), "3C");
}

TEST(MultipleRun, CancelEndsTheRunThatAnotherBeganInToo) {
    RunBench bench;
    bench.setToSend({"* Wait 1 hrs", "a"});
    RunControls& run = bench.program.mainForm().run;
    const std::int64_t at = bench.clock.nanoseconds();
    bench.loop.atTime(at + millisecond, [&run] { run.cmdSendOnce_Click(); });
    bench.loop.atTime(at + 2 * millisecond, [&run] { run.cmdCancelSingle.click(); });
    EXPECT_LT(bench.elapsedIn([&run] { run.cmdSendContinuous.click(); }), 3 * millisecond);
    EXPECT_EQ(bench.logged().back(), "0A");
}

TEST(MultipleRun, AbortEndsItWithoutSendingMore) {
    const auto abort = [](RunBench& bench) { bench.click("frmMain.cmdAbort"); };
    const Rows<const char*, std::string, std::function<void(RunBench&)>, Texts> cases{
        {"continuously", "frmMain.cmdSendContinuous", abort, {"Waiting 1 hrs ...", "Wait Aborted"}},
        {"behind Cancel",
         "frmMain.cmdSendOnce",
         [&](RunBench& bench) {
             bench.click("frmMain.cmdCancelSingle");
             bench.loop.atTurn(1, [&] { abort(bench); });
         },
         {"Waiting 1 hrs ...", "Done Waiting", "0A", "Waiting 1 hrs ...", "Wait Aborted"}},
        {"in a run within the wait",
         "frmMain.cmdSendContinuous",
         [&](RunBench& bench) {
             bench.loop.atTurn(1, [&] { abort(bench); });
             bench.program.mainForm().run.cmdSendOnce_Click();
         },
         {"Waiting 1 hrs ...", "Waiting 1 hrs ...", "Wait Aborted", "Wait Aborted"}},
        {"and sends again",
         "frmMain.cmdSendOnce",
         [&](RunBench& bench) {
             abort(bench);
             bench.setToSend({"b"});
             bench.click("frmMain.cmdSendOnce");
         },
         {"Waiting 1 hrs ...", "0B", "Wait Aborted"}},
    };
    for (const auto& [what, start, event, log] : cases) {
        RunBench bench;
        bench.setToSend({"* Wait 1 hrs", "a", "* Wait 1 hrs", "b"});
        const std::int64_t at = bench.clock.nanoseconds();
        bench.loop.atTime(at + millisecond, [&bench, act = event] { act(bench); });
        bench.click(start);
        EXPECT_LT(bench.clock.nanoseconds() - at, 2 * millisecond) << what;
        EXPECT_EQ(bench.logged(), log) << what;
    }
}

TEST(MultipleRun, LogsAContinuousRunByItsRules) {
    const Rows<const char*, Texts, Texts> cases{
        {"optLogFixedNumber",
         {"a", "b"},
         {"0A", "0B", "0A", "0B", "Continuous Send Log Suspended"}},
        {"optLogFixedNumber",
         {"a", "* Wait 0 s"},
         {"0A", "Waiting 0 s ...", "Done Waiting", "0A", "Waiting 0 s ...", "Done Waiting"}},
        {"optLogForever", {"a", "b"}, {"0A", "0B", "0A", "0B", "0A", "0B", "0A", "0B"}},
        {"optLogOff", {"a", "b"}, {"Continuous Send Log Disabled"}},
        {"optLogOff", {"* Wait 0 s", "a"}, {}},
    };
    for (const auto& [option, lines, log] : cases) {
        RunBench bench;
        bench.edit("frmConfigureSPI.txtMessageLimit", "2");
        bench.get<forms::OptionButton>("frmConfigureSPI." + std::string(option)).setValue(true);
        bench.session().ContinuousLogEnabled =
            option == std::string("optLogOff") ? ConstOff : ConstOn;
        bench.session().ContinuousLogLimit = 2;
        bench.setToSend(lines);
        bench.sendContinuously(4);
        EXPECT_EQ(bench.logged(), log) << option << " " << lines[0];
    }
}

TEST(MultipleRun, SleepsWithAnEmptyListUntilThereIsSomethingOrItIsStopped) {
    RunBench bench;
    bench.setToSend({});
    const int turns = bench.loop.turns();
    const std::int64_t at = bench.clock.nanoseconds();
    bench.loop.atTime(at + 60'000 * millisecond, [&] { bench.setToSend({"a"}); });
    bench.loop.atTime(at + 60'001 * millisecond, [&] { bench.click("frmMain.cmdStopContinuous"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_LT(bench.loop.turns() - turns, 200);
    EXPECT_EQ(runButtons(bench), idleButtons);
    EXPECT_EQ(bench.play({}), Texts{"Nothing to send."});
}

TEST(MultipleRun, RefusesAFullLog) {
    RunBench bench;
    bench.session().SessionLogCapacity = 5;
    EXPECT_EQ(bench.play({"a", "b"}), Texts{});
    EXPECT_EQ(bench.play({"a"}),
              Texts{"The Session Log is full.  Please save or clear the log before continuing.\r\n"
                    "The last SPI word will not be sent."});
    EXPECT_EQ(bench.logged(), (Texts{"0A", "0B"}));
}

TEST(MultipleRun, GoesOnAfterAFailedTransfer) {
    RunBench bench;
    bench.session().ParallelPortReady = false;
    for (int presses = 1; presses <= 2; ++presses) {
        EXPECT_EQ(bench.play({"a", "* Wait 1 s", "b"}).size(), 1U) << "not once a word";
        EXPECT_EQ(bench.logged(), (Texts{"Waiting 1 s ...", "Done Waiting"}));
    }
}

TEST(MultipleRun, SurvivesChangesDuringAWait) {
    const Texts gone{"Subscript out of range: line 2 of the list was removed"};
    const Texts unknown{"No Quick Commands are selected!"};
    const Rows<const char*, std::function<void(RunBench&)>, Texts> cases{
        {"clear", [](RunBench& bench) { bench.click("frmMain.cmdClearMultiple"); }, gone},
        {"another length", [](RunBench& bench) { bench.configure("12"); }, gone},
        {"apply", [](RunBench& bench) { bench.configure("8"); }, unknown},
        {"delete",
         [](RunBench& bench) {
             bench.names().select(0);
             bench.click("frmMain.cmdDeleteQC");
         },
         gone},
        {"cancel and send again",
         [](RunBench& bench) {
             bench.click("frmMain.cmdCancelSingle");
             bench.click("frmMain.cmdSendOnce");
         },
         {}},
        {"the end of the program", [](RunBench& bench) { bench.program.end(); }, {}},
    };
    for (const auto& [what, change, boxes] : cases) {
        RunBench bench;
        bench.loop.atTime(bench.clock.nanoseconds() + millisecond,
                          [&bench, act = change] { act(bench); });
        EXPECT_EQ(bench.play({"* Wait 1 s", "a"}), boxes) << what;
        EXPECT_EQ(runButtons(bench), idleButtons) << what;
        EXPECT_FALSE(bench.run().progress()) << what;
    }
}

TEST(MultipleRun, ShowsWhereItIs) {
    RunBench bench;
    std::string seen;
    bench.run().progressChanged.subscribe([&] {
        const auto& progress = bench.run().progress();
        seen += progress ? fmt::format("{}.{}/{}:{} ", progress->pass, progress->line,
                                       progress->lines, bench.run().remainingWait() / millisecond)
                         : "- ";
    });
    bench.play({"a", "* Wait 5 ms"});
    EXPECT_EQ(seen, "1.0/2:0 1.1/2:0 1.1/2:5 1.1/2:0 - ");
    seen.clear();
    bench.setToSend({"a"});
    bench.sendContinuously(2);
    EXPECT_EQ(seen, "1.0/1:0 - 2.0/1:0 - ");
}

} // namespace
} // namespace bitlux::test
