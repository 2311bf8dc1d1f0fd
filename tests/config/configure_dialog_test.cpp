#include "support/state_text.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(ConfigureDialog, ListsThePortsThatItFinds) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    bench.port.setAddresses({0x3BC, 0, static_cast<std::int16_t>(0xD010)});
    bench.port.SetFastMode(1);
    EXPECT_FALSE(dialog.cmbPortsAvailable.enabled());
    dialog.Btn_ParallelPort.click();
    EXPECT_EQ(bench.port.GetFastMode(), 0);
    EXPECT_EQ(dialog.cmbPortsAvailable.items(), (Texts{"LPT1: 0x3BC", "LPT3: 0xD010"}));
    EXPECT_EQ(dialog.cmbPortsAvailable.listIndex(), 0);
    EXPECT_TRUE(dialog.cmbPortsAvailable.enabled());
    std::string boxes;
    for (int i = 0; i < 3; ++i)
        boxes += dialog.chkHardCodeLPT(i).enabled() ? '+' : '-';
    EXPECT_EQ(boxes, "+-+");
    EXPECT_TRUE(bench.session().ParallelPortReady);
    dialog.cmbPortsAvailable.setListIndex(1);
    dialog.cmdApply_Click();
    EXPECT_EQ(static_cast<std::uint16_t>(bench.session().LPTPortAddress), 0xD010);

    TestBench none;
    none.port.setAddresses({});
    none.click("frmConfigureSPI.Btn_ParallelPort");
    EXPECT_EQ(none.boxes.takeTexts(), Texts{"A parallel port was not detected."});
    EXPECT_FALSE(none.session().ParallelPortReady);
    EXPECT_FALSE(none.program.dialog().chkHardCodeLPT(0).enabled());
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
    EXPECT_FALSE(dialog.ChkSerialPort.checked() || dialog.ChkSerialPort.enabled());
    dialog.Btn_ParallelPort_Click();
    dialog.extraPins.frameStandardPins.hide();
    dialog.extraPins.frameUSBExtraPins.show();
    dialog.ChkSerialPort.setValue(1); // tries the dongle again
    EXPECT_FALSE(dialog.ChkSerialPort.checked());
    EXPECT_EQ(dialog.lblSPIBitRange.caption(), "(Anything between 1 and 160)");
    EXPECT_TRUE(dialog.cmbPortsAvailable.enabled());
    EXPECT_TRUE(dialog.extraPins.frameStandardPins.visible());
    EXPECT_FALSE(dialog.extraPins.frameUSBExtraPins.visible() || dialog.frameSPIBaudRate.visible());
}

TEST(ConfigureDialog, GoesBackToItsDefaults) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    dialog.SetDefaults();
    const std::string defaults = controlsOf(dialog);
    bench.configure("24", {"optHex", "optLSBfirst", "optCSpositive", "optLogOff"});
    bench.send("123456");
    dialog.chkEnableLog.setValue(0);
    dialog.SetDefaults();
    EXPECT_EQ(controlsOf(dialog), defaults);
    EXPECT_EQ(dialog.cmbSPIWordLength.text(), "8");
    EXPECT_TRUE(dialog.optBinary.value() && dialog.optMSBfirst.value() &&
                dialog.optCSnegative.value() && dialog.optLogFixedNumber.value());
    EXPECT_EQ(bench.session().SessionLogEnabled, ConstOn);
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "");
    EXPECT_EQ(bench.session().SPIWordLength, 24) << "nothing of it is applied";
}

TEST(ConfigureDialog, EnablesTheLimitOnlyForAFixedNumber) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    for (forms::OptionButton* option :
         {&dialog.optLogOff, &dialog.optLogFixedNumber, &dialog.optLogForever}) {
        option->click();
        const bool limited = option == &dialog.optLogFixedNumber;
        EXPECT_EQ(dialog.txtMessageLimit.enabled(), limited) << option->name();
        EXPECT_EQ(dialog.lblMessageLimit.enabled(), limited) << option->name();
    }
}

TEST(ConfigureDialog, GoesBackToWhatWasAcceptedOnCancel) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    const std::string defaults = controlsOf(dialog);
    dialog.txtPartName.setText("Other");
    dialog.cmbSPIWordLength.setText("9");
    dialog.cmdCancel.click();
    EXPECT_EQ(controlsOf(dialog), defaults) << "without a bus nothing was accepted yet";

    bench.enablePin("Data", 1, "8");
    dialog.types.TabStripSPItype.click(3);
    bench.configure("24", {"optHex", "optLSBfirst", "optCSpositive", "optLogForever"});
    const std::string accepted = controlsOf(dialog);
    const std::string applied = variablesOf(bench.session());
    // Every setting changes, and none is applied.
    dialog.setVisible(true);
    dialog.txtPartName.setText("Other");
    for (forms::ComboBox* pin :
         {&dialog.cmbCS, &dialog.cmbDI, &dialog.cmbCLK, &dialog.cmbDO, &dialog.cmbSPIWordLength})
        pin->setListIndex(pin->listIndex() == 2 ? 1 : 2);
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
    EXPECT_EQ(controlsOf(dialog), accepted);
    EXPECT_EQ(variablesOf(bench.session()), applied);
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

TEST(ConfigureDialog, DescribesEachTypeInWords) {
    TestBench bench;
    const TypePage& types = bench.program.dialog().types;
    for (const auto& [type, words] : {row(1, "DI and DO are valid on rising edge of CLK. "
                                             "DI and DO are toggled on falling edge of CLK. "
                                             "CLK is low before and after transfer."),
                                      row(7, "DI and DO are valid on rising edge of CLK. "
                                             "DI and DO are toggled on rising edge of CLK. "
                                             "CLK is high before and after transfer.")})
        EXPECT_EQ(types.lblSPINoteRead(type).caption() + " " +
                      types.lblSPINoteToggle(type).caption() + " " +
                      types.lblSPINotePolarity(type).caption(),
                  words);
    EXPECT_EQ(types.lblNonStandard.first(), 5);
}

} // namespace
} // namespace bitlux::test
