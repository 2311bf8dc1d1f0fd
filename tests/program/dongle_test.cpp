#include "platform/failure.h"
#include "support/test_bench.h"

#include <memory>
#include <sstream>
#include <utility>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* startUsb = "Start_USB";

/// A bench with the dongle plugged in before the program starts, in hexadecimal display.
struct DongleBench : TestBench {
    DongleBench() : TestBench("echo", {}, WithDongle::Yes) {}

    /// Applies a word length, in the dialog as the user sees it or hidden.
    void apply(const std::string& bits) {
        get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").setText(bits);
        program.dialog().optHex.setValue(true);
        program.dialog().cmdApply_Click();
    }
    void search() { program.mainForm().call(startUsb); }
    /// Which of the dialog's controls are shown or, with a leading '!', enabled.
    std::string states(const std::string& names) {
        std::istringstream words(names);
        std::string result;
        for (std::string name; words >> name;) {
            const bool asksEnabled = name.front() == '!';
            const forms::Control& control =
                program.forms().control("frmConfigureSPI." + name.substr(asksEnabled ? 1 : 0));
            result += (asksEnabled ? control.enabled() : control.visible()) ? '+' : '-';
        }
        return result;
    }
};

TEST(Dongle, IsFoundAtTheStartAndTakesTheWords) {
    DongleBench bench;
    EXPECT_TRUE(bench.session().USBReady);
    EXPECT_EQ(bench.label("frmConfigureSPI.lblSPIBitRange"), "(Anything between 1 and 40)");
    bench.apply("16");
    EXPECT_EQ(traceOf(bench, [&bench] { bench.send("A5C3"); }),
              (Texts{"0 OUT 10 70 00 A5 C3 00 00 00", "2016000 IN 10 70 00 00 00 00 00 00"}));
    EXPECT_TRUE(bench.boxes.shown().empty());
}

TEST(Dongle, DoesNotTakeThePortFromItsUser) {
    DongleBench bench;
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.apply("8");
    EXPECT_TRUE(bench.program.engine().usesDongle());
    bench.program.dialog().ChkSerialPort.setValue(0);
    bench.apply("8");
    bench.search();
    EXPECT_FALSE(bench.program.engine().usesDongle());
    EXPECT_EQ(bench.states("!cmbPortsAvailable framePortPins !ChkSerialPort"), "+++");
}

TEST(Dongle, ArrangesTheDialogByWhatWasFound) {
    const char* const names = "!ChkSerialPort !lblLPTaddress !cmbPortsAvailable !chkHardCodeLPT(0) "
                              "frameSPIBitOrder frameCS "
                              "frameDI frameDO frameSPItype framePortPins frameStandardPins "
                              "frameOpenCollectorPins frameUSBExtraPins lblPortDisabled "
                              "lblSPIPinsDisabled lblExtraPinsDisabled";
    DongleBench bench;
    EXPECT_EQ(bench.states(names), "+---+++++---+---");
    bench.dongle.unplug();
    bench.search();
    EXPECT_EQ(bench.states(names), "----+++++---+---") << "nothing is touched without a port";
    EXPECT_FALSE(bench.session().USBReady);
    bench.dongle.plug();
    bench.search();
    EXPECT_EQ(bench.states(names), "+---+++++---+---");
    EXPECT_TRUE(bench.program.engine().usesDongle()) << "there is no other bus";
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.dongle.unplug();
    bench.search();
    EXPECT_EQ(bench.states(names), "-+++++++++++----");
    EXPECT_EQ(bench.label("frmConfigureSPI.lblSPIBitRange"), "(Anything between 1 and 160)");
    EXPECT_TRUE(bench.boxes.shown().empty());
}

