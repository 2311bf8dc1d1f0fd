// What happens to unsaved work.

#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A program that keeps its work in a folder, with a file in use.
struct WorkBench : TestBench {
    explicit WorkBench(const TemporaryFolder& user) : folder(user) {
        configure("8");
        loop.drive(program.forms());
        work().compareFromNow();
        work().keepIn(folder.path("state"));
    }
    UnsavedWork& work() { return program.mainForm().unsaved; }
    void saveAs(const std::string& name) {
        fileDialogs.answer(folder.path(name));
        choose("frmMain.itemSaveAs");
    }
    void open(const std::string& name) { program.open(folder.path(name)); }
    void type(const std::string& part) { edit("frmConfigureSPI.txtPartName", part); }
    void pass(std::int64_t milliseconds) {
        const std::int64_t end = clock.nanoseconds() + milliseconds * 1'000'000;
        while (clock.nanoseconds() < end)
            loop.waitForEvents(end - clock.nanoseconds());
    }
    /// The content of the file that is kept while the work goes on; empty for none.
    [[nodiscard]] std::string draft() const {
        for (const auto& entry : std::filesystem::directory_iterator(folder.path("state")))
            if (entry.path().filename().string().starts_with("draft-"))
                return contentOf(entry.path());
        return "";
    }
    /// The names of the files that the work which was given up is a change of.
    Texts origins() {
        Texts names;
        for (const RecoveredFile& file : work().recovered())
            names.push_back(std::filesystem::path(file.origin).filename());
        return names;
    }

    const TemporaryFolder& folder;
};

