// Words that are sent while a sequence plays: by automatic reads, and by the user's buttons.

#include "panels/panel_bench.h"

#include <tuple>

namespace bitlux::test {
namespace {

const Texts fiveReplies{"1101", "2202", "3303", "4404", "5505"};

TEST(WordsDuringARun, OfAutomaticReadsGoOutInTheWaitAndLeaveTheAnswersOfTheLines) {
    PanelBench bench("scripted", fiveReplies);
    bench.panel().part<AutoReads>().boxes(0).setValue(1);
    bench.tick("read_auto(34)");
    EXPECT_EQ(bench.run("MUX Write=5;Wait=1200;CAN Read Low="), "4005 0100 0100 1D00");
    EXPECT_EQ(bench.column("List_Val_read0"),
              (Texts{"LSB in binary (hexa)", " 0000  0001  (1)", "", " 0000  0100  (4)"}));
    bench.expect("Mux_Rl=03;Can_Rl=00"); // of the second read; a line shows nothing there
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 1D - 00");
    EXPECT_EQ(bench.pass(500), "0100") << "they go on after the run";
}

TEST(WordsDuringARun, OfButtonsGoOutBetweenTheLines) {
    PanelBench bench("scripted", fiveReplies);
    bench.pokeTo("Mux_W", 0x0F);
    bench.loop.atTurn(1, [&] {
        bench.press("Cm_MUX_W");
        EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 0F");
    });
    bench.loop.atTime(bench.clock.nanoseconds() + 50 * millisecond,
                      [&] { bench.press("Cm_CAN_Rl"); });
    EXPECT_EQ(bench.run("MUX Write=1;MUX Write=2;Wait=90;MUX Write=3"), "4001 400F 4002 2100 4003");
    EXPECT_EQ(bench.column("List_Val_read0").size(), 5U);
    EXPECT_EQ(bench.caption("Label_Liste(0)"), "Sent : 40 - 03");
}

template <int bits>
void apply(TestBench& bench) {
    bench.program.dialog().cmbSPIWordLength.setText(std::to_string(bits));
    bench.program.dialog().optHex.setValue(true);
    bench.program.dialog().cmdApply_Click();
}

TEST(WordsDuringARun, OfTheMainWindowGoOutWhereTheirLengthIsThatOfThePanel) {
    for (const auto& [prepare, words, box] :
         {std::tuple{&apply<16>, "4001 A5C3 4002", Texts{}},
          {&apply<8>, "4001 4002",
           Texts{"The word of this page has 8 bits, but words of 16 bits are sent now: a part tab "
                 "or a panel has set that length."}}}) {
        PanelBench bench("scripted", fiveReplies, "ZT72518", {}, prepare);
        bench.loop.atTurn(1, [&bench] { bench.send("A5C3"); });
        EXPECT_EQ(bench.run("MUX Write=1;MUX Write=2"), words);
        EXPECT_EQ(bench.boxes.takeTexts(), box);
        EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), box.empty() ? "2202" : "");
    }
}

TEST(WordsDuringARun, HaveTheAppliedShapeWhenTheirPanelLeavesTheFront) {
    PanelBench bench("scripted", {"00000000"}, "ZT72516", {.bits = 32});
    bench.loop.atTurn(1, [&] { bench.program.forms().deactivate("ZT72516"); });
    EXPECT_EQ(bench.run("TIMER Reg Read=;TIMER Reg Read="), "05000000 00:8");
    EXPECT_EQ(bench.session().SPIWordLength, 8);
}

} // namespace
} // namespace bitlux::test
