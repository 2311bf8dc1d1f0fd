#include "batch_bench.h"
#include "support/file_size_limit.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

const Texts wordA5{"SPI Word Sent:", "  A5", "SPI Word Received:", "  A5", " "};

Texts times(int count, const Texts& word, const Texts& note = {}) {
    Texts lines;
    for (int i = 0; i < count; ++i)
        lines.insert(lines.end(), word.begin(), word.end());
    lines.insert(lines.end(), note.begin(), note.end());
    return lines;
}

/// A bench with a word of 8 bits ready to go, with these options of the log applied.
struct LogBench : BatchBench {
    explicit LogBench(const Texts& options = {}, const std::string& limit = "5") {
        program.dialog().txtMessageLimit.setText(limit);
        configure("8", options);
        edit("frmMain.txtHexWordToSend", "A5");
    }
};

TEST(SessionLog, WritesTheSameFiveLinesInBothLists) {
    for (const auto& [bits, display, word, shown] :
         {row("16", "optBinary", "", "  00000000 00000000"),
          row("8", "optBinary", "", "  00000000"), row("9", "optBinary", "", "  0 00000000"),
          row("40", "optBinary", "", "  00000000 00000000 00000000 00000000 00000000"),
          row("12", "optHex", "a5", "  0A5"), row("41", "optHex", "1", "  00000000001")}) {
        TestBench bench;
        bench.configure(bits, {display});
        if (std::string(display) == "optHex")
            bench.edit("frmMain.txtHexWordToSend", word);
        bench.click("frmMain.cmdSendOnce");
        const Texts expected{"SPI Word Sent:", shown, "SPI Word Received:", shown, " "};
        EXPECT_EQ(bench.log(), expected) << bits;
        EXPECT_EQ(bench.lines("frmMain.lstSessionLogMult"), expected) << bits;
        for (const char* list : {"frmMain.lstSessionLogSingle", "frmMain.lstSessionLogMult"})
            EXPECT_EQ(bench.get<forms::ListBox>(list).listIndex(), 4);
    }
}

TEST(SessionLog, WritesElementsThatAreNoBits) {
    LogBench bench;
    bench.session().WordToSend = {1, 0, 12, 0, 0, 0, 0, 0};
    bench.session().WordReceived = {1, 0, 2, 0, 0, 0, 0, 0};
    for (const std::int16_t display : std::array<std::int16_t, 3>{0, 1, 7}) {
        bench.session().DisplayHex = display;
        bench.program.mainForm().call("UpdateLog");
    }
    EXPECT_EQ(bench.log()[1], "  000001201");
    EXPECT_EQ(bench.log()[3], "  00000x01");
    EXPECT_EQ(bench.log()[6], "  031"); // 1 + 4 * 12 is no digit, and is shown as it is
    EXPECT_EQ(bench.log()[11], "  ");
}

TEST(SessionLog, FollowsTheModesOfAContinuousRun) {
    const Texts suspended{"Continuous Send Log Suspended", " "};
    const Texts disabled{"Continuous Send Log Disabled", " "};
    const Rows<Texts, const char*, int, Texts> cases{
        {{}, "2.5", 3, times(2, wordA5, suspended)}, {{}, "no number", 3, {}},
        {{}, "5", 9, times(5, wordA5, suspended)},   {{}, "5", 4, times(4, wordA5)},
        {{}, "5", 5, times(5, wordA5, suspended)},   {{}, "1", 3, times(1, wordA5, suspended)},
        {{"optLogOff"}, "5", 6, disabled},           {{"optLogForever"}, "5", 9, times(9, wordA5)}};
    for (const auto& [options, limit, words, expected] : cases) {
        LogBench bench(options, limit);
        bench.sendContinuously(words);
        EXPECT_EQ(bench.log(), expected) << limit << ", " << words << " words";
        EXPECT_EQ(bench.lines("frmMain.lstSessionLogMult"), expected);
        // A second run counts from 1 again.
        bench.click("frmMain.cmdClearLogSingle");
        bench.sendContinuously(words);
        EXPECT_EQ(bench.log(), expected) << limit << ", " << words << " words again";
    }
}

