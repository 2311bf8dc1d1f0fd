// Configuration files against their bytes: what is written, and what a file does that was
// written in an editor.

#include "file_bench.h"
#include "support/chip_folder.h"

#include <filesystem>

#include <sys/stat.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Word = std::vector<std::int16_t>;

/// Every record of a session with two Quick Commands and two Batches. The fuzzer begins with it
/// too.
constexpr const char* savedSession = BITLUX_SOURCE "/tests/fuzz/corpus/configuration/session.spi";

TEST(ConfigurationFile, HoldsEveryRecordInItsPlace) {
    FileBench bench("8");
    EXPECT_EQ(bench.open(savedSession), Texts{});
    EXPECT_EQ(bench.fileDialogs.shown().back().title, "Open Configuration");
    const Session& s = bench.session();
    EXPECT_EQ(s.ConfigDirty, ConstOn);
    EXPECT_EQ(
        fmt::format("{} {} {:X} CS {}{} DI {}{} DO {}{} CLK {} {} type {} to {} and {}, {}",
                    s.PartName, s.SPIWordLength, s.LPTPortAddress, s.CSPin, s.CSAssertLevel,
                    s.DIPin, s.DIOneLevel, s.DOPin, s.DOHighValue, s.ClockPin,
                    s.MSBFirst == ConstOn, s.SPIType, s.DataPortPins.name(7),
                    s.ControlPortPins.name(2), s.ContinuousLogLimit),
        "B\u00FCro \u20AC 4 4 378 CS 01 DI 11 DO 30 CLK 2 false type 3 to RESET and Control 3, "
        "20000");
    EXPECT_EQ(bench.names().items(), (Texts{"read \"id\" now", "stop"}));
    const auto bits = s.QuickCommandTable.bits(0);
    EXPECT_EQ(Word(bits.begin(), bits.end()), (Word{0, 1, 0, 1}));
    EXPECT_EQ(bench.sendLines(), (Texts{"stop", "* Wait 5 ms"}));
    EXPECT_EQ(s.lstBatchList(2), (Texts{"second one", "stop", "* Pause"}));
    EXPECT_EQ(bench.get<forms::TabStrip>("frmMain.TabStripMain").count(), 4);

    // Neither applied nor cancelled: it is saved, while the type is the applied one.
    bench.program.dialog().types.TabStripSPItype.setSelected(8);
    const std::string name = bench.folder.path("again.spi");
    EXPECT_EQ(bench.saveAs(name), Texts{});
    EXPECT_EQ(contentOf(name), contentOf(savedSession));
    EXPECT_EQ(s.ConfigDirty, ConstOff);
    EXPECT_EQ(bench.fileDialogs.shown().back().title, "Save Configuration");
    EXPECT_EQ(bench.fileDialogs.shown().back().filter,
              "SPI Config Files (*.spi)|*.spi|All Files (*.*)|*.*");
    EXPECT_FALSE(bench.pointer.busy());
}

TEST(ConfigurationFile, OfVersionTwoTurnsReservedNamesIntoOrdinaryOnes) {
    FileBench bench;
    EXPECT_EQ(bench.open(bench.folder.write("old.spi",
                                            "\"Bitlux Forge Configuration File\",\"whatever\"\r\n"
                                            "\"[SPIWordLength]\",\"2\"\r\n\"[SIpin]\",\"7\"\r\n"
                                            "\"[SOpin]\",\"13\"\r\n\"[SIpositive]\",#FALSE#\r\n"
                                            "\"[SOpositive]\",#FALSE#\r\n\"[ApplyNow]\",\"\"\r\n"
                                            "\"[QuickCommand]\",\"1 0 * old name\"\r\n"
                                            "\"[QuickCommand]\",\"0 1 *new\"\r\n"
                                            "\"[CommandToSend]\",\"Pause\"\r\n"
                                            "\"[CommandToSend]\",\"Trigger\"\r\n"
                                            "\"[CommandToSend]\",\"* old name\"\r\n"
                                            "\"[CommandToSend]\",\"*new\"\r\n")),
              Texts{});
    EXPECT_EQ(bench.names().items(), (Texts{"+ old name", "*new"}));
    EXPECT_EQ(bench.sendLines(), (Texts{"* Pause", "+ old name", "* old name", "*new"}));
    const Session& s = bench.session();
    EXPECT_EQ(fmt::format("DI {}{} DO {}{}", s.DIPin, s.DIOneLevel, s.DOPin, s.DOHighValue),
              "DI 50 DO 40");
    // Files of the present version contain the same words and mean them.
    bench.openRecords("\"[CommandToSend]\",\"Trigger\"\r\n\"[CommandToSend]\",\"* old\"");
    EXPECT_EQ(bench.sendLines(), (Texts{"Trigger", "* old"}));
}

