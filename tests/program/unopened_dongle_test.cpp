// A dongle that is found and cannot be opened, because another program holds it.

#include "platform/failure.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

const DongleFaults held({dongleFaultFrom("busy")});
constexpr const char* startButton = "Start_USB";

/// The state of the dialog's controls for a bus, as "box - clock - pins + extra +".
std::string offered(TestBench& bench) {
    const ConfigureDialog& dialog = bench.program.dialog();
    const auto sign = [](bool on) { return on ? " + " : " - "; };
    return "box" + std::string(sign(dialog.ChkSerialPort.enabled())) + "clock" +
           sign(dialog.frameSPIBaudRate.visible()) + "pins" + sign(dialog.framePortPins.visible()) +
           "port list" + sign(dialog.cmbPortsAvailable.enabled()) + dialog.lblSPIBitRange.caption();
}

constexpr const char* port = "box - clock - pins + port list + (Anything between 1 and 160)";
constexpr const char* dongle = "box + clock + pins - port list - (Anything between 1 and 40)";

TEST(UnopenedDongle, IsNoFaultOfAFrame) {
    for (const char* text : {"busy@2", "busy/0.5", "busy:3"})
        EXPECT_THROW(dongleFaultFrom(text), Failure) << text;
    EXPECT_EQ(DongleFaults({dongleFaultFrom("busy")}).next().kind, DongleFault::Kind::None);
}

TEST(UnopenedDongle, LeavesTheParallelPort) {
    TestBench bench;
    bench.dongle.setFaults(held);
    bench.dongle.plug();
    bench.program.mainForm().call(startButton);
    EXPECT_FALSE(bench.session().USBReady);
    EXPECT_EQ(offered(bench), port) << "although no port is set up yet";
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No device available to send SPI Data."});
    bench.choose("frmMain.itemUpdateDongle");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"There is no USB connection to a working dongle.  "
                                             "Firmware update mode cannot be set."});
    bench.configure("2");
    EXPECT_EQ(accessesOf(bench, [&bench] { bench.send("2"); }), "00 02 06 R20 00 04 R00 00 01");
    EXPECT_EQ(bench.dongle.lastOut(), UsbFrame{});
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
}

TEST(UnopenedDongle, IsTakenOnceItsHolderHasGone) {
    TestBench bench;
    bench.dongle.setFaults(held);
    bench.dongle.plug();
    bench.program.mainForm().call(startButton);
    bench.dongle.setFaults(DongleFaults());
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2); // looks for it
    EXPECT_TRUE(bench.session().USBReady);
    EXPECT_EQ(offered(bench), dongle);
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(1);
    bench.program.dialog().optHex.setValue(true);
    bench.program.dialog().cmdApply_Click();
    EXPECT_EQ(traceOf(
                  bench, [&bench] { bench.send("A5"); }, Times::No),
              (Texts{"OUT 08 70 00 A5 00 00 00 00", "IN 08 70 00 A5 00 00 00 00"}));
}

TEST(UnopenedDongle, StopsARunAfterItWasPulledOutAndTakenByAnother) {
    TestBench bench("loopback", {}, TestBench::WithDongle::Yes);
    bench.program.dialog().optHex.setValue(true);
    bench.program.dialog().cmdApply_Click();
    bench.edit("frmMain.txtHexWordToSend", "A5");
    bench.loop.atTurn(3, [&bench] {
        bench.dongle.unplug();
        bench.dongle.setFaults(held);
        bench.dongle.plug();
    });
    bench.loop.atTurn(9, [] { FAIL() << "the run went on"; });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{checkTheCable});
    EXPECT_FALSE(bench.program.dongle().isPresent());
    EXPECT_EQ(bench.notice(), "Dongle gone: plug it in, the next send looks for it");
    bench.dongle.setFaults(DongleFaults());
    bench.send("3C");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "3C");
}

} // namespace
} // namespace bitlux::test
