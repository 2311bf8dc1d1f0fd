#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct CountedTool : SystemInformation {
    [[nodiscard]] bool available() const override { return true; }
    void start() override { ++starts; }
    int starts = 0;
};

TEST(AboutForm, ShowsVersionAndBuildAndStartsTheSystemsToolWhereThereIsOne) {
    for (const bool withTool : {true, false}) {
        TestBench around; // for its hardware and its desk
        CountedTool tool;
        Desk desk = around.desk.desk();
        desk.systemInformation = withTool ? &tool : nullptr;
        Program program(around.bench.hardware(), desk);
        program.Main();
        program.mainForm().itemAbout.click();
        AboutForm& form = program.aboutForm();
        EXPECT_TRUE(form.visible());
        EXPECT_TRUE(form.lblVersion.caption().starts_with("Version 0."));
        EXPECT_EQ(form.lblBuild.caption(), "Build 4457");
        EXPECT_EQ(form.cmdSysInfo.enabled(), withTool);
        form.call("cmdSysInfo_Click");
        EXPECT_EQ(tool.starts, withTool ? 1 : 0);
        form.cmdOK.click();
        EXPECT_FALSE(form.visible());
        EXPECT_TRUE(around.boxes.shown().empty());
    }
}

} // namespace
} // namespace bitlux::test