TEST(ConfigurationFile, ActsRecordByRecord) {
    FileBench bench;
    bench.save("kept");
    bench.session().SPITypeTab = 1;
    // Without [ApplyNow] only controls change, and the lists are empty.
    EXPECT_EQ(bench.openRecords("\"[SPIWordLength]\",12\n \"[PartName]\" , 7 \n\n"
                                "\"[Unknown]\",#TRUE#\n\"[BinaryMode]\",\"true\"\n"
                                "\"[SPIType]\",\"2\"\n\"[EnableLog]\",0"),
              Texts{});
    const ConfigureDialog& dialog = bench.program.dialog();
    EXPECT_EQ(dialog.cmbSPIWordLength.text() + " " + dialog.txtPartName.text(), "12 7");
    EXPECT_TRUE(dialog.optBinary.value());
    const Session& s = bench.session();
    EXPECT_EQ(fmt::format("{} {} {} {}", s.SPITypeTab, s.SPIWordLength, s.SPIType,
                          s.SessionLogEnabled.value()),
              "2 8 1 0");
    EXPECT_EQ(s.ConfigDirty, ConstOff);
    EXPECT_TRUE(bench.names().items().empty());
    // A Quick Command before it is cut for the length of before, and grows the table.
    EXPECT_EQ(bench.openRecords("\"[QuickCommand]\",\"1 1 1 1 0 0 0 0 0 0 1 1 x\"\r\n"), Texts{});
    EXPECT_EQ(bench.names().items(), Texts{"0 0 1 1 x"});
    EXPECT_EQ(s.QuickCommandTable.rows(), 2U);
    EXPECT_EQ(s.QuickCommandTable.bits(1)[7], 1);
}

TEST(ConfigurationFile, NeverSelectsTheFourthClock) {
    FileBench bench;
    for (const auto& [code, button] : {row("0", 0), row("192", 0), row("256", 3)}) {
        bench.openRecords(fmt::format("\"[SPIBaudRate]\",{}", code));
        EXPECT_TRUE(bench.program.dialog().SPIBaudRate(button).value()) << code;
    }
    EXPECT_EQ(bench.session().SPIBaudRate, 192);
}

TEST(ConfigurationFile, LeavesThePinsOfThePortAloneWhileTheDongleIsReady) {
    FileBench bench("8", TestBench::WithDongle::Yes);
    EXPECT_EQ(bench.openRecords("\"[CSpin]\",\"9\"\r\n\"[SerialMode]\",0\r\n"
                                "\"[CSpin]\",\"8\"\r\n\"[SerialMode]\",1\r\n"
                                "\"[DOpin]\",\"nonsense\"\r\n\"[PartName]\",\"end\"\r\n"),
              Texts{});
    EXPECT_EQ(bench.program.dialog().cmbCS.text(), "2");
    EXPECT_EQ(bench.program.dialog().txtPartName.text(), "end");
    EXPECT_TRUE(bench.session().USBReady);
}

