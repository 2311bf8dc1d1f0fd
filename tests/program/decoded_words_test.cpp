#include "support/chip_folder.h"
#include "support/test_bench.h"

#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Column = DecodedLog::Column;

/// A bench whose words are kept, as a window keeps them.
struct DecodedBench : TestBench {
    explicit DecodedBench(const std::string& device, const std::vector<std::string>& replies = {},
                          WithDongle withDongle = WithDongle::No)
        : TestBench(device, replies, withDongle) {
        program.waveform().keepLast();
    }

    DecodedLog& decoded() { return program.decoded().log(); }
    /// "WORD ANSWER: meaning / meaning of the answer" of each row.
    Texts rows() {
        Texts all;
        for (std::size_t row = decoded().first(); row < decoded().end(); ++row)
            all.push_back(fmt::format("{} {}: {} / {}", decoded().text(row, Column::Word),
                                      decoded().text(row, Column::Answer),
                                      decoded().text(row, Column::Meaning),
                                      decoded().text(row, Column::AnswerMeaning)));
        return all;
    }
};

TEST(DecodedWords, AreExportedAsTheyAreShown) {
    DecodedBench bench("scripted", {"00000000", "06000010"});
    bench.configure("32");
    bench.program.decoded().names().pick("zt72516");
    bench.send("46000020");
    bench.clock.spend(1'500'000);
    bench.send("06000000");
    const std::string sessionLog = fmt::format("{}", fmt::join(bench.log(), "\n"));
    const TemporaryFolder folder;
    bench.fileDialogs.answer(folder.path("log.csv"));
    bench.program.decoded().saveCsvAs();
    EXPECT_EQ(contentOf(folder.path("log.csv")),
              "Time (ms),Bus,Word,Answer,Meaning,Meaning of the answer\r\n"
              "0.000,Port,0x46000020,0x00000000,"
              "AMUX write: Device Selection = Voltage at SG3,\r\n"
              "1.599,Port,0x06000000,0x06000010,AMUX read,"
              "\"Device Selection = Voltage at SG1; status: VPRE -G, VREG -G\"\r\n");
    EXPECT_EQ(fmt::format("{}", fmt::join(bench.log(), "\n")), sessionLog);

    bench.click("frmMain.cmdClearLogSingle");
    EXPECT_EQ(bench.rows(), Texts{});
    bench.send("03000000");
    EXPECT_EQ(bench.log().size(), 5U);
    EXPECT_EQ(bench.decoded().text(bench.decoded().first(), Column::Time), "0.000");
}

TEST(DecodedWords, AreTheSameOnEveryBus) {
    for (const auto& [device, lsbFirst, inverted] :
         {row(TestBench::WithDongle::No, false, false), row(TestBench::WithDongle::No, true, true),
          row(TestBench::WithDongle::Yes, false, false),
          row(TestBench::WithDongle::Yes, true, true)}) {
        DecodedBench bench("echo", {}, device);
        bench.configure("16");
        ConfigureDialog& dialog = bench.program.dialog();
        (lsbFirst ? dialog.optLSBfirst : dialog.optMSBfirst).setValue(true);
        (inverted ? dialog.optDOpolarity_neg : dialog.optDOpolarity_pos).setValue(true);
        dialog.cmdApply_Click();
        bench.send("1234");
        bench.send("A5C3");
        const bool onDongle = device == TestBench::WithDongle::Yes;
        EXPECT_EQ(bench.rows().back(), "A5C3 1234:  / ");
        EXPECT_EQ(bench.decoded().text(1, Column::Bus), onDongle ? "Dongle" : "Port");
    }
}

