#include "batch_bench.h"

#include <optional>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* badElement = "Quick Command array element is neither 0 nor 1!\r\n"
                                   "Check the USB cable and restart program";
constexpr const char* overwrite = "Quick Command already exists!  Overwrite it?";

TEST(QuickCommands, AreSavedAndShownAgain) {
    const std::string longest = "8" + repeated(38, '0') + "1";
    for (const auto& [bits, typed, padded, shown] :
         {row("12", "1", "001", "001"), row("13", "1abc", "1abc", "1ABC"), row("1", "1", "1", "1"),
          row("160", longest.c_str(), longest.c_str(), longest.c_str())}) {
        BatchBench bench(bits);
        bench.save("one", typed);
        EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), padded) << typed;
        bench.edit("frmMain.txtHexWordToSend", "");
        bench.names().select(0);
        EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), shown) << typed;
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{}) << typed;
    }
}

TEST(QuickCommands, RefuseNamesAndWords) {
    const Rows<std::string, const char*, const char*> cases{
        {"", "1", "You must type a name for the Quick Command."},
        {"*", "1", "Quick Commands cannot begin with '*'."},
        {"* Pause", "1", "Quick Commands cannot begin with '*'."},
        {"one", "", "Nothing to save!"},
        {"one", "1G", "Not a valid hex number!"},
        {"one", "1000", "The word is too long!"},
        {"*Pause", "1", ""},
        {"*\tPause", "1", ""},
        {" * Pause", "1", ""},
        {"two\r\nlines\t", "1", ""},
        {repeated(10000, 'n'), "1", ""}};
    for (const auto& [name, word, message] : cases) {
        BatchBench bench("12");
        bench.dirty();
        bench.save(name, word);
        const bool saved = *message == '\0';
        EXPECT_EQ(bench.boxes.takeTexts(), saved ? Texts{} : Texts{message}) << name;
        EXPECT_EQ(bench.available(), saved ? Texts{name} : Texts{}) << name;
        EXPECT_TRUE(bench.dirty()) << name;
        if (!saved)
            continue;
        // What counts as a name here counts as one in a run.
        bench.openBatchPage();
        EXPECT_EQ(bench.play({name}), Texts{}) << name;
        EXPECT_EQ(bench.log().size(), 5U) << name;
    }
}

TEST(QuickCommands, GrowByARowEachAndKeepTheirRowWhenOverwritten) {
    BatchBench bench;
    const QuickCommandTable& table = bench.session().QuickCommandTable;
    bench.save("one", "01");
    EXPECT_EQ(table.rows(), 1U) << "the free row is taken first";
    EXPECT_EQ(bench.session().QuickCommandTableEmpty, ConstOff);
    bench.save("two", "02");
    EXPECT_EQ(table.rows(), 2U);
    for (const auto answer : {MessageBox::Answer::No, MessageBox::Answer::Yes}) {
        bench.boxes.answer(answer);
        bench.save("one", "11");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{overwrite});
        EXPECT_EQ(table.bits(0)[4], answer == MessageBox::Answer::Yes ? 1 : 0);
    }
    EXPECT_EQ(bench.boxes.shown().back().icon, MessageBox::Icon::Exclamation);
    bench.save("One", "03"); // another name
    EXPECT_EQ(bench.available(), (Texts{"one", "two", "One"}));
    EXPECT_EQ(bench.names().items(), bench.available());
}

TEST(QuickCommands, OfTheSameNameAskEachAndTheLastIsMeant) {
    BatchBench bench;
    bench.save("one", "01");
    QuickCommandTable& table = bench.session().QuickCommandTable;
    table.addRow(); // as a file may bring it
    table.nameLastRow("one");
    table.setBits(1, std::vector<std::int16_t>(8, 1));
    EXPECT_EQ(table.lastRowNamed("one"), 1U);
    for (int i = 0; i < 2; ++i)
        bench.boxes.answer(MessageBox::Answer::Yes);
    bench.save("one", "70");
    EXPECT_EQ(bench.boxes.takeTexts(), (Texts{overwrite, overwrite}));
    EXPECT_EQ(table.bits(0)[0], 1);
    EXPECT_EQ(table.bits(1)[0], 0);
}