TEST(Dongle, StopsAContinuousRunWhenItIsPulledOutAndGoesOnWhenItIsBack) {
    DongleBench bench;
    bench.apply("8");
    bench.edit("frmMain.txtHexWordToSend", "A5");
    bench.loop.atTurn(3, [&] { bench.dongle.unplug(); });
    bench.loop.atTurn(9, [] { FAIL() << "the run went on"; });
    bench.click("frmMain.cmdSendContinuous");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{checkTheCable});
    EXPECT_TRUE(bench.session().LinkFailed);
    EXPECT_EQ(bench.log().size(), 3 * 5U) << "the last word never went out";
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "xx");
    bench.dongle.plug();
    bench.send("3C");
    bench.send("00");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "3C");
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
}

TEST(Dongle, WorksAgainAfterAnExitThatWasCancelled) {
    DongleBench bench;
    bench.session().ConfigDirty = ConstOn;
    bench.boxes.answer(MessageBox::Answer::Yes); // and the dialog for the name is cancelled
    bench.choose("frmMain.itemExit");
    EXPECT_TRUE(bench.program.running());
    bench.apply("8");
    bench.send("A5");
    bench.send("3C");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "A5");
}

TEST(Dongle, AppliesWithoutTouchingThePins) {
    DongleBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.setVisible(true);
    dialog.txtPartName.setText("ADC");
    dialog.cmbCS.setText("3"); // would be a conflict on the port
    dialog.optCSpositive.setValue(true);
    bench.apply("161");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"The maximum number of SPI bits is 160"});
    dialog.cmdOK_Click();
    EXPECT_FALSE(dialog.visible()) << "OK closes even after a refusal";
    bench.boxes.takeTexts();
    bench.apply("40.4");
    EXPECT_EQ(bench.boxes.takeTexts(),
              Texts{"USB Mode only supports 40 bits maximum at this time."});
    EXPECT_EQ(bench.label("frmMain.labelMainTitle"), "Generic Bitlux Forge");
    bench.apply("41"); // a whole number passes
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
    EXPECT_EQ(bench.label("frmMain.labelMainTitle"), "ADC Bitlux Forge");
    EXPECT_EQ(bench.session().CSAssertLevel, 1);
    EXPECT_EQ(bench.session().CSPin, 0);
}

TEST(Dongle, IsSetToFirmwareUpdateModeOnlyWhenTheUserIsSure) {
    DongleBench bench;
    bench.apply("16");
    for (const auto answer : {MessageBox::Answer::No, MessageBox::Answer::Yes}) {
        bench.boxes.answer(answer);
        bench.choose("frmMain.itemUpdateDongle");
        EXPECT_EQ(bench.dongle.lastOut() == (UsbFrame{0x10, 0x77}),
                  answer == MessageBox::Answer::Yes);
    }
    const std::string question =
        "Are you sure you want to set the dongle to firmware update mode?  "
        "This operation cannot be undone.";
    EXPECT_EQ(bench.boxes.takeTexts(),
              (Texts{question, question,
                     "Dongle firmware update mode has been set.\r\n"
                     "Use the DLK Device Manager application to\r\nupdate the dongle firmware."}));
    EXPECT_EQ(bench.boxes.shown().front().preset, MessageBox::Answer::No);
    bench.send("1");
    EXPECT_EQ(bench.dongle.lastOut(), (UsbFrame{0x10, 0x70, 0, 0, 1}));
    bench.dongle.unplug();
    bench.search();
    bench.choose("frmMain.itemUpdateDongle");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"There is no USB connection to a working dongle.  "
                                             "Firmware update mode cannot be set."});
    EXPECT_FALSE(bench.session().FirmwareUpdateRequest);
}

TEST(Dongle, IsNotSetToFirmwareUpdateModeByAWordThatGoesElsewhereOrNowhere) {
    DongleBench bench;
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.program.dialog().ChkSerialPort.setValue(0);
    bench.apply("16");
    EXPECT_EQ(accessesOf(bench, [&] { bench.choose("frmMain.itemUpdateDongle"); }), "");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"The parallel port is in use.  Choose the dongle in "
                                             "the configuration to set firmware update mode."});
    bench.program.dialog().ChkSerialPort.setValue(1);
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.dongle.setFaults(DongleFaults({dongleFaultFrom("stalled@1")}));
    bench.choose("frmMain.itemUpdateDongle");
    EXPECT_EQ(bench.boxes.takeTexts().back(), checkTheCable) << "no message of success";
    bench.send("1");
    EXPECT_EQ(bench.dongle.lastOut(), (UsbFrame{0x10, 0x70, 0, 0, 1}));
}

