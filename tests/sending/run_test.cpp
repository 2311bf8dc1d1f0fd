#include "batch_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

int wordsIn(TestBench& bench) {
    return static_cast<int>(bench.log().size() / 5);
}

TEST(Run, HasThreeStates) {
    BatchBench bench;
    EXPECT_EQ(runButtons(bench), idleButtons);
    std::string whileSending;
    bench.program.engine().wordTransferred.subscribe([&] { whileSending = runButtons(bench); });
    bench.send("A5");
    EXPECT_EQ(whileSending, ".+-.+");
    EXPECT_EQ(runButtons(bench), idleButtons);
    bench.sendContinuously(3);
    EXPECT_EQ(whileSending, "-..++");
    EXPECT_EQ(runButtons(bench), idleButtons);
    EXPECT_EQ(wordsIn(bench), 1 + 3);
    EXPECT_EQ(bench.session().ContinuousLogCount, 1);
}

TEST(ContinuousCount, ShowsWordsAndRateFourTimesASecond) {
    BatchBench bench;
    bench.edit("frmMain.txtHexWordToSend", "A5");
    std::vector<std::string> shown;
    std::int64_t next = 0;
    bench.program.engine().wordTransferred.subscribe([&] {
        // A hundred words a second, whatever a word takes on the bus.
        next = std::max(next, bench.clock.nanoseconds()) + 10'000'000;
        bench.clock.idle(next - bench.clock.nanoseconds());
        const std::string& text = bench.program.mainForm().continuousCount.text();
        if (shown.empty() || shown.back() != text)
            shown.push_back(text);
    });
    bench.sendContinuously(60);
    EXPECT_EQ(shown, (Texts{"1 words", "26 words", "51 words, 100 words/s"}));
    shown.clear();
    bench.sendContinuously(1);
    EXPECT_EQ(shown, Texts{"1 words"}) << "a second run counts from 1 again";
}

TEST(Run, CancelChangesTheButtonsAlone) {
    BatchBench bench;
    std::string cancelled;
    bench.program.engine().wordTransferred.subscribe([&] {
        bench.click("frmMain.cmdCancelSingle");
        cancelled = runButtons(bench);
    });
    bench.send("A5");
    EXPECT_EQ(cancelled, "+.+.+");
    EXPECT_EQ(wordsIn(bench), 1);
}

TEST(Run, FollowsAWordLengthThatAHandlerChanges) {
    BatchBench bench;
    bench.configure("8", {"optBinary"});
    const auto changeLength = [&bench](std::int16_t length) {
        bench.session().SPIWordLength = length;
        bench.session().SingleWordBits.assign(static_cast<std::size_t>(length) + 1, 1);
    };
    bench.loop.atTurn(1, [&] { changeLength(12); });
    bench.loop.atTurn(2, [&] { changeLength(3); });
    bench.sendContinuously(3);
    const Texts log = bench.log();
    EXPECT_EQ((Texts{log[3], log[8], log[13]}), (Texts{"  00000000", "  1111 11111111", "  111"}));
}

TEST(Run, EndsWhereItCannotGoOn) {
    const Rows<std::function<void(TestBench&)>, Texts, int> cases{
        {[](TestBench& bench) { bench.edit("frmMain.txtHexWordToSend", "xyz"); },
         {"Not a valid hex number!"},
         10},
        {[](TestBench& bench) { bench.session().SPIType = 12; },
         {"Subscript out of range: there is no SPI type 12"},
         10},
        {[](TestBench& bench) { bench.configure("24"); }, {}, 0}}; // the log is emptied
    for (const auto& [event, boxes, lines] : cases) {
        BatchBench bench;
        bench.edit("frmMain.txtHexWordToSend", "1");
        bench.loop.atTurn(2, [&bench, act = event] { act(bench); });
        bench.click("frmMain.cmdSendContinuous");
        EXPECT_EQ(bench.boxes.takeTexts(), boxes);
        EXPECT_EQ(runButtons(bench), idleButtons);
        EXPECT_EQ(bench.log().size(), static_cast<std::size_t>(lines));
    }
}

TEST(Run, ShowsNoAnswerWhereNoneCame) {
    TestBench bench;
    bench.configure("4", {"optBinary"});
    const auto answer = [&bench] {
        std::string bits;
        for (int bit = 3; bit >= 0; --bit)
            bits += bench.label("frmMain.lblSO_single(" + std::to_string(bit) + ")");
        return bits;
    };
    bench.click("frmMain.cmdAll1Single");
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(answer(), "1111");
    bench.session().ParallelPortReady = false;
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(answer(), "xxxx");
    EXPECT_EQ(wordsIn(bench), 1);
}

TEST(Run, DependsOnTheTab) {
    BatchBench bench;
    bench.edit("frmMain.txtHexWordToSend", "1");
    bench.session().ActiveMainTab = 2;
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Nothing to send."});

    bench.session().PartTabs[0].PartNumber = 72518;
    bench.session().PartTabs[1].PartNumber = 72517;
    bench.session().ActiveMainTab = 3;
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(wordsIn(bench), 0);
    const auto continuously = [&bench](std::int16_t tab) {
        bench.session().ActiveMainTab = tab;
        bench.sendContinuously(2);
        return wordsIn(bench);
    };
    EXPECT_EQ(continuously(3), 0);
    EXPECT_EQ(continuously(4), 2);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

} // namespace
} // namespace bitlux::test