TEST(UnsavedWork, IsKeptEveryTwoMinutesWhileThereIsSome) {
    const TemporaryFolder user;
    WorkBench bench(user);
    bench.saveAs("board.spi");
    bench.open("board.spi");
    bench.saveAs("board.spi"); // as it looks when it was opened
    bench.open("board.spi");
    EXPECT_FALSE(bench.work().differs()) << "it was merely opened";
    bench.pass(121'000);
    EXPECT_EQ(bench.draft(), "");
    bench.type("ADC");
    bench.pass(118'999);
    EXPECT_EQ(bench.draft(), "");
    bench.pass(1);
    std::string expected = contentOf(user.path("board.spi"));
    expected.replace(expected.find("\"Generic\""), 9, "\"ADC\"");
    EXPECT_EQ(bench.draft(),
              fmt::format("{}\"[RecoveredFrom]\",\"{}\"\r\n", expected, user.path("board.spi")));
    // Undone, it goes at the next look, and done again it comes.
    bench.type("Generic");
    bench.pass(120'000);
    EXPECT_EQ(bench.draft(), "");
    bench.type("ADC");
    bench.pass(120'000);
    EXPECT_NE(bench.draft(), "");
    bench.choose("frmMain.itemSave");
    EXPECT_EQ(bench.draft(), "");
    EXPECT_EQ(bench.origins(), Texts{});
}

TEST(UnsavedWork, IsKeptWhenItIsReplacedOrDropped) {
    const TemporaryFolder user;
    {
        WorkBench bench(user);
        bench.program.mainForm().commands.addToSend("* Pause"); // which marks no change
        bench.saveAs("a.spi");
        bench.saveAs("b.spi");
        bench.open("a.spi");
        bench.open("b.spi");
        EXPECT_EQ(bench.origins(), Texts{}) << "nothing was changed";
        bench.program.mainForm().commands.addToSend("* Pause");
        bench.fileDialogs.answer(user.path("a.spi"));
        bench.choose("frmMain.itemOpen");
        EXPECT_EQ(bench.origins(), Texts{"b.spi"});
        bench.type("one");
        bench.open("b.spi");
        EXPECT_EQ(bench.origins(), (Texts{"a.spi", "b.spi"}));
        // What is not replaced is not given up.
        bench.type("two");
        bench.program.open(user.write("other.spi", "hello\r\n"));
        bench.program.open(user.path("none.spi"));
        EXPECT_EQ(bench.origins(), (Texts{"a.spi", "b.spi"}));
        bench.boxes.answer(MessageBox::Answer::No);
        bench.program.close();
    }
    WorkBench next(user);
    EXPECT_EQ(next.notice(), "") << "the user has said No";
    EXPECT_EQ(next.origins(), (Texts{"b.spi", "a.spi", "b.spi"}));
    const std::string content = contentOf(next.work().recovered().at(0).fileName);
    EXPECT_NE(content.find("\"[PartName]\",\"two\""), std::string::npos);
}

TEST(UnsavedWork, ThatIsOpenedAgainIsAChangeOfItsFile) {
    const TemporaryFolder user;
    WorkBench bench(user);
    bench.saveAs("board.spi");
    const std::string original = contentOf(user.path("board.spi"));
    bench.type("ADC");
    bench.open("board.spi");
    const RecoveredFile file = bench.work().recovered().at(0);
    bench.program.openRecovered(file);
    EXPECT_EQ(bench.text("frmConfigureSPI.txtPartName"), "ADC");
    EXPECT_TRUE(bench.work().differs());
    EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
    EXPECT_EQ(bench.session().ConfigFileName, "") << "by whichever way it is opened";
    // Save asks, starting on the file that it is a change of; without an answer nothing is written.
    bench.choose("frmMain.itemSave");
    EXPECT_EQ(bench.fileDialogs.shown().back().fileName, user.path("board.spi"));
    EXPECT_EQ(contentOf(user.path("board.spi")), original);
    // Given up again it is there again, once.
    bench.open("board.spi");
    EXPECT_EQ(bench.origins(), Texts{"board.spi"});
    bench.program.openRecovered(bench.work().recovered().at(0));
    bench.saveAs("board.spi");
    EXPECT_NE(contentOf(user.path("board.spi")).find("\"ADC\""), std::string::npos);
    EXPECT_FALSE(bench.work().differs());
    EXPECT_EQ(bench.origins(), Texts{});
    // One that cannot be read to its end belongs to no file.
    bench.program.open(user.write("bad.spi", original + "\"[RecoveredFrom]\",\"/x.spi\"\r\nx\r\n"));
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_EQ(bench.session().ConfigFileName, "");
    EXPECT_EQ(bench.program.mainForm().files.recoveredFrom(), std::nullopt);
}

TEST(UnsavedWork, OfAnEndWithoutAQuestionIsOfferedAtTheNextStart) {
    const TemporaryFolder user;
    {
        WorkBench bench(user);
        bench.saveAs("board.spi");
        bench.type("ADC");
        bench.program.end();
        EXPECT_TRUE(bench.boxes.shown().empty());
    }
    WorkBench next(user);
    EXPECT_EQ(next.notice(), "Unsaved changes of \"board.spi\" were recovered");
    EXPECT_EQ(next.program.mainForm().notices.now()->button, "Open");
    WorkBench third(user);
    EXPECT_EQ(third.notice(), "");
    next.program.mainForm().notices.press();
    EXPECT_EQ(next.text("frmConfigureSPI.txtPartName"), "ADC");
    EXPECT_EQ(next.notice(), "");
    EXPECT_EQ(third.origins(), Texts{});
}

TEST(UnsavedWork, ThatCannotBeKeptIsReported) {
    const TemporaryFolder user;
    WorkBench bench(user);
    bench.type("\u0436");
    bench.pass(120'000);
    EXPECT_EQ(bench.notice().find("Unsaved changes are not kept: [PartName] \"\u0436\""), 0U)
        << bench.notice();
    bench.type("ADC");
    bench.pass(120'000);
    EXPECT_EQ(bench.notice(), "");
    TestBench without; // a front end that keeps nothing
    EXPECT_FALSE(without.program.mainForm().unsaved.differs());
    without.program.mainForm().unsaved.compareFromNow();
    without.program.mainForm().unsaved.keepIn("/dev/null/x");
    EXPECT_EQ(without.program.mainForm().unsaved.notice()->text,
              "Unsaved changes are not kept: The folder \"/dev/null/x\" cannot be made");
}

} // namespace
} // namespace bitlux::test
