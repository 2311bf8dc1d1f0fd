#include "platform/failure.h"
#include "support/test_bench.h"

#include <filesystem>
#include <memory>
#include <optional>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Program, StartsWithItsDefaults) {
    TestBench bench;
    const Session& s = bench.session();
    EXPECT_EQ(fmt::format("{} {} {} {} {} {} {} {} {}", s.BuildNumber, s.SPIWordLength,
                          s.MaxSPIBits, s.SPIType, s.DisplayHex, s.SPIBaudRate,
                          s.LPTPortAddresses[0], s.SessionLogCapacity, s.ContinuousLogLimit),
              "4457 8 160 1 0 64 888 20000 5");
    EXPECT_FALSE(s.ParallelPortReady || s.USBReady || s.LinkFailed);
    for (const Flag on :
         {s.MSBFirst, s.SessionLogEnabled, s.ContinuousLogEnabled, s.QuickCommandTableEmpty})
        EXPECT_EQ(on, ConstOn);
    EXPECT_EQ(s.ConfigDirty, ConstOff);
    EXPECT_EQ(s.SingleWordBits, std::vector<std::int16_t>(9, 0));

    const auto visible = [&](const char* name) {
        return bench.program.forms().control(name).visible();
    };
    EXPECT_TRUE(bench.program.mainForm().visible() && visible("frmMain.frameSPIinSingle"));
    EXPECT_FALSE(bench.program.dialog().visible() || visible("frmMain.lblConfigNag"));
    EXPECT_TRUE(visible("frmMain.cmdSI_single(7)") && !visible("frmMain.cmdSI_single(8)"));
    EXPECT_EQ(bench.get<forms::TabStrip>("frmMain.TabStripMain").count(), 2);
    EXPECT_EQ(bench.label("frmMain.labelMainTitle"), "Generic Bitlux Forge");
    EXPECT_TRUE(bench.boxes.shown().empty());
}

TEST(Program, TouchesThePortWhenItIsSetUpAndLeavesItIdle) {
    TestBench bench;
    EXPECT_EQ(bench.clock.nanoseconds(), 0);
    bench.configure("8");
    EXPECT_EQ(bench.clock.nanoseconds(), SimulatedPort::accessTime);
    bench.session().WordToSend.assign(8, 7); // stops in the word, chip select asserted
    bench.program.engine().SendSPI();
    EXPECT_EQ(accessesOf(bench, [&] { bench.program.end(); }), "01");
    EXPECT_EQ(accessesOf(bench, [&] { bench.program.end(); }), "");
}

TEST(Program, NamesItsProcedures) {
    TestBench bench;
    bench.configure("8");
    forms::Form& form = bench.program.forms().form("frmMain");
    bench.edit("frmMain.txtHexWordToSend", "5A");
    form.call("DoSPISingle");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "5A");
    EXPECT_EQ(accessesOf(bench, [&] { form.call("ToggleDataPort"); }), "01");
    EXPECT_EQ(accessesOf(bench, [&] { form.call("ToggleControlPort"); }), "0B");
    form.call("AdjustSPILabels");
    form.call("SetSpiWordLength", 24);
    EXPECT_EQ(bench.session().SPIWordLength, 24);
    EXPECT_EQ(bench.session().WordToSend, std::vector<std::int16_t>(24, 0));
    EXPECT_THROW(form.call("SetSpiWordLength", 0), Failure);
    EXPECT_THROW(form.call("SetSpiWordLength"), Failure);
    EXPECT_THROW(form.call("SetSpiWordLenght", 8), forms::UnknownName);
    EXPECT_EQ(bench.session().SingleWordBits, std::vector<std::int16_t>(9, 0));
}

