#include "config/word_length_note.h"
#include "support/state_text.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

const char* const hexNote = "You have selected a SPI word length longer than 40 bits.\r\n"
                            "You will only be able to enter your commands in Hex mode.";

TEST(Apply, TakesOverTheShapeOfAWord) {
    TestBench bench;
    bench.program.dialog().txtPartName.setText("Prototype");
    bench.program.dialog().types.TabStripSPItype.click(7);
    // One write: chip select low, data in high, clock high.
    EXPECT_EQ(accessesOf(bench,
                         [&bench] {
                             bench.configure("24", {"optHex", "optLSBfirst", "optCSpositive",
                                                    "optDIpolarity_neg", "optDOpolarity_neg"});
                         }),
              "06");
    const Session& s = bench.session();
    EXPECT_EQ(fmt::format("{} {} {} {} {} {} CS {}{} DI {}{} DO {}{} {:X} {}", s.SPIWordLength,
                          s.SavedSPIWordLength, s.DisplayHex, s.MSBFirst == ConstOn, s.SPIType,
                          s.SavedSPIType, s.CSAssertLevel, s.CSIdleLevel, s.DIOneLevel,
                          s.DIZeroLevel, s.DOHighValue, s.DOLowValue, s.LPTPortAddress,
                          s.ConfigDirty == ConstOn),
              "24 24 1 false 7 7 CS 10 DI 01 DO 01 378 true");
    EXPECT_EQ(s.SingleWordBits, std::vector<std::int16_t>(25, 0));
    EXPECT_EQ(bench.label("frmMain.labelMainTitle"), "Prototype Bitlux Forge");
    // Control bits 0, 1 and 3 are inverted: all four pins are low.
    EXPECT_EQ(s.ControlPortPins.value(), 0x0B);
}

TEST(Apply, TakesOverThePins) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.cmbCS.setText("9");
    dialog.cmbDI.setText("5");
    dialog.cmbCLK.setText("2");
    dialog.cmbDO.setText("15");
    EXPECT_EQ(accessesOf(bench, [&] { bench.configure("2"); }), "80");
    EXPECT_EQ(accessesOf(bench, [&] { bench.send("2"); }), "00 08 09 R08 00 01 R00 00 80");
}

TEST(Apply, ReadsTheWordLengthAsItIsTyped) {
    for (const auto& [typed, length, message] :
         {row("1", 1, ""), row("160", 160, ""), row(" 1 6", 16, ""), row("many", 0, ""),
          row("12.5", 12, ""), row("13.5", 14, ""),
          row("161", 161, "The maximum number of SPI bits is 160"), row("1e400", 8, "Overflow"),
          row("-3", 8, "Subscript out of range: a word of -3 bits")}) {
        TestBench bench;
        bench.configure(typed);
        EXPECT_EQ(bench.session().SPIWordLength, length) << typed;
        EXPECT_EQ(fmt::format("{}", fmt::join(bench.boxes.takeTexts(), "|")), message) << typed;
        // The program goes on.
        bench.configure("8");
        bench.send("42");
        EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "42") << typed;
    }
}

TEST(Apply, EmptiesListsOnlyWhenTheLengthChanges) {
    TestBench bench;
    bench.configure("8");
    bench.send("A5");
    bench.configure("8");
    EXPECT_EQ(bench.log().size(), 5U);
    // A refusal follows it; nothing else has changed.
    bench.program.dialog().types.TabStripSPItype.click(3);
    EXPECT_EQ(accessesOf(bench, [&] { bench.configure("161"); }), "");
    EXPECT_EQ(bench.log(), Texts{});
    EXPECT_EQ(bench.session().SPIType, 1);
    bench.configure("9");
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "000");
}

TEST(Apply, ShowsALongWordInHexOnly) {
    for (const auto& [bits, onlyHex] : {row("64", true), row("41", true), row("40", false)}) {
        TestBench bench;
        bench.configure(bits, {"optBinary"});
        EXPECT_EQ(bench.session().DisplayHex, onlyHex ? 1 : 0) << bits;
        EXPECT_EQ(bench.program.dialog().optHex.value(), onlyHex) << bits;
        EXPECT_EQ(bench.boxes.takeTexts(), onlyHex ? Texts{hexNote} : Texts{}) << bits;
    }
}

TEST(Apply, AsksAboutALengthWithAFraction) {
    for (const bool continues : {true, false}) {
        const auto answer = continues ? MessageBox::Answer::Ok : MessageBox::Answer::Cancel;
        TestBench bench;
        bench.boxes.answer(answer);
        bench.configure("50.5", {"optBinary"});
        EXPECT_EQ(bench.boxes.takeTexts(),
                  Texts{std::string(hexNote) + "\r\nClick OK to use Hex mode, or click Cancel to "
                                               "discard changes."});
        EXPECT_EQ(bench.boxes.shown().back().title, "WARNING");
        EXPECT_EQ(bench.session().SPIWordLength, 50);
        EXPECT_EQ(bench.session().DisplayHex, continues ? 1 : 0);
        EXPECT_EQ(bench.program.dialog().optHex.value(), continues);
        EXPECT_EQ(bench.session().ConfigDirty, continues ? ConstOn : ConstOff);

        bench.configure("12");
        bench.get<forms::ComboBox>("frmMain.cmbMasterQCList").addItem("Wake up");
        bench.boxes.answer(answer);
        bench.configure("12.25");
        EXPECT_EQ(
            bench.boxes.takeTexts(),
            Texts{"Changing the number of SPI bits will destroy all of your Quick Commands.\r\n"
                  "Click OK to continue with changes, or click Cancel to discard changes."});
        EXPECT_EQ(bench.get<forms::ComboBox>("frmMain.cmbMasterQCList").items().empty(), continues);
    }
}

