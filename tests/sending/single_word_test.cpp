#include "batch_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Word = std::vector<std::int16_t>;

std::string buttonCaption(TestBench& bench, int bit) {
    return bench.get<forms::Button>(fmt::format("frmMain.cmdSI_single({})", bit)).caption();
}

TEST(SingleWord, SendsHexTextAndShowsTheAnswer) {
    const std::string longest = "8" + repeated(39, '0');
    const std::string zeros = repeated(10000, '0') + "1234";
    for (const auto& [bits, typed, padded, received] :
         {row("16", "a5c3", "a5c3", "A5C3"), row("16", "7", "0007", "0007"),
          row("15", "7FFF", "7FFF", "7FFF"), row("16", "0A5C3", "0A5C3", "A5C3"),
          row("1", "1", "1", "1"), row("10", "3fF", "3fF", "3FF"),
          row("16", zeros.c_str(), zeros.c_str(), "1234"),
          row("41", "1fedcba9876", "1fedcba9876", "1FEDCBA9876"),
          row("160", longest.c_str(), longest.c_str(), longest.c_str())}) {
        TestBench bench;
        bench.configure(bits);
        bench.send(typed);
        EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), padded) << typed;
        EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), received) << typed;
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{}) << typed;
    }
}

TEST(SingleWord, RefusesHexTextThatIsNoWord) {
    const Rows<const char*, std::string, const char*> cases{
        {"16", "", "Nothing to send!"},
        {"16", "12G4", "Not a valid hex number!"},
        {"16", " 12", "Not a valid hex number!"},
        {"16", "-1", "Not a valid hex number!"},
        {"16", "\xC3\xA4", "Not a valid hex number!"},
        {"15", "FFFF", "The word is too long!"},
        {"16", "10000", "The word is too long!"},
        // In a double all the ones of 64 bits are no less than 2 to the 64.
        {"64", "FFFFFFFFFFFFFFFF", "The word is too long!"},
        {"160", repeated(10000, 'F'), "The word is too long!"},
        {"16", repeated(9999, 'F') + "g", "Not a valid hex number!"}};
    for (const auto& [bits, typed, message] : cases) {
        TestBench bench;
        bench.configure(bits);
        bench.edit("frmMain.txtHexWordToSend", typed);
        EXPECT_EQ(accessesOf(bench, [&bench] { bench.click("frmMain.cmdSendOnce"); }), "") << typed;
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{message}) << typed;
        EXPECT_EQ(bench.log(), Texts{}) << typed;
        EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), typed);
        EXPECT_TRUE(bench.get<forms::Button>("frmMain.cmdSendOnce").visible());
    }
}

TEST(SingleWord, SendsTheBitButtons) {
    TestBench bench("echo");
    bench.configure("10", {"optBinary"});
    for (const int bit : {0, 9, 4, 4, 1})
        bench.click(fmt::format("frmMain.cmdSI_single({})", bit));
    EXPECT_EQ(bench.session().SingleWordBits, (Word{1, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0}));
    EXPECT_EQ(buttonCaption(bench, 9) + buttonCaption(bench, 4), "10");
    EXPECT_TRUE(bench.get<forms::Button>("frmMain.cmdSendOnce").hasFocus());
    for (int i = 0; i < 2; ++i)
        bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.label("frmMain.lblSO_single(9)") + bench.label("frmMain.lblSO_single(4)"),
              "10");
    EXPECT_EQ(bench.log(), (Texts{"SPI Word Sent:", "  10 00000011", "SPI Word Received:",
                                  "  00 00000000", " ", "SPI Word Sent:", "  10 00000011",
                                  "SPI Word Received:", "  10 00000011", " "}));
}

TEST(SingleWord, LeavesABitButtonWithAnotherCaptionAlone) {
    TestBench bench;
    bench.configure("8", {"optBinary"});
    bench.get<forms::Button>("frmMain.cmdSI_single(3)").setCaption("?");
    bench.click("frmMain.cmdSI_single(3)");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"No Initial Value Set"});
    EXPECT_EQ(buttonCaption(bench, 3), "?");
    EXPECT_EQ(bench.session().SingleWordBits, Word(9, 0));
}

