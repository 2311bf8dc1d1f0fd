#include "platform/failure.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Program, StartsWithItsDefaults) {
    TestBench bench;
    const Session& session = bench.session();
    EXPECT_EQ(session.BuildNumber, 4457);
    EXPECT_EQ(session.SPIWordLength, 8);
    EXPECT_EQ(session.SavedSPIWordLength, 8);
    EXPECT_EQ(session.MaxSPIBits, 160);
    EXPECT_EQ(session.SPIType, 1);
    EXPECT_EQ(session.MSBFirst, ConstOn);
    EXPECT_EQ(session.DisplayHex, 0);
    EXPECT_EQ(session.SPIBaudRate, 64);
    EXPECT_FALSE(session.ParallelPortReady);
    EXPECT_FALSE(session.USBReady);
    EXPECT_FALSE(session.LinkFailed);
    EXPECT_EQ(session.LPTPortAddresses[0], 888);
    EXPECT_EQ(session.SessionLogCapacity, 20000);
    EXPECT_EQ(session.SessionLogEnabled, ConstOn);
    EXPECT_EQ(session.ContinuousLogEnabled, ConstOn);
    EXPECT_EQ(session.ContinuousLogLimit, 5);
    EXPECT_EQ(session.ContinuousLogCount, 1);
    EXPECT_EQ(session.ActiveMainTab, 1);
    EXPECT_EQ(session.ConfigDirty, ConstOff);
    EXPECT_EQ(session.StartingUp, ConstOff);
    EXPECT_EQ(session.QuickCommandTableEmpty, ConstOn);
    EXPECT_EQ(session.SingleWordBits, std::vector<std::int16_t>(9, 0));
    EXPECT_EQ(session.ConfigFileName + session.LogFileName, "");
}

TEST(Program, ShowsTheMainFormWithEightBitsAndTwoTabs) {
    TestBench bench;
    EXPECT_TRUE(bench.program.forms().form("frmMain").visible());
    EXPECT_FALSE(bench.program.forms().form("frmConfigureSPI").visible());
    EXPECT_TRUE(bench.get<forms::Button>("frmMain.cmdSI_single(7)").visible());
    EXPECT_FALSE(bench.get<forms::Button>("frmMain.cmdSI_single(8)").visible());
    EXPECT_TRUE(bench.program.forms().control("frmMain.frameSPIinSingle").visible());
    EXPECT_FALSE(bench.program.forms().control("frmMain.lblConfigNag").visible());
    EXPECT_EQ(bench.get<forms::TabStrip>("frmMain.TabStripMain").count(), 2);
    EXPECT_EQ(bench.label("frmMain.labelMainTitle"), "Generic Bitlux Forge");
    EXPECT_TRUE(bench.boxes.shown().empty());
}

TEST(Program, LeavesThePortAloneUntilItIsSetUp) {
    TestBench bench;
    EXPECT_EQ(bench.clock.nanoseconds(), 0);
    bench.configure("8");
    EXPECT_EQ(bench.clock.nanoseconds(), SimulatedPort::accessTime);
}

TEST(Program, LeavesThePinsIdleAtItsEnd) {
    TestBench bench;
    bench.configure("8");
    bench.session().WordToSend.assign(8, 7); // stops in the word, chip select asserted
    bench.program.engine().SendSPI();
    EXPECT_EQ(accessesOf(bench, [&] { bench.program.end(); }), "01");
    EXPECT_EQ(accessesOf(bench, [&] { bench.program.end(); }), "");
}

TEST(Program, EndsInAContinuousRun) {
    TestBench bench;
    bench.configure("8");
    bench.edit("frmMain.txtHexWordToSend", "1");
    bench.loop.atTurn(2, [&] { bench.program.end(); });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.loop.turns(), 2);
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

} // namespace
} // namespace bitlux::test