TEST(Apply, ChangesNothingForAnInvalidLimit) {
    for (const auto withDongle : {TestBench::WithDongle::No, TestBench::WithDongle::Yes}) {
        TestBench bench("loopback", {}, withDongle);
        bench.configure("8", {"optHex"});
        ConfigureDialog& dialog = bench.program.dialog();
        const std::string before = variablesOf(bench.session());
        dialog.txtPartName.setText("Other");
        dialog.cmbSPIWordLength.setText("16");
        dialog.optLSBfirst.setValue(true);
        dialog.CheckEnable72537.setValue(1);
        dialog.txtMessageLimit.setText("99999");
        dialog.setVisible(true);
        EXPECT_EQ(accessesOf(bench, [&] { bench.click("frmConfigureSPI.cmdApply"); }), "");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Overflow"});
        EXPECT_EQ(variablesOf(bench.session()), before);
    }
}

TEST(Apply, ShowsTheWordThatARefusalLeaves) {
    TestBench bench;
    bench.configure("8", {"optBinary"});
    bench.click("frmMain.cmdSI_single(5)");
    bench.program.dialog().cmbDI.setText("2");
    bench.configure("8", {"optBinary"});
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_EQ(bench.get<forms::Button>("frmMain.cmdSI_single(5)").caption(), "0");
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.log().at(1), "  00000000");
}

TEST(WordLengthNote, SaysWhatApplyMakesOfTheTextAndWhatTheBusTakes) {
    constexpr const char* dongleTakes = "The dongle takes 8, 16, 24, 32 and 40";
    for (const auto& [typed, onDongle, fits, text] :
         {row("24", false, true, ""), row("7.5", false, true, "Will be 8 bits"),
          row("160", false, true, ""), row("161", false, false, "The port takes 1 to 160"),
          row("160.4", false, false, "Will be 160 bits; the port takes 1 to 160"),
          row("many", false, false, "Will be 0 bits; the port takes 1 to 160"),
          row("", false, false, "Will be 0 bits; the port takes 1 to 160"),
          row("-3", false, false, "The port takes 1 to 160"),
          row("1e400", false, false, "The port takes 1 to 160"), row("24", true, true, dongleTakes),
          row("40", true, true, dongleTakes), row("12", true, false, dongleTakes),
          row("48", true, false, dongleTakes),
          row("7.5", true, true, "Will be 8 bits; the dongle takes 8, 16, 24, 32 and 40"),
          row("40.5", true, false, "Will be 40 bits; the dongle takes 8, 16, 24, 32 and 40")}) {
        const WordLengthNote note = wordLengthNote(typed, onDongle);
        EXPECT_EQ(note.text, text) << '"' << typed << '"';
        EXPECT_EQ(note.fits, fits) << '"' << typed << '"' << onDongle;
    }
}

TEST(Apply, RequiresExactlyOnePort) {
    TestBench bench;
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.Btn_ParallelPort_Click();
    dialog.cmdApply_Click();
    EXPECT_EQ(bench.session().LPTPortAddress, 0x378) << "the first that is found";
    for (const auto& [box, address] : {row(0, 0x3BC), row(1, 0x378), row(2, 0x278)}) {
        dialog.chkHardCodeLPT(box).setValue(1);
        dialog.cmdApply_Click();
        EXPECT_EQ(bench.session().LPTPortAddress, address) << box;
    }
    dialog.chkHardCodeLPT(2).setValue(0);
    dialog.setVisible(true);
    dialog.cmbPortsAvailable.setListIndex(-1);
    bench.click("frmConfigureSPI.cmdApply");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Please Select a Parallel Port."});
    // A user can set at most one box; two are set only while a handler has not run.
    for (const int box : {0, 2}) {
        dialog.chkHardCodeLPT(box).setHandler(forms::ControlEvent::Click, nullptr);
        dialog.chkHardCodeLPT(box).setValue(1);
    }
    bench.click("frmConfigureSPI.cmdApply");
    EXPECT_EQ(bench.boxes.takeTexts(),
              Texts{"Cannot use more than one address for the Parallel Port!"});
}

TEST(Apply, TakesOverTheLengthAloneWithoutABus) {
    TestBench bench;
    const std::set<std::string_view> ofTheLength{"SPIWordLength", "SavedSPIWordLength",
                                                 "SingleWordBits", "QuickCommandTable"};
    const std::string before = variablesOf(bench.session(), ofTheLength);
    bench.program.dialog().txtPartName.setText("Prototype");
    bench.program.dialog().cmbSPIWordLength.setText("200");
    bench.program.dialog().optCSpositive.setValue(true);
    bench.program.dialog().cmdApply_Click();
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    EXPECT_EQ(bench.session().SPIWordLength, 200);
    EXPECT_EQ(variablesOf(bench.session(), ofTheLength), before);
}

} // namespace
} // namespace bitlux::test
