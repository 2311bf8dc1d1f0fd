#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

struct EditorBench : PanelBench {
    EditorBench() { fill({{"a", "1"}, {"b", "50ms"}, {"c", "3"}}); }
    forms::ListBox& commands() { return lists().List_Commands; }
    forms::ListBox& values() { return lists().List_Value; }
    std::string loopBox(int index) { return text(full(fmt::format("Val_loop({})", index))); }
};

TEST(SequenceEditor, InsertsWaitsAndRemovesLines) {
    EditorBench bench;
    bench.press("Cm_Wait");
    EXPECT_EQ(bench.sequence(), "a=1 b=50ms c=3 Wait=10");
    EXPECT_EQ(bench.text("ZT72518.Text_Wait"), "10");
    bench.commands().select(2);
    bench.type("Text_Wait", "25");
    bench.press("Cm_Wait");
    EXPECT_EQ(bench.sequence(), "a=1 Wait=25 b=50ms c=3 Wait=10");
    EXPECT_EQ(bench.commands().listIndex(), 3) << "the selection goes along";
    bench.type("Text_Wait", "");
    bench.commands().select(0);
    bench.press("Cm_Wait");
    bench.press("Cm_Remove_Line");
    EXPECT_EQ(bench.sequence(), "Wait=10 a=1 Wait=25 b=50ms c=3 Wait=10") << "the headers stay";
    bench.commands().select(6);
    bench.press("Cm_Remove_Line");
    bench.press("Cm_Remove_Line");
    EXPECT_EQ(bench.sequence(), "Wait=10 a=1 Wait=25 b=50ms");
    bench.boxes.answer(MessageBox::Answer::No);
    bench.press("Cm_CLEAR_lists");
    EXPECT_EQ(bench.lists().last(), 4);
    bench.lists().addAnswer({"x", "y"});
    bench.lists().pointTo(50);
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.press("Cm_CLEAR_lists");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts(2, "Clear the sequence?"));
    EXPECT_EQ(bench.column("List_Commands"), Texts{"Commands"});
    EXPECT_EQ(bench.column("List_Value"), Texts{"Value in Hexa"});
    EXPECT_EQ(bench.column("List_Val_read1"), Texts{"MSB in binary (hexa)"});
    EXPECT_EQ(bench.column("List_Val_read0"), Texts{"LSB in binary (hexa)"});
    const Texts numbers = bench.column("List1");
    ASSERT_EQ(numbers.size(), 42U);
    EXPECT_EQ(numbers[0] + "|" + numbers[1] + "|" + numbers[9] + "|" + numbers[10],
              "  0|  1  ---->|  9|10");
}

TEST(SequenceEditor, MovesLinesByDragging) {
    EditorBench bench;
    bench.commands().dragLine(1, 3);
    EXPECT_EQ(bench.sequence(), "b=50ms c=3 a=1");
    bench.commands().dragLine(3, 0);
    EXPECT_EQ(bench.sequence(), "a=1 b=50ms c=3") << "not above the headers";
    bench.commands().dragLine(0, 2);
    bench.commands().dragLine(2, 99);
    EXPECT_EQ(bench.sequence(), "a=1 c=3 b=50ms");
    EXPECT_EQ(bench.commands().listIndex(), 3);
    EXPECT_EQ(bench.lists().List_Value.listIndex(), -1) << "nothing that could be changed by error";
    bench.lists().List_Value.select(2);
    bench.commands().dragLine(1, 3);
    EXPECT_EQ(bench.lists().List_Value.listIndex(), 1) << "goes with its line";
    bench.press("Cm_Remove_Line");
    EXPECT_EQ(bench.lists().List_Value.listIndex(), 1);
    bench.commands().select(1);
    bench.press("Cm_Remove_Line");
    EXPECT_EQ(bench.lists().List_Value.listIndex(), -1);
    EXPECT_EQ(bench.sequence(), "b=50ms");
}

TEST(SequenceEditor, PicksTheLinesOfTheLoop) {
    EditorBench bench;
    const auto colours = [&bench] {
        return fmt::format("{:X} {:X}", bench.on<forms::Label>("Label_Liste(5)").backColor(),
                           bench.on<forms::Label>("Label_Liste(6)").backColor());
    };
    EXPECT_FALSE(bench.on<forms::Label>("Label_Liste(5)").visible());
    bench.tick("Ch_Loop");
    EXPECT_TRUE(bench.on<forms::Label>("Label_Liste(5)").visible());
    EXPECT_TRUE(bench.on<forms::TextBox>("Val_loop(1)").enabled());
    bench.commands().select(2);
    EXPECT_EQ(bench.loopBox(0) + bench.loopBox(1), "22");
    EXPECT_EQ(colours(), "8000000F FF");
    bench.commands().select(3);
    EXPECT_EQ(bench.loopBox(0) + bench.loopBox(1), "23");
    EXPECT_EQ(colours(), "FF 8000000F");
    bench.commands().select(3); // the same line once more
    bench.commands().select(1);
    EXPECT_EQ(bench.loopBox(0) + bench.loopBox(1), "33") << "a stop is not before the start";
}

TEST(SequenceEditor, ChangesValues) {
    EditorBench bench;
    auto& times = bench.panel().part<zt72518::Watchdog>().wd_config(3);
    auto& box = bench.panel().sequence.Val_loop(2);
    EXPECT_FALSE(times.visible());
    bench.values().select(3);
    EXPECT_EQ(box.text(), "3");
    box.setText("7F");
    bench.press("watchdog(15)");
    bench.values().select(2);
    EXPECT_TRUE(times.visible());
    EXPECT_FALSE(box.enabled());
    EXPECT_EQ(times.text(), "50ms");
    times.select(9);
    bench.press("watchdog(15)");
    EXPECT_EQ(bench.sequence(), "a=1 b=5s c=7F");
    bench.values().select(0);
    EXPECT_FALSE(times.visible());
    box.setText("00");
    bench.press("watchdog(15)");
    EXPECT_EQ(bench.column("List_Value").front(), "Value in Hexa");
}

} // namespace
} // namespace bitlux::test