TEST(QuickCommands, AreFoundAfterEveryChange) {
    QuickCommandTable table;
    table.recreate(2);
    std::uint32_t random = 1;
    for (int step = 0; step < 3000; ++step) {
        random = random * 1664525 + 1013904223;
        const std::uint32_t choice = random >> 16;
        const std::string name = std::to_string(choice % 37);
        if (choice % 3 != 0) {
            table.addRow();
            table.nameLastRow(name);
        } else if (table.rows() > 1) {
            table.removeRow(choice % table.rows());
        }
        std::optional<std::size_t> last;
        for (std::size_t row = 0; row < table.rows(); ++row)
            if (table.name(row) == name)
                last = row;
        ASSERT_EQ(table.lastRowNamed(name), last) << step;
    }
}

TEST(QuickCommands, AreDeletedWithTheirLines) {
    BatchBench bench;
    for (const char* name : {"a", "b", "c"})
        bench.save(name);
    bench.setToSend({"b", "b", "a", "* Pause", "b"});
    bench.toSend().select(2);
    bench.saveBatch("b");
    bench.names().select(1);
    bench.click("frmMain.cmdDeleteQC");
    EXPECT_EQ(bench.available(), (Texts{"a", "c"}));
    EXPECT_EQ(bench.names().items(), bench.available());
    EXPECT_EQ(bench.sendLines(), (Texts{"a", "* Pause"}));
    // In a Batch the neighbour of a removed line is passed over, and the name stays.
    EXPECT_EQ(bench.session().lstBatchList(1), (Texts{"b", "b", "a", "* Pause"}));
    bench.dirty();
    bench.click("frmMain.cmdDeleteQC");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"You haven't selected a command to delete!"});
    EXPECT_FALSE(bench.dirty());
}

TEST(QuickCommands, LeaveAnEntryWithoutANameBehind) {
    BatchBench bench("4");
    bench.save("only", "5");
    bench.names().select(0);
    bench.click("frmMain.cmdDeleteQC");
    EXPECT_EQ(bench.available(), Texts{""});
    EXPECT_EQ(bench.session().QuickCommandTableEmpty, ConstOn);
    bench.get<forms::ListBox>("frmMain.lstCommandsAvailable").select(0);
    bench.click("frmMain.cmdAddMult");
    EXPECT_EQ(bench.sendLines(), Texts{});
    bench.openBatchPage();
    EXPECT_EQ(bench.play({""}), Texts{"No Quick Commands are selected!"});
    bench.session().DisplayHex = 0;
    bench.names().select(0);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts(4, badElement));
    EXPECT_TRUE(bench.session().StopSending);
    bench.click("frmMain.cmdDeleteQC"); // once more
    EXPECT_EQ(bench.available(), Texts{""});
    bench.session().DisplayHex = 1;
    bench.save("next", "6");
    EXPECT_EQ(bench.available(), Texts{"next"});
}

TEST(QuickCommands, OutliveApplyAsNamesAlone) {
    BatchBench bench("4");
    for (const char* name : {"a", "b", "c"})
        bench.save(name, "5");
    bench.configure("4", {"optBinary"});
    EXPECT_EQ(bench.available().size(), 3U);
    for (const int row : {0, 1}) {
        bench.names().select(row);
        EXPECT_EQ(bench.boxes.takeTexts(), Texts(4, badElement));
    }
    bench.names().select(2);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Subscript out of range"});
    bench.configure("5");
    EXPECT_EQ(bench.available(), Texts{});
}

struct NoticeBench : BatchBench {
    using BatchBench::BatchBench;
    std::int64_t restore() {
        return std::get<std::int64_t>(program.mainForm().call("RestoreQuickCommands"));
    }
    std::string wordOf(int index) {
        names().select(index);
        return text("frmMain.txtHexWordToSend");
    }
};

TEST(QuickCommands, ComeBackAfterAnApplyThatEmptiedThem) {
    NoticeBench bench;
    bench.save("Wake", "A5");
    bench.save("Sleep", "3C");
    EXPECT_EQ(bench.notice(), "");
    bench.click("frmConfigureSPI.cmdApply");
    bench.click("frmConfigureSPI.cmdApply"); // finds nothing to keep
    EXPECT_EQ(bench.notice(), "Apply emptied the words of 2 Quick Commands");
    bench.openBatchPage();
    EXPECT_EQ(bench.play({"Wake"}), Texts{"No Quick Commands are selected!"});
    EXPECT_EQ(bench.notice(), "\"Wake\" has no word: Apply emptied it");
    EXPECT_EQ(bench.program.mainForm().notices.now()->button, "Restore");
    // Words that came later stay, and go with the others into the next Apply.
    bench.save("Sleep", "C3");
    bench.save("Read", "03");
    EXPECT_EQ(bench.available(), (Texts{"", "Sleep", "Read"}));
    bench.click("frmConfigureSPI.cmdApply");
    bench.save("Read", "04");
    bench.dirty();
    bench.program.mainForm().notices.press();
    EXPECT_TRUE(bench.dirty());
    EXPECT_EQ(bench.notice(), "");
    EXPECT_EQ(bench.available(), (Texts{"Wake", "Sleep", "Read"}));
    EXPECT_EQ(bench.wordOf(0) + bench.wordOf(1) + bench.wordOf(2), "A5C304");
    bench.openBatchPage();
    EXPECT_EQ(bench.play({"Wake", "gone"}), Texts{"No Quick Commands are selected!"});
    EXPECT_EQ(bench.notice(), "There is no Quick Command \"gone\"");
    EXPECT_EQ(bench.program.mainForm().notices.now()->button, "");
    EXPECT_EQ(bench.play({"Wake"}), Texts{});
    EXPECT_EQ(bench.notice(), "");
}