TEST(Dongle, IsChosenByItsBoxWhereItIsReady) {
    for (const auto& [box, dongle, port, bus] :
         {row(0, false, false, "none"), row(0, false, true, "W"), row(0, true, false, "none"),
          row(0, true, true, "W"), row(1, false, false, "none"), row(1, false, true, "W"),
          row(1, true, false, "OUT"), row(1, true, true, "OUT")}) {
        DongleBench bench;
        bench.click("frmConfigureSPI.Btn_ParallelPort");
        bench.program.dialog().ChkSerialPort.setValue(static_cast<std::int16_t>(box));
        bench.apply("8");
        bench.session().USBReady = dongle;
        bench.session().ParallelPortReady = port;
        bench.edit("frmMain.txtHexWordToSend", "A5");
        const Texts trace = traceOf(
            bench, [&bench] { bench.click("frmMain.cmdSendOnce"); }, Times::No);
        const std::string first = trace.empty() ? "none" : trace[0];
        EXPECT_EQ(first.substr(0, first.find(' ')), bus) << box << dongle << port;
    }
}

/// An endpoint of a dongle that is always present; it records the calls.
struct NotedEndpoint : UsbEndpoint {
    explicit NotedEndpoint(std::string& notes) : noted(notes) {}
    UsbStatus note(const char* call) {
        noted += fmt::format("{}{:02X} ", call, pipe);
        return UsbStatus::Success;
    }
    int enumerate(std::string_view) override { return 1; }
    UsbStatus open(int) override { return note("open"); }
    UsbStatus addInterface(int, int) override { return note("add"); }
    UsbStatus setConfiguration(int) override { return note("set"); }
    UsbStatus bind(std::uint8_t address) override {
        pipe = address;
        return note("bind");
    }
    UsbStatus resetPipe() override { return note("reset"); }
    UsbStatus startReading(const UsbBuffers&) override { return note("read"); }
    UsbStatus startWriting(const UsbBuffers&) override { return note("write"); }
    UsbStatus write(const UsbFrame&) override { return note("frame"); }
    UsbStatus read(UsbFrame&, std::int64_t) override { return UsbStatus::NothingRead; }
    UsbStatus resetDevice() override { return note("restart"); }
    UsbStatus stopReading() override { return note("stop"); }
    UsbStatus stopWriting() override { return note("stop"); }
    UsbStatus removeInterface() override { return note("remove"); }
    UsbStatus leaveConfiguration() override { return note("leave"); }
    void close() override { note("close"); }
    std::string& noted;
    std::uint8_t pipe = 0;
};

struct NotedHost : UsbHost {
    std::unique_ptr<UsbEndpoint> makeEndpoint() override {
        if (std::exchange(fails, false))
            throw Failure(Failure::Kind::File, "The list of devices cannot be read");
        return std::make_unique<NotedEndpoint>(notes);
    }
    std::string notes;
    bool fails = false;
};

TEST(Dongle, IsLookedForAfterASearchThatFailedAndLeftWithBothPipesClosed) {
    TestBench around; // for its port, its clock and its desk
    NotedHost host;
    Program program({.port = around.port, .usb = host, .clock = around.clock}, around.desk.desk());
    program.Main();
    host.fails = true;
    EXPECT_THROW(program.mainForm().call(startUsb), Failure);
    host.notes.clear();
    program.mainForm().call(startUsb);
    EXPECT_TRUE(program.session().USBReady);
    program.end();
    EXPECT_EQ(host.notes, "stop02 stop81 remove81 leave81 close81 close02 "
                          "open00 open00 add00 set00 bind81 reset81 read81 bind02 write02 "
                          "stop02 stop81 remove81 leave81 close81 close02 ");
}

} // namespace
} // namespace bitlux::test
