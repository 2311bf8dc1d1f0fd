// Apply, Cancel and a second opening of the dialog while words go through the dongle.

#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

struct DongleDialog : TestBench {
    DongleDialog() : TestBench("echo", {}, WithDongle::Yes) { open(); }

    ConfigureDialog& dialog() { return program.dialog(); }
    void open() { TestBench::choose("frmMain.itemPortOptions"); }
    static void choose(std::initializer_list<forms::OptionButton*> options) {
        for (forms::OptionButton* option : options)
            option->click();
    }
    /// Words of 24 bits with everything as it is not by default.
    void chooseAll() {
        edit("frmConfigureSPI.txtPartName", "ADC");
        get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").edit("24");
        choose({&dialog().optHex, &dialog().optLSBfirst, &dialog().optCSpositive,
                &dialog().optDIpolarity_neg, &dialog().optDOpolarity_neg, &dialog().SPIBaudRate(3),
                &dialog().optLogFixedNumber});
        edit("frmConfigureSPI.txtMessageLimit", "7");
        dialog().types.TabStripSPItype.click(3);
        for (forms::CheckBox* box : {&dialog().extraPins.Check(1), &dialog().extraPins.Check(5),
                                     &dialog().CheckEnable72518})
            box->click();
    }
    /// What the dialog shows of the settings.
    std::string shown() {
        const auto first = [](const forms::OptionButton& option, const char* yes, const char* no) {
            return option.value() ? yes : no;
        };
        std::string text = fmt::format(
            "{} {} {} {} {} {} {} {}", dialog().txtPartName.text(),
            dialog().cmbSPIWordLength.text(), first(dialog().optHex, "hex", "binary"),
            first(dialog().optMSBfirst, "MSB", "LSB"), first(dialog().optCSpositive, "CS+", "CS-"),
            first(dialog().optDIpolarity_pos, "DI+", "DI-"),
            first(dialog().optDOpolarity_pos, "DO+", "DO-"),
            dialog().types.TabStripSPItype.selected());
        for (const auto& rate : dialog().SPIBaudRate)
            text += rate->value() ? " " + rate->caption() : "";
        for (const std::string& pin : dialog().extraPins.dongleNames())
            text += " " + pin;
        text += dialog().CheckEnable72518.checked() ? " 72518" : "";
        text += fmt::format(" {} {} of {}", dialog().ChkSerialPort.checked() ? "dongle" : "port",
                            dialog().chkEnableLog.checked() ? "log" : "no log",
                            dialog().txtMessageLimit.text());
        return text + first(dialog().optLogFixedNumber, "", " off");
    }
};

constexpr const char* defaults = "Generic 8 binary MSB CS- DI+ DO+ 1 1 MHz dongle log of 5";
constexpr const char* chosen =
    "ADC 24 hex LSB CS+ DI- DO- 3 62.5 KHz Data 1 Control 0 72518 dongle log of 7";

TEST(DongleDialog, PutsWhatWasAppliedIntoTheFrames) {
    DongleDialog bench;
    EXPECT_EQ(bench.shown(), defaults);
    bench.chooseAll();
    EXPECT_EQ(traceOf(bench, [&bench] { bench.click("frmConfigureSPI.cmdOK"); }), Texts{});
    EXPECT_FALSE(bench.dialog().visible());
    EXPECT_EQ(traceOf(
                  bench, [&bench] { bench.send("123456"); }, Times::No),
              (Texts{"OUT 18 CA 00 6A 2C 48 00 00", "IN 18 CA 00 00 00 00 00 00"}));
    bench.open();
    EXPECT_EQ(bench.shown(), chosen);
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
}

TEST(DongleDialog, GoesBackToWhatWasAppliedOnCancel) {
    DongleDialog bench;
    bench.chooseAll();
    bench.click("frmConfigureSPI.cmdOK");
    bench.open();
    bench.edit("frmConfigureSPI.txtPartName", "Other");
    bench.get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").edit("8");
    bench.choose({&bench.dialog().optBinary, &bench.dialog().optMSBfirst,
                  &bench.dialog().optCSnegative, &bench.dialog().optDIpolarity_pos,
                  &bench.dialog().optDOpolarity_pos, &bench.dialog().optLogOff});
    bench.dialog().types.TabStripSPItype.click(8);
    EXPECT_EQ(traceOf(bench, [&bench] { bench.click("frmConfigureSPI.cmdCancel"); }), Texts{});
    EXPECT_FALSE(bench.dialog().visible());
    EXPECT_EQ(traceOf(
                  bench, [&bench] { bench.send("123456"); }, Times::No),
              (Texts{"OUT 18 CA 00 6A 2C 48 00 00", "IN 18 CA 00 00 00 00 00 00"}));
    bench.open();
    EXPECT_EQ(bench.shown(), chosen);
}

TEST(DongleDialog, ShowsWhatIsInForceWhenItIsLoadedAgain) {
    DongleDialog bench;
    bench.chooseAll();
    bench.click("frmConfigureSPI.cmdOK");
    bench.program.forms().unload("frmConfigureSPI");
    EXPECT_EQ(bench.shown(), chosen);
    EXPECT_TRUE(bench.dialog().visible());
    EXPECT_TRUE(bench.dialog().frameSPIBaudRate.visible());
    EXPECT_FALSE(bench.dialog().framePortPins.visible());
    EXPECT_TRUE(bench.program.engine().usesDongle());
    bench.click("frmConfigureSPI.cmdOK");
    EXPECT_EQ(bench.session().ContinuousLogLimit, 7);
    EXPECT_EQ(traceOf(
                  bench, [&bench] { bench.send("123456"); }, Times::No),
              (Texts{"OUT 18 CA 00 6A 2C 48 00 00", "IN 18 CA 00 00 00 00 00 00"}));
}

} // namespace
} // namespace bitlux::test