/// What follows when Data 1 and Control 3 of the dongle are enabled.
constexpr const char* donglePins =
    "\"[DongleData0Enable]\",0\r\n\"[DongleData1Enable]\",1\r\n\"[DongleData2Enable]\",0\r\n"
    "\"[DongleData3Enable]\",0\r\n\"[DongleData4Enable]\",0\r\n"
    "\"[DongleControl0Enable]\",0\r\n\"[DongleControl1Enable]\",0\r\n"
    "\"[DongleControl2Enable]\",0\r\n\"[DongleControl3Enable]\",1\r\n";

TEST(ConfigurationFile, EndsWithThePinsOfTheDongleWhenOneIsEnabled) {
    FileBench bench("4");
    bench.save("read id", "A");
    const std::string none = bench.folder.path("none.spi");
    const std::string two = bench.folder.path("two.spi");
    bench.saveAs(none);
    bench.program.dialog().extraPins.Check(1).setValue(1);
    bench.program.dialog().extraPins.Check(8).setValue(1);
    bench.saveAs(two);
    EXPECT_EQ(contentOf(two), contentOf(none) + donglePins);

    // They reach the rows after the Apply of the file, which empties no list a second time.
    std::string onDongle = contentOf(two);
    const std::string mode = "\"[SerialMode]\",";
    onDongle.replace(onDongle.find(mode) + mode.size(), 1, "1");
    TestBench other("loopback", {}, TestBench::WithDongle::Yes);
    other.program.open(bench.folder.write("dongle.spi", onDongle));
    Texts rows;
    for (const auto& label : other.program.mainForm().extraPins.lblSetNow)
        if (label->visible())
            rows.push_back(label->caption());
    EXPECT_EQ(rows, (Texts{"Data 1", "Control 3"}));
    EXPECT_EQ(other.get<forms::ComboBox>("frmMain.cmbMasterQCList").items(), Texts{"read id"});
    // What a file has brought goes with it; what the user has ticked stays.
    other.program.open(none);
    EXPECT_EQ(other.program.dialog().extraPins.dongleNames(), Texts{});
    other.program.dialog().extraPins.Check(0).setValue(1);
    other.program.open(none);
    EXPECT_EQ(other.program.dialog().extraPins.dongleNames(), Texts{"Data 0"});
}

TEST(ConfigurationFile, AddsATabOnceAndAtMostFour) {
    FileBench bench;
    const forms::TabStrip& tabs = bench.get<forms::TabStrip>("frmMain.TabStripMain");
    bench.openRecords("\"[Enable72518]\",1\r\n\"[Enable72518]\",1\r\n\"[Enable72361]\",2");
    EXPECT_EQ(tabs.count(), 3);
    EXPECT_TRUE(bench.program.dialog().CheckEnable72518.checked());
    EXPECT_FALSE(bench.program.dialog().CheckEnable72361.checked());
    expectBox(
        bench.openRecords("\"[Enable72361]\",1\r\n\"[Enable72517]\",1\r\n\"[Enable72518]\",1\r\n"
                          "\"[Enable72516]\",1\r\n\"[Enable72537]\",1\r\n"),
        "line 6: Subscript out of range");
    EXPECT_EQ(tabs.count(), 6);
    EXPECT_FALSE(bench.program.dialog().CheckEnable72537.checked());
}