TEST(SessionLog, CountsALiveChoiceOfLoggingForever) {
    LogBench bench;
    bench.program.dialog().optLogForever.setValue(true); // not applied: the limit is still 5
    bench.sendContinuously(8);
    EXPECT_EQ(bench.log(), times(8, wordA5));
}

TEST(SessionLog, RefusesToSendWhenFull) {
    const Texts message{
        "The Session Log is full.  Please save or clear the log before continuing.\r\n"
        "The SPI word will not be sent."};
    LogBench bench({"optLogForever"});
    EXPECT_EQ(bench.session().ContinuousLogLimit, 20000);
    bench.click("frmMain.cmdSendContinuous"); // it is not stopped
    EXPECT_EQ(bench.log().size(), 20000U);
    EXPECT_EQ(bench.boxes.takeTexts(), message);
    EXPECT_TRUE(bench.get<forms::Button>("frmMain.cmdSendOnce").enabled());

    // A full log also stops a run that would log nothing, but not when the log is off.
    bench.program.dialog().optLogOff.setValue(true);
    bench.session().ContinuousLogEnabled = ConstOff;
    EXPECT_EQ(accessesOf(bench, [&] { bench.click("frmMain.cmdSendContinuous"); }), "");
    EXPECT_EQ(bench.boxes.takeTexts(), message);
    bench.program.dialog().chkEnableLog.click();
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.log().size(), 20000U);
}

std::size_t wordsInFile(const std::string& name) {
    const std::string word = "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  A5\r\n \r\n";
    const std::string content = contentOf(name);
    std::size_t count = 0;
    for (std::size_t at = 0; content.compare(at, word.size(), word) == 0; at += word.size())
        ++count;
    EXPECT_EQ(content.size(), count * word.size()) << "whole words and no more";
    return count;
}

TEST(LogFile, TakesEveryWordAsItComesAndTheListKeepsTheLast) {
    TemporaryFolder folder;
    const std::string name = folder.path("all.txt");
    LogBench bench({"optLogForever"});
    bench.fileDialogs.answer(name);
    bench.choose("frmMain.itemLogToFile");
    EXPECT_EQ(bench.program.mainForm().notices.now()->button, "Stop Logging");
    std::size_t inTheRun = 0;
    bench.loop.atTurn(3, [&] { inTheRun = wordsInFile(name); });
    bench.sendContinuously(5000);
    EXPECT_EQ(inTheRun, 3U);
    EXPECT_EQ(wordsInFile(name), 5000U);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.log(), times(19995 / 5, wordA5));
    EXPECT_EQ(bench.get<forms::ListBox>("frmMain.lstSessionLogSingle").listIndex(), 19994);

    // Whatever the list takes.
    bench.program.dialog().chkEnableLog.click();
    bench.sendContinuously(7);
    EXPECT_EQ(wordsInFile(name), 5007U);
    bench.choose("frmMain.itemLogToFile");
    EXPECT_FALSE(bench.program.mainForm().notices.now());
    bench.sendContinuously(7);
    EXPECT_EQ(wordsInFile(name), 5007U);
}

TEST(LogFile, EndsBehindAWholeWordOnAFullDiskAndTheRunGoesOn) {
    TemporaryFolder folder;
    const std::string name = folder.path("full.txt");
    LogBench bench({"optLogForever"});
    bench.fileDialogs.answer(name);
    bench.choose("frmMain.itemLogToFile");
    {
        const FileSizeLimit limit(1000);
        bench.sendContinuously(4500);
    }
    EXPECT_EQ(wordsInFile(name), 1000U / 51);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.log().size(), 20000U - 5);
    EXPECT_EQ(bench.program.mainForm().notices.now()->text,
              "The log file ended early: The file \"" + name +
                  "\" cannot be written: File too large");
    bench.program.mainForm().notices.press(); // and no other file is named
    EXPECT_FALSE(bench.program.mainForm().notices.now());
}