TEST(QuickCommands, ComeBackInWordsOfTheirLengthAlone) {
    NoticeBench bench;
    for (const char* name : {"a", "b", "c"})
        bench.save(name, "5A");
    bench.configure("9");
    EXPECT_EQ(bench.notice(), "");
    EXPECT_EQ(bench.restore(), 0);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"There are no words of Quick Commands to restore."});
    bench.configure("8");
    EXPECT_EQ(bench.notice(), "Apply emptied the words of 3 Quick Commands");
    EXPECT_EQ(bench.restore(), 3);
    bench.click("frmConfigureSPI.cmdApply");
    bench.names().edit("b");
    bench.names().setListIndex(1);
    bench.click("frmMain.cmdDeleteQC"); // what the user deletes does not come back
    EXPECT_EQ(bench.notice(), "Apply emptied the words of 2 Quick Commands");
    // another file gives them up
    const TemporaryFolder folder;
    bench.program.open(folder.write("other.spi", "\"Bitlux Configuration File (Version 3.x.x)\","
                                                 "\"\"\r\n\"[SPIWordLength]\",\"8\"\r\n"
                                                 "\"[ApplyNow]\",\"\"\r\n"));
    EXPECT_EQ(bench.available(), Texts{});
    EXPECT_EQ(bench.notice(), "");
    EXPECT_EQ(bench.restore(), 0);
}

TEST(QuickCommands, ShowTheirBitsInBinaryDisplay) {
    BatchBench bench("4");
    bench.save("five", "5");
    bench.save("ten", "A");
    bench.session().DisplayHex = 0;
    bench.session().StopSending = true;
    bench.names().select(1);
    EXPECT_EQ(bench.program.mainForm().singleWord.cmdSI_single(3).caption(), "1");
    EXPECT_EQ(bench.session().SingleWordBits, (std::vector<std::int16_t>{0, 1, 0, 1, 0}));
    EXPECT_FALSE(bench.session().StopSending);
    // A bit that is turned over makes it another word; it is saved under a name that is typed.
    bench.click("frmMain.cmdSI_single(2)");
    EXPECT_EQ(bench.names().listIndex(), -1);
    bench.names().edit("five");
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.click("frmMain.cmdSaveQC");
    const auto bits = bench.session().QuickCommandTable.bits(0);
    EXPECT_EQ(std::vector<std::int16_t>(bits.begin(), bits.end()),
              (std::vector<std::int16_t>{0, 1, 1, 1}));
}

TEST(QuickCommands, AnswerEnterAndDoubleClick) {
    BatchBench bench;
    bench.edit("frmMain.txtHexWordToSend", "A5");
    bench.names().edit("a");
    bench.names().key(forms::KeyCode::Enter);
    EXPECT_EQ(bench.names().listIndex(), 0); // saved, and the last entry is selected
    EXPECT_EQ(bench.names().text(), "a");
    bench.edit("frmMain.txtHexWordToSend", "11");
    bench.names().key(forms::KeyCode::Enter); // sends what is entered there
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "11");
    bench.names().doubleClick(); // sends what is stored
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "A5");
    bench.program.mainForm().run.cmdSendOnce.disable();
    bench.names().key(forms::KeyCode::Enter);
    EXPECT_EQ(bench.log().size(), 10U);
    bench.names().edit("*");
    bench.names().key(forms::KeyCode::Enter);
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Quick Commands cannot begin with '*'."});
    EXPECT_EQ(bench.names().text(), "a");
}

} // namespace
} // namespace bitlux::test
