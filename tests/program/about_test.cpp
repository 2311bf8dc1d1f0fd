#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct CountedTool : SystemInformation {
    [[nodiscard]] bool available() const override { return true; }
    void start() override { ++starts; }
    int starts = 0;
};

TEST(AboutForm, TellsVersionAndBuildAndStartsTheSystemsTool) {
    VirtualClock clock;
    VirtualBench bench(clock, makeDevice("loopback"));
    ScriptedDesk scripted(clock);
    CountedTool tool;
    Desk desk = scripted.desk();
    desk.systemInformation = &tool;
    Program program(bench.hardware(), desk);
    program.Main();
    program.mainForm().itemAbout.click();
    AboutForm& form = program.aboutForm();
    EXPECT_TRUE(form.visible());
    EXPECT_TRUE(form.lblVersion.caption().starts_with("Version 0."));
    EXPECT_EQ(form.lblBuild.caption(), "Build 4457");
    form.cmdSysInfo.click();
    EXPECT_EQ(tool.starts, 1);
    form.cmdOK.click();
    EXPECT_FALSE(form.visible());
}

TEST(AboutForm, OffersNoToolWhereThereIsNone) {
    TestBench bench;
    bench.choose("frmMain.itemAbout");
    EXPECT_FALSE(bench.program.aboutForm().cmdSysInfo.enabled());
    bench.program.aboutForm().call("cmdSysInfo_Click");
    EXPECT_TRUE(bench.boxes.shown().empty());
}

} // namespace
} // namespace bitlux::test
