#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A machine with ports at these addresses.
class Ports : public ParallelPort {
public:
    explicit Ports(std::array<std::int16_t, 3> addresses)
        : ParallelPort(true), addresses_(addresses) {}
    std::int32_t Inp(std::int16_t) override { return 0; }
    void Outp(std::int16_t, std::int16_t) override {}
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    std::int16_t GetLPTPortAddress(std::int16_t number) override {
        return addresses_.at(static_cast<std::size_t>(number - 1));
    }

private:
    std::array<std::int16_t, 3> addresses_;
};

/// What all controls of the dialog hold, a line each.
std::string stateOf(ConfigureDialog& dialog) {
    std::string state;
    for (forms::Control* control : dialog.controls()) {
        std::string value;
        if (const auto* check = dynamic_cast<forms::CheckBox*>(control))
            value = std::to_string(check->value());
        else if (const auto* option = dynamic_cast<forms::OptionButton*>(control))
            value = std::to_string(option->value());
        else if (const auto* combo = dynamic_cast<forms::ComboBox*>(control))
            value = combo->text();
        else if (const auto* box = dynamic_cast<forms::TextBox*>(control))
            value = box->text();
        else if (const auto* tabs = dynamic_cast<forms::TabStrip*>(control))
            value = std::to_string(tabs->selected());
        state += fmt::format("{} {} {} {}\n", control->localName(), value, control->visible(),
                             control->enabled());
    }
    return state;
}

struct PortsBench {
    Ports port;
    VirtualClock clock;
    SimulatedDongle unplugged{clock, makeDevice("none")};
    ScriptedDesk desk{clock};
    Program program{{.port = port, .usb = unplugged, .clock = clock}, desk.desk()};

    explicit PortsBench(std::array<std::int16_t, 3> addresses) : port(addresses) { program.Main(); }
    ConfigureDialog& dialog() { return program.dialog(); }
};

TEST(ConfigureDialog, ListsThePortsThatItFinds) {
    PortsBench bench({0x3BC, 0, static_cast<std::int16_t>(0xD010)});
    bench.port.SetFastMode(1);
    EXPECT_FALSE(bench.dialog().cmbPortsAvailable.enabled());
    bench.dialog().Btn_ParallelPort.click();
    EXPECT_EQ(bench.port.GetFastMode(), 0);
    EXPECT_EQ(bench.dialog().cmbPortsAvailable.items(), (Texts{"LPT1: 0x3BC", "LPT3: 0xD010"}));
    EXPECT_EQ(bench.dialog().cmbPortsAvailable.listIndex(), 0);
    EXPECT_TRUE(bench.dialog().cmbPortsAvailable.enabled());
    std::string boxes;
    for (int i = 0; i < 3; ++i)
        boxes += bench.dialog().chkHardCodeLPT(i).enabled() ? '+' : '-';
    EXPECT_EQ(boxes, "+-+");
    EXPECT_TRUE(bench.program.session().ParallelPortReady);
    bench.dialog().cmbPortsAvailable.setListIndex(1);
    bench.dialog().cmdApply_Click();
    EXPECT_EQ(static_cast<std::uint16_t>(bench.program.session().LPTPortAddress), 0xD010);
}

TEST(ConfigureDialog, TellsThatThereIsNoPort) {
    PortsBench bench({0, 0, 0});
    bench.dialog().Btn_ParallelPort.click();
    EXPECT_EQ(bench.desk.boxes.takeTexts(), Texts{"A parallel port was not detected."});
    EXPECT_FALSE(bench.program.session().ParallelPortReady);
    EXPECT_FALSE(bench.dialog().chkHardCodeLPT(0).enabled());
}

TEST(ConfigureDialog, KeepsAtMostOneFixedAddress) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.Btn_ParallelPort_Click();
    dialog.chkHardCodeLPT(0).setValue(1);
    dialog.chkHardCodeLPT(2).setValue(1);
    EXPECT_FALSE(dialog.chkHardCodeLPT(0).checked());
    EXPECT_FALSE(dialog.cmbPortsAvailable.enabled());
    dialog.chkHardCodeLPT(2).setValue(0);
    EXPECT_TRUE(dialog.cmbPortsAvailable.enabled());
}

TEST(ConfigureDialog, OffersTheParallelPortWhenNoDongleAnswers) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    EXPECT_FALSE(dialog.ChkSerialPort.checked());
    EXPECT_FALSE(dialog.ChkSerialPort.enabled());
    EXPECT_EQ(dialog.lblSPIBitRange.caption(), "(Anything between 1 and 160)");
    dialog.Btn_ParallelPort_Click();
    dialog.extraPins.frameStandardPins.hide();
    dialog.extraPins.frameUSBExtraPins.show();
    dialog.ChkSerialPort.setValue(1); // tries the dongle again
    EXPECT_FALSE(dialog.ChkSerialPort.checked());
    EXPECT_EQ(dialog.lblSPIBitRange.caption(), "(Anything between 1 and 160)");
    EXPECT_TRUE(dialog.cmbPortsAvailable.enabled());
    EXPECT_TRUE(dialog.extraPins.frameStandardPins.visible());
    EXPECT_FALSE(dialog.extraPins.frameUSBExtraPins.visible());
    EXPECT_FALSE(dialog.frameSPIBaudRate.visible());
}

