#include "panels/panel_bench.h"

namespace bitlux::test {
namespace {

struct EditorBench : PanelBench {
    EditorBench() { fill("a=1;b=50ms;c=3"); }
    forms::ListBox& commands() { return lists().List_Commands; }
    forms::ListBox& values() { return lists().List_Value; }
};

TEST(SequenceEditor, InsertsWaitsAndRemovesLines) {
    EditorBench bench;
    bench.press("Cm_Wait");
    EXPECT_EQ(bench.sequence(), "a=1 b=50ms c=3 Wait=10");
    EXPECT_EQ(bench.text("ZT72518.Text_Wait"), "10");
    bench.work("List_Commands=2 Text_Wait=25 Cm_Wait");
    EXPECT_EQ(bench.sequence(), "a=1 Wait=25 b=50ms c=3 Wait=10");
    EXPECT_EQ(bench.commands().listIndex(), 3) << "the selection goes along";
    bench.work("Text_Wait= List_Commands=0 Cm_Wait Cm_Remove_Line");
    EXPECT_EQ(bench.sequence(), "Wait=10 a=1 Wait=25 b=50ms c=3 Wait=10") << "the headers stay";
    bench.work("List_Commands=6 Cm_Remove_Line Cm_Remove_Line");
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
    EXPECT_EQ(bench.lists().List_Value.listIndex(), -1)
        << "no value that could be changed by mistake";
    bench.lists().List_Value.select(2);
    bench.commands().dragLine(1, 3);
    EXPECT_EQ(bench.lists().List_Value.listIndex(), 1) << "goes with its line";
    bench.press("Cm_Remove_Line");
    EXPECT_EQ(bench.lists().List_Value.listIndex(), 1);
    bench.work("List_Commands=1 Cm_Remove_Line");
    EXPECT_EQ(bench.lists().List_Value.listIndex(), -1);
    EXPECT_EQ(bench.sequence(), "b=50ms");
}

TEST(SequenceEditor, PicksTheLinesOfTheLoop) {
    EditorBench().walk(std::initializer_list<PanelStep>{
        {"", "", "Label_Liste(5)-"},
        {"Ch_Loop List_Commands=2", "",
         "Label_Liste(5)+;Val_loop(0):2;Val_loop(1):2;Label_Liste(5)#8000000F;Label_Liste(6)#FF"},
        {"List_Commands=3", "",
         "Val_loop(0):2;Val_loop(1):3;Label_Liste(5)#FF;Label_Liste(6)#8000000F"},
        // The same line once more; a stop is not before the start.
        {"List_Commands=3 List_Commands=1", "", "Val_loop(0):3;Val_loop(1):3"},
    });
}

TEST(SequenceEditor, ChangesValues) {
    EditorBench bench;
    bench.walk(std::initializer_list<PanelStep>{
        {"List_Value=3", "", "wd_config(3)-;Val_loop(2):3"},
        {"Val_loop(2)=7F watchdog(15) List_Value=2", "", "wd_config(3)+"},
    });
    EXPECT_FALSE(bench.panel().sequence.Val_loop(2).enabled());
    EXPECT_EQ(bench.on<forms::ComboBox>("wd_config(3)").text(), "50ms");
    bench.work("wd_config(3)=9 watchdog(15)");
    EXPECT_EQ(bench.sequence(), "a=1 b=5s c=7F");
    bench.walk(std::initializer_list<PanelStep>{
        {"List_Value=0 Val_loop(2)=00 watchdog(15)", "", "wd_config(3)-"},
    });
    EXPECT_EQ(bench.column("List_Value").front(), "Value in Hexa");
}

} // namespace
} // namespace bitlux::test
