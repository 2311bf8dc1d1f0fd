#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The five run buttons: + visible and enabled, - visible and disabled, . hidden; in the order
/// Send Once, Cancel, Send Continuously, Stop, Abort.
std::string buttons(TestBench& bench) {
    std::string state;
    for (const char* name :
         {"cmdSendOnce", "cmdCancelSingle", "cmdSendContinuous", "cmdStopContinuous", "cmdAbort"}) {
        const forms::Control& button =
            bench.program.forms().control(std::string("frmMain.") + name);
        state += !button.visible() ? '.' : button.enabled() ? '+' : '-';
    }
    return state;
}

int wordsIn(TestBench& bench) {
    return static_cast<int>(bench.log().size() / 5);
}

TEST(Run, HasThreeStates) {
    TestBench bench;
    bench.configure("8");
    EXPECT_EQ(buttons(bench), "+.+..");
    std::string whileSending;
    bench.program.engine().wordTransferred.subscribe([&] { whileSending = buttons(bench); });
    bench.send("A5");
    EXPECT_EQ(whileSending, ".+-.+");
    EXPECT_EQ(buttons(bench), "+.+..");
    bench.loop.atTurn(3, [&] { bench.click("frmMain.cmdStopContinuous"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(whileSending, "-..++");
    EXPECT_EQ(buttons(bench), "+.+..");
    EXPECT_EQ(wordsIn(bench), 1 + 3);
    EXPECT_EQ(bench.session().ContinuousLogCount, 1);
}

TEST(ContinuousCount, TellsWordsAndRateFourTimesASecond) {
    TestBench bench;
    bench.configure("8");
    bench.edit("frmMain.txtHexWordToSend", "A5");
    std::vector<std::string> told;
    std::int64_t next = 0;
    bench.program.engine().wordTransferred.subscribe([&] {
        // A hundred words a second, whatever a word takes on the bus.
        next = std::max(next, bench.clock.nanoseconds()) + 10'000'000;
        bench.clock.idle(next - bench.clock.nanoseconds());
        const std::string& text = bench.program.mainForm().continuousCount.text();
        if (told.empty() || told.back() != text)
            told.push_back(text);
    });
    bench.loop.atTurn(60, [&] { bench.click("frmMain.cmdStopContinuous"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(told, (Texts{"1 words", "26 words", "51 words, 100 words/s"}));
    told.clear();
    bench.loop.atTurn(1, [&] { bench.click("frmMain.cmdStopContinuous"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(told, Texts{"1 words"}) << "a second run counts anew";
}

TEST(Run, CancelChangesTheButtonsAlone) {
    TestBench bench;
    bench.configure("8");
    std::string cancelled;
    bench.program.engine().wordTransferred.subscribe([&] {
        bench.click("frmMain.cmdCancelSingle");
        cancelled = buttons(bench);
    });
    bench.send("A5");
    EXPECT_EQ(cancelled, "+.+.+");
    EXPECT_EQ(wordsIn(bench), 1);
}

TEST(Run, EndsAtTheFirstBadWord) {
    TestBench bench;
    bench.configure("8");
    bench.edit("frmMain.txtHexWordToSend", "1");
    bench.loop.atTurn(2, [&] { bench.edit("frmMain.txtHexWordToSend", "xyz"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Not a valid hex number!"});
    EXPECT_EQ(buttons(bench), "+.+..");
    EXPECT_EQ(wordsIn(bench), 2);
}

TEST(Run, EndsWhenTheDialogOpens) {
    TestBench bench;
    bench.configure("8");
    bench.edit("frmMain.txtHexWordToSend", "1");
    bench.loop.atTurn(2, [&] { bench.configure("24"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.loop.turns(), 2);
    EXPECT_EQ(buttons(bench), "+.+..");
}

TEST(Run, FollowsAWordLengthThatAHandlerChanges) {
    TestBench bench;
    bench.configure("8", {"optBinary"});
    const auto changeLength = [&bench](std::int16_t length) {
        bench.session().SPIWordLength = length;
        bench.session().SingleWordBits.assign(static_cast<std::size_t>(length) + 1, 1);
    };
    bench.loop.atTurn(1, [&] { changeLength(12); });
    bench.loop.atTurn(2, [&] { changeLength(3); });
    bench.loop.atTurn(3, [&] { bench.click("frmMain.cmdStopContinuous"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.log()[3], "  00000000");
    EXPECT_EQ(bench.log()[8], "  1111 11111111");
    EXPECT_EQ(bench.log()[13], "  111");
}

TEST(Run, DoesNotStayRunningAfterAFailure) {
    TestBench bench;
    bench.configure("8");
    bench.edit("frmMain.txtHexWordToSend", "1");
    bench.loop.atTurn(1, [&] { bench.session().SPIType = 12; });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Subscript out of range: there is no SPI type 12"});
    EXPECT_EQ(buttons(bench), "+.+..");
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
    TestBench bench;
    bench.configure("8");
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
        bench.loop.atTurn(2, [&] { bench.click("frmMain.cmdStopContinuous"); });
        bench.click("frmMain.cmdSendContinuous");
        return wordsIn(bench);
    };
    EXPECT_EQ(continuously(3), 0);
    EXPECT_EQ(continuously(4), 2);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

} // namespace
} // namespace bitlux::test