TEST(DecodedWords, BelongToTheWordBeforeWhereTheChipAnswersLate) {
    const ChipFolder chips;
    chips.data.write("bitlux-forge/chips/late.toml", R"toml(
[chip]
title = "Late"
[word]
bits = 16
address = "14:8"
data = "7:0"
write = 0x8000
answer = "next word"
[[register]]
title = "Mode"
address = 1
bits = ["ON", "-", "-", "-", "-", "-", "-", "-"]
[[register.view]]
)toml");
    DecodedBench bench("echo");
    bench.program.decoded().names().pick("late");
    bench.configure("16");
    for (const char* word : {"0101", "8101", "0100"})
        bench.send(word);
    bench.session().SPIWordLength = 8; // a word of another length belongs to no chip
    bench.send("01");
    bench.session().SPIWordLength = 16;
    bench.send("7F00");
    EXPECT_EQ(bench.rows(), (Texts{"0101 0000: Mode read / ", "8101 0101: Mode write: ON / ON",
                                   "0100 8101: Mode read / ", "01 01:  / ", "7F00 0100:  / "}));
}

TEST(DecodedWords, AreDecodedByTheChipThatTheUserWorksWith) {
    const ChipFolder chips;
    chips.data.write("bitlux-forge/chips/broken.toml", "[chip\n");
    TestBench bench;
    WordNames& names = bench.program.decoded().names();
    const MainTabs& tabs = bench.program.mainForm().tabs;
    EXPECT_EQ(names.chip(), "");
    EXPECT_EQ(names.decoder(), nullptr);
    bench.program.mainForm().call("Add72517Tab"); // no file describes its bytes
    bench.program.mainForm().call("Add72518Tab");
    EXPECT_EQ(names.chip(), "zt72518"); // the only one
    bench.program.mainForm().call("Add72516Tab");
    EXPECT_EQ(names.chip(), "");
    bench.program.panels().show("zt72537");
    bench.program.panels().show("zt72361");
    EXPECT_EQ(names.chip(), "zt72361"); // shown last
    bench.program.forms().unload("ZT72361");
    EXPECT_EQ(names.chip(), "zt72537");
    bench.program.mainForm().tabs.TabStripMain.click(5);
    EXPECT_EQ(tabs.selectedChip(), "zt72516");
    EXPECT_EQ(names.chip(), "zt72516");
    EXPECT_TRUE(names.decoder()->fits(32));
    names.pick("zt72518");
    EXPECT_TRUE(names.decoder()->fits(16));
    names.pick("broken");
    EXPECT_EQ(names.decoder(), nullptr);
    EXPECT_NE(names.problem(), "");
    names.pick("");
    EXPECT_EQ(names.chip(), "zt72516");
    EXPECT_NE(names.decoder(), nullptr);
    EXPECT_EQ(names.problem(), "");
}

TEST(WordCopies, SayWhatIsInForce) {
    DecodedBench bench("echo", {}, TestBench::WithDongle::Yes);
    bench.configure("16", {"optHex", "optCSpositive", "optLSBfirst", "optDIpolarity_neg"});
    bench.save("Wake", "A5C3");
    bench.send("0012");
    const WordCopies& copies = bench.program.copies();
    const auto line = [&](const std::vector<CopiedWord>& words) {
        return copies.text(WordCopies::Form::CommandLine, words);
    };
    EXPECT_EQ(line(copies.ofQuickCommand("Wake")),
              "bitlux send --bits 16 --type 1 --order lsb --cs high --di low --bus dongle A5C3\n");
    EXPECT_TRUE(copies.ofQuickCommand("* Pause").empty());
    EXPECT_EQ(copies.text(WordCopies::Form::Python, copies.ofLogLine(4)),
              "b.transfer(0x0012, bits=16, type=1)\n");
    EXPECT_TRUE(copies.ofLogLine(5).empty());
    bench.program.mainForm().log.logLine("a note", false);
    EXPECT_TRUE(copies.ofLogLine(5).empty());

    // Rows know their own shape.
    bench.session().SPIType = 7;
    bench.program.dialog().ChkSerialPort.setValue(0);
    bench.program.dialog().Btn_ParallelPort_Click();
    bench.program.copies().bench = [] { return Texts{"--bench", "echo"}; };
    bench.session().DIPin = 1;
    bench.session().ClockPin = 2;
    bench.session().DOPin = 4;
    EXPECT_EQ(line(copies.ofRows({0})),
              "bitlux send --bits 16 --type 1 --order lsb --cs high --di low --pins 2,3,4,13 "
              "--bench echo --bus port 0012\n");
}

} // namespace
} // namespace bitlux::test