TEST(ConfigurationFile, ThatIsDamagedIsReportedWithLineAndReason) {
    const std::string longLine = R"("[PartName]",")" + repeated(10'000'000, 'x') + R"(")";
    for (const auto& [record, reason] :
         {row(R"("[BinaryMode]",#TRUE)", R"("#TRUE" is no text in quotes, number, #TRUE#)"),
          {R"("[BinaryMode]","perhaps")", R"("perhaps" is no number)"},
          {R"("[EnableLog]","on")", R"("on" is no number)"},
          {R"("[EnableLog]",7)", "The value 7 does not exist in frmConfigureSPI.chkEnableLog"},
          {R"("[DongleData4Enable]",7)", "The value 7 does not exist in frmConfigureSPI.Check(4)"},
          {R"("[DongleControl0Enable]","on")", R"("on" is no number)"},
          {R"("[SPIBaudRate]",70000)", "Overflow"},
          {R"("[SPIType]",9)", "The tab 9 does not exist"},
          {R"("[CSpin]","1")", R"(The entry "1" does not exist in frmConfigureSPI.cmbCS)"},
          {R"("[CSpin]")", "there is no comma behind the key"},
          {R"("[CSpin]",)", "the value is missing"},
          {R"("[CSpin]","2)", "the text has no closing quote"},
          {R"("[CSpin)", "the line does not begin with a key in quotes"},
          {"[CSpin],2", "the line does not begin with a key in quotes"},
          {R"("[QuickCommand]","1 0 1")", "has no 8 bits and a name"},
          {R"("[BatchItem]","3 name")", "there is no Batch 3"},
          {R"("[BatchItem]","0 name")", "there is no Batch 0"},
          {R"("[BatchItem]","1")", "there is no text behind the number"},
          {R"("[BatchItem]","one name")", R"("one" is no number)"},
          {longLine.c_str(), "line 3 has more than 65536 characters"}}) {
        FileBench bench;
        const Texts texts =
            bench.openRecords("\"[MessageLimit]\",\"77\"\r\n" + std::string(record) +
                              "\r\n\"[PartName]\",\"late\"\r\n");
        SCOPED_TRACE(reason);
        for (const char* part : {R"(records.spi")", "line 3", reason})
            expectBox(texts, part);
        EXPECT_LT(texts.at(0).size(), 400U);
        EXPECT_EQ(bench.text("frmConfigureSPI.txtMessageLimit"), "77");
        EXPECT_EQ(bench.text("frmConfigureSPI.txtPartName"), "Generic");
        EXPECT_FALSE(bench.pointer.busy());
        // Save must not put what was read in part in place of the whole.
        const std::string content = contentOf(bench.folder.path("records.spi"));
        bench.choose("frmMain.itemSave");
        EXPECT_EQ(bench.fileDialogs.shown().back().kind, FileDialog::Kind::Save);
        EXPECT_EQ(contentOf(bench.folder.path("records.spi")), content);
    }
    FileBench bench;
    expectBox(bench.openRecords(std::string("\"[PartName]\",\"a\0b\"", 18)),
              "line 2: the line holds a NUL character");
    // Escapes for a terminal are removed, whatever part of the program words the message.
    for (const char* record : {"[CSpin]", "[EnableLog]", "[QuickCommand]"})
        expectBox(bench.openRecords(fmt::format("\"{}\",\"\x1B[2J\x9D\"", record)), "?[2J?");
}

TEST(ConfigurationFile, OfAnotherFormatChangesOnlyTheName) {
    FileBench bench;
    bench.save("kept");
    const std::string fifo = bench.folder.path("fifo");
    ASSERT_EQ(::mkfifo(fifo.c_str(), 0600), 0);
    for (const std::string& content :
         {std::string(), std::string("\xEF\xBB\xBF\"Bitlux Forge Configuration File\",1\r\n"),
          std::string("\"bitlux Forge Configuration File\",\"1\"\r\n"), repeated(300'000, '\0')}) {
        const std::string name = bench.folder.write("none.spi", content);
        EXPECT_EQ(bench.open(name), Texts{"Invalid File Format."}) << content;
        EXPECT_EQ(bench.session().ConfigFileName, name);
    }
    for (const auto& [name, reason] :
         Rows<std::string, const char*>{{bench.folder.path(), "it is a folder"},
                                        {fifo, "it is a device"},
                                        {"/dev/zero", "it is a device"},
                                        {"/nowhere/x.spi", "No such file"}})
        expectBox(bench.open(name), fmt::format("\"{}\" cannot be read: {}", name, reason));
    bench.fileDialogs.answer(std::nullopt);
    bench.choose("frmMain.itemOpen");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No filename selected.  Nothing to open."});
    EXPECT_EQ(bench.session().ConfigFileName, "") << "the last one could not be read";
    EXPECT_EQ(bench.names().items(), Texts{"kept"});
}

TEST(ConfigurationFile, ThatCannotBeWrittenLeavesTheOldOneAndTheChangesMarked) {
    FileBench bench;
    const std::string name = bench.folder.write("old.spi", "old");
    const auto refused = [&](const std::string& target, const std::string& reason) {
        expectBox(bench.saveAs(target), reason);
        EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
        EXPECT_EQ(bench.session().ConfigFileName, "") << "of a file that was not written";
        EXPECT_EQ(contentOf(name), "old");
        EXPECT_FALSE(bench.pointer.busy());
    };
    refused(bench.folder.path("nowhere/x.spi"), "No such file or directory");
    bench.save("Spannung \u2126");
    refused(name, "[QuickCommand] \"Spannung \u2126\" cannot be saved: the character \"\u2126\" is "
                  "not in the code page Windows-1252.");
    bench.names().select(0);
    bench.click("frmMain.cmdDeleteQC");
    bench.setToSend({"two\nlines"});
    refused(name, "cannot hold an end of line");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(bench.folder.path()), {}), 1);

    bench.fileDialogs.answer(std::nullopt); // Cancel
    bench.choose("frmMain.itemSaveAs");
    bench.session().ConfigFileName.clear();
    bench.fileDialogs.answer(std::nullopt);
    bench.choose("frmMain.itemSave");
    bench.fileDialogs.answer("");
    bench.choose("frmMain.itemSave");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No filename selected.  Cannot Save."});
    EXPECT_EQ(bench.session().ConfigFileName, "");
}

TEST(ConfigurationFile, RemembersTheChipsOfAUser) {
    ChipFolder chips;
    const std::string file = chips.add("meter");
    chips.add("lamp");
    FileBench bench;
    forms::TabStrip& strip = bench.program.mainForm().tabs.TabStripMain;
    const std::string before = bench.folder.path("before.spi");
    bench.saveAs(before);
    EXPECT_EQ(contentOf(before).find("Chip"), std::string::npos);
    for (const char* name : {"meter", "lamp"})
        bench.program.mainForm().call("AddChipTab", std::string(name));
    const std::string name = bench.folder.path("with.spi");
    bench.saveAs(name);
    const std::string with = contentOf(name);
    const std::string records = "\"[UserChip]\",\"meter\"\r\n\"[UserChip]\",\"lamp\"\r\n";
    ASSERT_NE(with.find(records + "\"[ApplyNow]\""), std::string::npos) << with;
    EXPECT_EQ(std::string(with).erase(with.find(records), records.size()), contentOf(before));

    EXPECT_EQ(bench.open(before), Texts{});
    EXPECT_EQ(strip.count(), 2);
    EXPECT_EQ(bench.open(name), Texts{});
    EXPECT_EQ(strip.count(), 4);
    EXPECT_EQ(strip.tabs()[3].caption, "lamp");

    // one that is missing is named, and stays in the file
    std::filesystem::remove(file);
    EXPECT_EQ(bench.open(name),
              Texts{"The configuration has tabs of chips that have no file: meter.\r\n"
                    "They come back when it is opened with the files in their folder."});
    EXPECT_EQ(strip.count(), 3);
    bench.saveAs(bench.folder.path("again.spi"));
    EXPECT_NE(contentOf(bench.folder.path("again.spi")).find(records), std::string::npos);

    const Texts shown = bench.openRecords("\"[UserChip]\",\"a\tb\"\r\n\"[UserChip]\",5\r\n"
                                          "\"[CommandToSend]\",\"x\"\r\n");
    EXPECT_EQ(shown.size(), 1U);
    EXPECT_EQ(bench.session().UserChips, Texts{"5"});
    EXPECT_EQ(bench.sendLines(), Texts{"x"});
}

} // namespace
} // namespace bitlux::test