TEST(Program, OpensTheFileThatTheCommandLineNames) {
    const TemporaryFolder folder;
    const std::string name =
        folder.write("with blanks \u00FC.spi", "\"Bitlux Forge Configuration File\",0\r\n"
                                               "\"[PartName]\",\"from the file\"\r\n");
    const auto start = [](const std::string& commandLine) {
        return std::make_unique<TestBench>("loopback", Texts{}, TestBench::WithDongle::No,
                                           commandLine);
    };
    const auto opened = start(name);
    EXPECT_EQ(opened->text("frmConfigureSPI.txtPartName"), "from the file");
    EXPECT_EQ(opened->session().ConfigFileName, name);
    EXPECT_FALSE(opened->session().OpenFromCommandLine);
    EXPECT_TRUE(opened->fileDialogs.shown().empty());
    for (const std::string& bad : {"\"" + name + "\"", folder.path(), folder.path("none.spi")}) {
        const auto bench = start(bad);
        EXPECT_EQ(bench->boxes.takeTexts(),
                  Texts{"Invalid configuration file name specified on the command line."});
        EXPECT_EQ(bench->session().ConfigFileName, "");
        EXPECT_TRUE(bench->program.mainForm().visible());
    }
    EXPECT_EQ(start("/dev/null")->boxes.takeTexts().size(), 1U); // a file that cannot be read
}

/// A bench with a setting that was neither applied nor saved, and a file to save it to.
struct DirtyBench : TestBench {
    DirtyBench() {
        configure("8");
        session().ConfigFileName = name;
        choose("frmMain.itemPortOptions");
        edit("frmConfigureSPI.txtPartName", "typed");
    }

    TemporaryFolder folder;
    std::string name = folder.path("end.spi");
};

const auto roads = {+[](DirtyBench& bench) { bench.choose("frmMain.itemExit"); },
                    +[](DirtyBench& bench) { bench.program.close(); },
                    +[](DirtyBench& bench) { bench.program.mainForm().call("Form_Unload"); }};

TEST(Program, AsksOnceHoweverItIsEnded) {
    for (const auto& road : roads) {
        DirtyBench bench;
        int ends = 0;
        const Subscription watch = bench.program.ended.follow([&ends] { ++ends; });
        bench.boxes.answer(MessageBox::Answer::Yes);
        road(bench);
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Save configuration before exiting?"});
        const MessageBox& box = bench.boxes.shown().front();
        EXPECT_EQ(box.title, "Last Chance to Save");
        EXPECT_EQ(box.buttons, MessageBox::Buttons::YesNo);
        EXPECT_EQ(box.icon, MessageBox::Icon::Question);
        EXPECT_NE(contentOf(bench.name).find("\"[PartName]\",\"typed\""), std::string::npos);
        bench.program.close();
        bench.program.end();
        EXPECT_EQ(ends, 1);
        EXPECT_FALSE(bench.program.running());
    }
}

TEST(Program, EndsWithoutAQuestionOrASaveWhereNoneIsWanted) {
    DirtyBench no;
    no.boxes.answer(MessageBox::Answer::No);
    no.program.close();
    EXPECT_FALSE(std::filesystem::exists(no.name));
    DirtyBench unchanged;
    unchanged.session().ConfigDirty = ConstOff;
    unchanged.choose("frmMain.itemExit");
    EXPECT_TRUE(unchanged.boxes.shown().empty());
    EXPECT_FALSE(unchanged.program.running());
}

TEST(Program, StaysWhenTheSaveThatWasWantedFails) {
    for (const auto& [fileName, answer, boxes] :
         Rows<std::string, std::optional<std::string>, std::size_t>{
             {"nowhere/x.spi", {}, 2}, {"", {}, 1}, {"", "", 2}}) {
        DirtyBench bench;
        const auto wantSave = [&bench, file = fileName, given = answer] {
            bench.session().ConfigFileName = file.empty() ? "" : bench.folder.path(file);
            bench.fileDialogs.answer(given);
            bench.boxes.answer(MessageBox::Answer::Yes);
        };
        for (const auto& road : roads) {
            wantSave();
            road(bench);
            EXPECT_TRUE(bench.program.running());
            EXPECT_EQ(bench.session().ConfigDirty, ConstOn);
            EXPECT_EQ(bench.boxes.takeTexts().size(), boxes);
        }
        bench.send("5A");
        EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "5A");
        wantSave();
        bench.program.close(Program::Closing::System);
        EXPECT_FALSE(bench.program.running());
    }
}

TEST(Program, StopsARunBeforeItAsks) {
    DirtyBench bench;
    bench.boxes.answer(MessageBox::Answer::No);
    bench.edit("frmMain.txtHexWordToSend", "5A");
    bench.loop.atTurn(3, [&bench] { bench.choose("frmMain.itemExit"); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.log().size(), 15U);
    EXPECT_FALSE(bench.program.running());
    EXPECT_EQ(bench.port.dataPins(), 0x01);
}

} // namespace
} // namespace bitlux::test