TEST(SessionLog, CanBeSwitchedOff) {
    LogBench bench;
    bench.program.dialog().chkEnableLog.click();
    EXPECT_EQ(bench.session().SessionLogEnabled, ConstOff);
    bench.click("frmMain.cmdSendOnce");
    bench.sendContinuously(3);
    EXPECT_EQ(bench.log(), Texts{});
    for (const char* name :
         {"lstSessionLogSingle", "lstSessionLogMult", "cmdSaveLogSingle", "cmdClearLogSingle",
          "cmdSaveLogMult", "cmdClearLogMult", "frameLogPinsNow(1)", "frameLogPins(1)"})
        EXPECT_FALSE(bench.program.forms().control(std::string("frmMain.") + name).enabled())
            << name;
}

TEST(SessionLog, StopsARunBeforeItSavesOrClearsBothLists) {
    for (const char* item : {"itemClearLog", "cmdClearLogMult", "cmdSaveLogSingle"}) {
        LogBench bench;
        bench.loop.atTurn(2, [&] { bench.program.mainForm().control(item).click(); });
        bench.click("frmMain.cmdSendContinuous");
        EXPECT_EQ(bench.loop.turns(), 2) << item;
        const bool saves = item == std::string("cmdSaveLogSingle");
        EXPECT_EQ(bench.log(), saves ? times(2, wordA5) : Texts{}) << item;
        EXPECT_EQ(bench.lines("frmMain.lstSessionLogMult"), bench.log()) << item;
    }
}

TEST(SessionLog, SavesUnderTheNameThatWasChosenOnce) {
    const TemporaryFolder folder;
    LogBench bench;
    bench.click("frmMain.cmdSendOnce");
    bench.click("frmMain.cmdSaveLogSingle"); // cancelled
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No filename selected.  Cannot Save."});
    EXPECT_EQ(bench.session().LogFileName, "");
    bench.fileDialogs.answer(folder.path("log.txt"));
    bench.click("frmMain.cmdSaveLogSingle");
    const FileDialog dialog = bench.fileDialogs.shown().at(0);
    EXPECT_EQ(dialog.kind, FileDialog::Kind::Save);
    EXPECT_EQ(dialog.title + "|" + dialog.filter + "|" + dialog.fileName,
              "Save Session Log|Text Files (*.txt)|*.txt|All Files (*.*)|*.*|");
    EXPECT_EQ(contentOf(folder.path("log.txt")),
              "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  A5\r\n \r\n");

    // The second time it does not ask, and replaces the file.
    bench.click("frmMain.cmdClearLogMult");
    bench.click("frmMain.cmdSaveLogMult");
    EXPECT_EQ(bench.fileDialogs.shown().size(), 2U);
    EXPECT_EQ(contentOf(folder.path("log.txt")), "");
    bench.choose("frmMain.itemSaveLogAs"); // cancelled
    EXPECT_EQ(bench.session().LogFileName, folder.path("log.txt"));

    bench.fileDialogs.answer(folder.path("other.txt"));
    bench.choose("frmMain.itemSaveLogAs");
    EXPECT_EQ(bench.fileDialogs.shown().back().fileName, folder.path("log.txt"));
    EXPECT_EQ(bench.session().LogFileName, folder.path("other.txt"));
    bench.click("frmMain.cmdSendOnce");
    bench.choose("frmMain.itemSaveLog");
    EXPECT_EQ(contentOf(folder.path("other.txt")).size(), 51U);
    EXPECT_FALSE(bench.pointer.busy());
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(SessionLog, ReportsAFileThatCannotBeWritten) {
    const TemporaryFolder folder;
    const std::string missing = folder.path("missing/log.txt");
    LogBench bench;
    bench.click("frmMain.cmdSendOnce");
    // A new name is in use once it was written to: the next Save asks again, or goes to the old
    // one.
    for (const std::string& before : {std::string(), folder.path("good.txt")}) {
        bench.session().LogFileName = before;
        bench.fileDialogs.answer(missing);
        bench.choose(before.empty() ? "frmMain.itemSaveLog" : "frmMain.itemSaveLogAs");
        EXPECT_EQ(
            bench.boxes.takeTexts(),
            Texts{"The file \"" + missing + "\" cannot be written: No such file or directory."});
        EXPECT_EQ(bench.session().LogFileName, before);
        EXPECT_FALSE(bench.pointer.busy());
    }
    EXPECT_EQ(bench.log(), wordA5);
}

} // namespace
} // namespace bitlux::test