TEST(ConfigureDialog, GoesBackToItsDefaults) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    dialog.SetDefaults();
    const std::string defaults = stateOf(dialog);
    bench.configure("24", {"optHex", "optLSBfirst", "optCSpositive", "optLogOff"});
    bench.send("123456");
    dialog.chkEnableLog.setValue(0);
    dialog.SetDefaults();
    EXPECT_EQ(stateOf(dialog), defaults);
    EXPECT_EQ(dialog.cmbSPIWordLength.text(), "8");
    EXPECT_TRUE(dialog.optBinary.value() && dialog.optMSBfirst.value() &&
                dialog.optCSnegative.value() && dialog.optLogFixedNumber.value());
    EXPECT_EQ(bench.session().SessionLogEnabled, ConstOn);
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "");
    // Nothing of it is applied.
    EXPECT_EQ(bench.session().SPIWordLength, 24);
    EXPECT_EQ(bench.session().MSBFirst, ConstOff);
}

TEST(ConfigureDialog, EnablesTheLimitOnlyForAFixedNumber) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    for (const auto& [option, enabled] :
         {std::pair{&dialog.optLogOff, false}, std::pair{&dialog.optLogFixedNumber, true},
          std::pair{&dialog.optLogForever, false}}) {
        option->click();
        EXPECT_EQ(dialog.txtMessageLimit.enabled(), enabled) << option->caption();
        EXPECT_EQ(dialog.lblMessageLimit.enabled(), enabled) << option->caption();
    }
}

TEST(ConfigureDialog, GoesBackToWhatWasAcceptedOnCancel) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    bench.enablePin("Data", 1, "8");
    dialog.types.TabStripSPItype.click(3);
    bench.configure("24", {"optHex", "optLSBfirst", "optCSpositive", "optLogForever"});
    const std::string accepted = stateOf(dialog);
    // Every setting changes, and none is applied.
    dialog.setVisible(true);
    dialog.txtPartName.setText("Other");
    dialog.cmbSPIWordLength.setText("9");
    dialog.cmbCS.setText("9");
    dialog.cmbDI.setText("8");
    dialog.cmbCLK.setText("7");
    dialog.cmbDO.setText("15");
    for (forms::OptionButton* option :
         {&dialog.optBinary, &dialog.optMSBfirst, &dialog.optCSnegative, &dialog.optDIpolarity_neg,
          &dialog.optDOpolarity_neg, &dialog.optLogOff})
        option->setValue(true);
    dialog.types.TabStripSPItype.click(8);
    dialog.extraPins.dataPins.enable(1).setValue(0);
    bench.enablePin("Control", 0, "1", "Power");
    dialog.chkHardCodeLPT(2).setValue(1);
    EXPECT_EQ(accessesOf(bench, [&] { dialog.cmdCancel.click(); }), "");
    EXPECT_FALSE(dialog.visible());
    EXPECT_EQ(stateOf(dialog), accepted);
    EXPECT_EQ(bench.session().SPIWordLength, 24);
}

TEST(ConfigureDialog, GoesBackToTheDefaultsWhereNothingWasAccepted) {
    TestBench bench; // without a bus nothing is accepted
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.setVisible(true);
    dialog.txtPartName.setText("Other");
    dialog.cmbSPIWordLength.setText("9");
    dialog.cmdCancel.click();
    EXPECT_EQ(dialog.txtPartName.text() + dialog.cmbSPIWordLength.text(), "Generic8");
}

TEST(ConfigureDialog, TakesOverTheClockOfTheDongleAtOnce) {
    TestBench bench("loopback", {}, TestBench::WithDongle::Yes);
    ConfigureDialog& dialog = bench.program.dialog();
    EXPECT_TRUE(dialog.SPIBaudRate(1).value());
    for (const auto& [index, code] :
         {std::pair{0, 0}, std::pair{2, 128}, std::pair{3, 192}, std::pair{1, 64}}) {
        dialog.SPIBaudRate(index).click();
        EXPECT_EQ(bench.session().SPIBaudRate, code);
    }
}

TEST(ConfigureDialog, TellsEachTypeInWords) {
    TestBench bench;
    const TypePage& types = bench.program.dialog().types;
    int type = 0;
    for (const auto& [valid, toggled, idle] :
         {row("rising", "falling", "low"), row("falling", "rising", "low"),
          row("falling", "rising", "high"), row("rising", "falling", "high"),
          row("falling", "falling", "low"), row("rising", "rising", "low"),
          row("rising", "rising", "high"), row("falling", "falling", "high")}) {
        ++type;
        EXPECT_EQ(fmt::format("{} {} {}", types.lblSPINoteRead(type).caption(),
                              types.lblSPINoteToggle(type).caption(),
                              types.lblSPINotePolarity(type).caption()),
                  fmt::format("DI and DO are valid on {} edge of CLK. DI and DO are toggled on {} "
                              "edge of CLK. CLK is {} before and after transfer.",
                              valid, toggled, idle));
    }
    EXPECT_EQ(types.lblNonStandard.first(), 5);
}

} // namespace
} // namespace bitlux::test