TEST(SingleWord, ClearsAndSetsAllBits) {
    TestBench bench;
    bench.configure("9", {"optBinary"});
    bench.click("frmMain.cmdAll1Single");
    EXPECT_EQ(bench.session().SingleWordBits, (Word{1, 1, 1, 1, 1, 1, 1, 1, 1, 0}));
    EXPECT_EQ(buttonCaption(bench, 8), "1");
    bench.click("frmMain.cmdAll0Single");
    EXPECT_EQ(bench.session().SingleWordBits, Word(10, 0));
    EXPECT_EQ(buttonCaption(bench, 8), "0");

    // In hexadecimal only the text changes; three digits F are too long for ten bits.
    bench.configure("10");
    bench.click("frmMain.cmdAll1Single");
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "FFF");
    EXPECT_EQ(bench.session().SingleWordBits, Word(11, 0));
    bench.click("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"The word is too long!"});
    bench.click("frmMain.cmdAll0Single");
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "000");
}

TEST(SingleWord, EnterSends) {
    BatchBench bench;
    bench.edit("frmMain.txtHexWordToSend", "3c");
    bench.get<forms::TextBox>("frmMain.txtHexWordToSend").key(forms::KeyCode::Enter);
    bench.get<forms::Button>("frmMain.cmdSendOnce").key(forms::KeyCode::Enter);
    bench.get<forms::TextBox>("frmMain.txtHexWordToSend").key(static_cast<forms::KeyCode>(32));
    EXPECT_EQ(bench.log(), (Texts{"SPI Word Sent:", "  3C", "SPI Word Received:", "  3C", " ",
                                  "SPI Word Sent:", "  3C", "SPI Word Received:", "  3C", " "}));
}

TEST(SingleWord, FollowsLengthAndDisplay) {
    for (const auto& [bits, display, columns, hex, titles] :
         {row("8", "optBinary", 8, false, true), row("32", "optBinary", 32, false, true),
          row("33", "optBinary", 33, false, false), row("40", "optBinary", 40, false, false),
          row("40", "optHex", 40, true, true), row("160", "optHex", 40, true, true)}) {
        TestBench bench;
        bench.configure(bits, {display});
        const forms::Form& form = bench.program.mainForm();
        for (int i = 0; i < 40; ++i)
            for (const char* array :
                 {"cmdSI_single", "lblSO_single", "lblInBitsSingle", "lblOutBitsSingle"})
                EXPECT_EQ(form.control(fmt::format("{}({})", array, i)).visible(), i < columns)
                    << array << i << " of " << bits;
        for (const auto& [name, shown] :
             {row("lblHexDI", hex), row("lblHexDO", hex), row("txtHexWordToSend", hex),
              row("lblHexWordReceived", hex), row("frameSPIinSingle", !hex),
              row("frameSPIoutSingle", !hex), row("lblSItitle", titles), row("lblSOtitle", titles)})
            EXPECT_EQ(form.control(name).visible(), shown) << name << " of " << bits;
    }
}

TEST(SingleWord, FailsPlainlyWithAWordOfNoBitsOrADisplayThatIsNone) {
    TestBench bench;
    bench.configure("");
    EXPECT_FALSE(bench.program.mainForm().control("cmdSI_single(0)").visible());
    for (const auto& [bits, display, text] :
         {row("", 0, "Subscript out of range: a word of 0 bits cannot be sent"),
          row("8", 2, "Problem!  This program couldn't figure out whether to use hex or binary."),
          row("", 0, "Subscript out of range: a word of 0 bits cannot be sent")}) {
        bench.configure(bits);
        bench.session().DisplayHex = static_cast<std::int16_t>(display);
        bench.click("frmMain.cmdSendOnce");
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{text});
    }
    EXPECT_EQ(bench.log(), Texts{});
}

} // namespace
} // namespace bitlux::test
