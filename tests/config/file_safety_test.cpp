// What a user has in a configuration file stays there, whatever goes wrong around it.

#include "file_bench.h"

#include "platform/failure.h"

#include <filesystem>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A port that is listed and cannot be opened.
struct ClosedPort : SimulatedPort {
    using SimulatedPort::SimulatedPort;
    [[noreturn]] static void fail() {
        throw Failure(Failure::Kind::PortUnusable, "The port is held by another program.");
    }
    std::int32_t Inp(std::int16_t) override { fail(); }
    void Outp(std::int16_t, std::int16_t) override { fail(); }
};

TEST(ConfigurationFile, SurvivesAPortThatCannotBeUsed) {
    FileBench writer;
    const std::string name = writer.folder.path("good.spi");
    writer.save("one");
    writer.program.dialog().CheckEnable72537.setValue(1);
    writer.saveAs(name);
    const std::string content = contentOf(name);

    TestBench around; // for its dongle, its clock and its desk
    ClosedPort port(around.clock, makeDevice("none"));
    Program program({.port = port, .usb = around.dongle, .clock = around.clock},
                    around.desk.desk());
    program.Main();
    program.dialog().Btn_ParallelPort_Click();
    program.open(name);
    EXPECT_EQ(around.boxes.takeTexts(), Texts{"The port is held by another program."});
    EXPECT_EQ(program.session().ConfigFileName, "");
    // Apply has come to its end; the pins alone could not follow.
    EXPECT_TRUE(program.mainForm().tabs.IsTabActive(72537));
    program.mainForm().files.itemSave.click(); // asks, and is cancelled
    EXPECT_EQ(contentOf(name), content);
}

TEST(ConfigurationFile, FindsAPortThatWasSetUpAndNotChosen) {
    FileBench writer;
    const std::string name = writer.folder.path("board.spi");
    writer.save("one");
    writer.saveAs(name);

    TestBench bench;
    bench.choose("frmMain.itemPortOptions");
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.click("frmConfigureSPI.cmdCancel");
    bench.fileDialogs.answer(name);
    bench.choose("frmMain.itemOpen");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.session().LPTPortAddress, 0x378);
    EXPECT_EQ(bench.session().ConfigFileName, name);
    bench.choose("frmMain.itemSave");
    EXPECT_NE(contentOf(name).find("1 0 1 0 0 1 0 1 one"), std::string::npos);

    // All ports have gone since.
    bench.port.setAddresses({});
    bench.program.dialog().Btn_ParallelPort_Click();
    bench.fileDialogs.answer(name);
    bench.choose("frmMain.itemOpen");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Please Select a Parallel Port."});
}

TEST(ConfigurationFile, IsKeptWhenItHasMoreQuickCommandsThanThereAre) {
    FileBench bench;
    const std::string name = bench.folder.path("board.spi");
    bench.save("read id");
    bench.save("1 0", "3");
    EXPECT_EQ(bench.saveAs(name), Texts{});
    const std::string two = contentOf(name);
    bench.click("frmConfigureSPI.cmdApply"); // empties the table
    bench.choose("frmMain.itemSave");
    EXPECT_EQ(bench.boxes.takeTexts(),
              Texts{"The file had 2 Quick Commands and has 0 now.\r\nThe old file is kept as \"" +
                    name + "~\"."});
    EXPECT_EQ(contentOf(name + "~"), two);
    EXPECT_EQ(contentOf(name).find("read id"), std::string::npos);
    EXPECT_EQ(bench.session().ConfigDirty, ConstOff);
    // As many or more go over the old file.
    bench.choose("frmMain.itemSave");
    bench.save("read id");
    bench.choose("frmMain.itemSave");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(contentOf(name + "~"), two);
    // What cannot be kept is not replaced.
    const std::string one = contentOf(name);
    std::filesystem::remove(name + "~");
    std::filesystem::create_directory(name + "~");
    bench.click("frmConfigureSPI.cmdApply");
    bench.choose("frmMain.itemSave");
    expectBox(bench.boxes.takeTexts(), "Nothing was saved");
    EXPECT_EQ(contentOf(name), one);
    EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
}

TEST(ConfigurationFile, ReplacesEverything) {
    FileBench bench;
    const std::string name = bench.folder.path("empty.spi");
    bench.saveAs(name);
    EXPECT_TRUE(contentOf(name).ends_with("\r\n\"[QuickCommand]\",\"        \"\r\n"));
    bench.save("old");
    bench.setToSend({"old"});
    bench.saveBatch("old Batch");
    bench.openBatchPage();
    // It stops what is being sent.
    bench.loop.atTurn(3, [&] { EXPECT_EQ(bench.open(name), Texts{}); });
    bench.loop.atTurn(9, [] { FAIL() << "the run went on"; });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.names().items(), Texts{""});
    EXPECT_EQ(bench.available(), Texts{""});
    EXPECT_EQ(bench.session().QuickCommandTableEmpty, ConstOff);
    EXPECT_EQ(bench.session().BatchCount(), 1);
    EXPECT_EQ(bench.get<forms::ComboBox>("frmMain.cmbBatches").items(), Texts{});
    EXPECT_EQ(bench.sendLines(), Texts{});
    EXPECT_EQ(bench.log(), Texts{});
    EXPECT_EQ(bench.lines("frmMain.lstSessionLogMult"), Texts{});
}

} // namespace
} // namespace bitlux::test
