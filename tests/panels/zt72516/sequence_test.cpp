// The sequence of the panel: what its lines send, its waits and loops, its files.

#include "bench.h"

#include "support/temporary_folder.h"

namespace bitlux::test::zt72516 {
namespace {

std::string reads(int count) {
    std::string lines;
    for (int line = 0; line < count; ++line)
        lines += "TIMER Reg Read=;";
    return lines;
}

TEST(Zt72516Sequence, KnowsThirtyNames) {
    // With the value 1.
    const std::string words =
        "Ack Safe Condition=5F000000;Init Reg Read=03000000;Init Reg Write=43000001;"
        "SPE_MODE Reg Read=04000000;SPE_MODE Reg Write=44000001;TIMER Reg Read=05000000;"
        "TIMER Reg Write=45000001;AMUX Reg Write=46000001;Simple Watchdog Refresh=47000000;"
        "Out of Watchdog Inhibit=5E000000;Wakeup Via SPI Write=49000010;"
        "CAN01 Reg Write=4B000001;LIN01 Reg Write=4C000001;LIN23 Reg Write=4D000001;"
        "MODE Reg Write=49000001;Regulator Reg Write=4A000001;SGFS Reg Write=4F000001;"
        "SGM0 Reg Write=51000001;SGM1 Reg Write=52000001;SGMT Reg Write=53000000;"
        "SGT Reg Write=54000000;SGWU Reg Write=4E000001;SGWUD Reg Write=50000001;"
        "Goto Flash Mode=04000000 440002A5;Goto Init Mode=04000000 440001A5;"
        "Goto Init with WD Refresh =47000000 04000000 440001A5;"
        "Goto Reset Mode=04000000 440000A5;Reset SG Inputs=04000000 440003A5;"
        "INT Request=48000100;Interrupt Reg Write=48000001;"
        "Goto Init with WD Refresh=00000000;interrupt reg write=00000000;Commands=00000000;"
        "=00000000";
    Bench bench("scripted", {"FF12375A"});
    for (const std::string& line : split(words, ';')) {
        const std::size_t equals = line.find('=');
        EXPECT_EQ(bench.run(line.substr(0, equals) + "=1"), line.substr(equals + 1)) << line;
    }
}

TEST(Zt72516Sequence, TakesValuesAsDecimalNumbers) {
    Bench bench("scripted", {"FF123456", "0000000F"});
    EXPECT_EQ(bench.run("Init Reg Write=43000000;Init Reg Write=43ABCD12;"
                        "Interrupt Reg Write=&HFF;SGWU Reg Write=4E00FFFF;"
                        "LIN23 Reg Write=4D000003;SGMT Reg Write=53000F0F;"
                        "SGT Reg Write=9999999999;MODE Reg Write=-1;Out of Watchdog Inhibit=1"),
              "439020C0 4300002B 480000FF 4E000004 4D000FA0 53000000 54000000 49FFFFFF 5E000000");
    EXPECT_EQ(bench.column("List_Val_read").substr(0, 50),
              "Value in Hexadecimal|00123456|0000000F|0000000F|00");
    EXPECT_EQ(bench.panel().readVariable("LastReadValue"), forms::toValue(15));
    EXPECT_EQ(bench.caption("SPIWordSent"), "SPI Word Sent:5E00-0000");
    EXPECT_EQ(bench.run("TIMER Reg Read="), "05000000");
    EXPECT_EQ(bench.caption("SPIWordSent"), "SPI Word Sent:5E00-0000")
        << "a word of the sequence itself does not show as sent";
    EXPECT_EQ(bench.caption("SPIWordRcvd"), "SPI Word Rcvd:0000-000F");
}

TEST(Zt72516Sequence, EndsAtANumberBeyondItsRange) {
    for (const char* line : {"Init Reg Write=4300000000", "SGWU Reg Write=4E000010",
                             "LIN23 Reg Write=4D001234", "Wait=9999999999"}) {
        Bench bench;
        EXPECT_EQ(bench.run(fmt::format("TIMER Reg Read=;{};TIMER Reg Read=", line)), "05000000")
            << line;
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Row 2: Overflow"});
        EXPECT_TRUE(bench.on<forms::Button>("Cm_Run_Seq").enabled());
    }
}

TEST(Zt72516Sequence, IsEdited) {
    Bench bench;
    auto& commands = bench.on<forms::ListBox>("List_Commands");
    bench.fill("INT Request=a;Goto Init Mode=b");
    bench.work("cm_MoveUp"); // nothing is selected
    bench.work("List_Commands=1 cm_MoveUp List_Commands=2 cm_MoveDown");
    const std::string text = "Please select a valid command to move.";
    EXPECT_EQ(bench.boxes.takeTexts(), (Texts{text, text, text}));
    bench.press("cm_MoveUp");
    EXPECT_EQ(bench.column("List_Commands"), "Commands|Goto Init Mode|INT Request");
    EXPECT_EQ(bench.column("List_Value"), "Value in Hex (data only)|b|a");
    EXPECT_EQ(commands.listIndex(), 1);
    bench.work("Text_Wait=soon Cm_Wait");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{"Enter a numeric value for the wait time."});
    // The headers stay, but go down.
    bench.work("Text_Wait=1.5e1 Cm_Wait List_Commands=0 Cm_Remove_Line Cm_Wait");
    EXPECT_EQ(bench.column("List_Commands"), "Wait|Commands|Wait|Goto Init Mode|INT Request");
    EXPECT_EQ(bench.column("List_Value"), "1.5e1|Value in Hex (data only)|1.5e1|b|a");
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.press("Cm_CLEAR_lists");
    EXPECT_EQ(bench.column("List_Commands"), "Commands");
    EXPECT_EQ(bench.lines("ZT72516.List1").size(), 51U);
    EXPECT_EQ(bench.column("List1").substr(0, 21), "  0|  1  ---->|  2|  ");
}

TEST(Zt72516Sequence, WaitsUntilItsTimerIsDisabledOrTheFormGoes) {
    Bench bench;
    const auto timeOf = [&bench](const char* lines) {
        const std::int64_t before = bench.clock.nanoseconds();
        EXPECT_EQ(bench.run(lines), "05000000");
        return bench.clock.nanoseconds() - before;
    };
    const std::int64_t ofTheWord = timeOf("TIMER Reg Read=");
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(timeOf("Wait=20.4 ms;TIMER Reg Read=") - ofTheWord, 20 * millisecond);
    EXPECT_EQ(bench.column("List_Val_read"), "Value in Hexadecimal||00000000");
    for (const char* endless : {"0", "", "soon"}) {
        const int turns = bench.loop.turns();
        bench.loop.atTime(bench.clock.nanoseconds() + 10'000'000 * millisecond,
                          [&] { bench.on<forms::Timer>("SequenceWaitTimer").disable(); });
        EXPECT_EQ(bench.run(fmt::format("Wait={};TIMER Reg Read=", endless)), "05000000")
            << endless;
        EXPECT_LT(bench.loop.turns() - turns, 10) << "asleep";
    }
    bench.loop.atTime(bench.clock.nanoseconds() + 50 * millisecond,
                      [&] { bench.program.forms().unload("ZT72516"); });
    bench.fill("INT Request=;Wait=0;INT Request=");
    bench.sent();
    bench.press("Cm_Run_Seq");
    EXPECT_EQ(bench.sent(), "48000100 <00 16 00 00 00 00 00 00>") << "the last line only passes";
    EXPECT_EQ(bench.session().SPIWordLength, 24);
}

TEST(Zt72516Sequence, GoesOnBesideAPanelThatIsNoLongerInFrontAndWithoutADongle) {
    Bench bench;
    bench.loop.atTurn(1, [&] { bench.program.forms().activate("frmMain"); });
    EXPECT_EQ(bench.run("INT Request=;INT Request=;TIMER Reg Write=1"),
              "48000100 000100:24 000001:24")
        << "words have the length that was applied";
    EXPECT_EQ(bench.session().ZT72516PanelActive, 0);
    bench.program.forms().activate("ZT72516");
    bench.loop.atTurn(1, [&] { bench.dongle.unplug(); });
    bench.run(reads(3));
    EXPECT_EQ(bench.lists().answers(0).count(), 4U) << "a failed transfer does not end the run";
    EXPECT_TRUE(bench.on<forms::Button>("Cm_Run_Seq").enabled());
}

TEST(Zt72516Sequence, RepeatsLinesUntilItIsStopped) {
    Bench bench;
    bench.expect("Val_loop(0)-");
    bench.work("Ch_Loop Val_loop(0)=11 Val_loop(1)=12");
    bench.expect("Label_Liste(5)+");
    std::string numbers;
    bench.loop.atTurn(27, [&] {
        numbers = bench.column("List1");
        bench.press("Cm_Stop_Loop");
    });
    bench.run(reads(12));
    EXPECT_NE(numbers.find("|  9| 10|11|12  ---->|13|"), std::string::npos) << numbers;
    EXPECT_TRUE(bench.panel().readVariable("StopLoop") == forms::Value(true));
    EXPECT_LE(bench.lists().answers(0).count(), 13U);

    bench.work("Val_loop(0)=1 Val_loop(1)=2");
    bench.atTurn(9, "Cm_Stop_Loop");
    const std::string words = bench.run(reads(4));
    EXPECT_EQ(words, "05000000 05000000 05000000 05000000 05000000 05000000")
        << "a stop ends the run, and an old one does not count";
    bench.run("");
    EXPECT_EQ(bench.column("List1").substr(0, 11), "  0|  1|  2") << "no line, no arrow";
    bench.on<forms::CheckBox>("Ch_Loop").click();
    bench.run(reads(60));
    EXPECT_EQ(bench.lines("ZT72516.List1").back(), "60  ---->");
}

TEST(Zt72516SequenceFile, HasTheseBytes) {
    const TemporaryFolder folder;
    Bench bench;
    const std::string file = folder.path("Sequence.txt");
    bench.fill("Goto Init with WD Refresh =;Wait=6;Init Reg Write=43000010");
    bench.fileDialogs.answer(file);
    bench.press("Cm_SAVE_Seq");
    EXPECT_EQ(contentOf(file), "Command\tValue\r\nCommands\tValue in Hex (data only)\t\r\n"
                               "Goto Init with WD Refresh \t\t\r\nWait\t6\t\r\n"
                               "Init Reg Write\t43000010\t\r\n");
    bench.lists().clear();
    bench.fileDialogs.answer(file);
    bench.press("Cm_LOAD_Seq");
    EXPECT_EQ(bench.column("List_Commands"),
              "Commands|Goto Init with WD Refresh |Wait|Init Reg Write");
    EXPECT_EQ(bench.column("List_Value"), "Value in Hex (data only)||6|43000010");
    EXPECT_EQ(bench.on<forms::ListBox>("List_Commands").listIndex(), 3);
    EXPECT_EQ(bench.fileDialogs.shown().back().title, "Load sequence");
    bench.press("Cm_LOAD_Seq"); // cancelled
    bench.fileDialogs.answer(folder.path("missing/Sequence.txt"));
    bench.press("Cm_SAVE_Seq");
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(Zt72516SequenceFile, IsReadFieldByFieldAsFarAsItGoes) {
    using Case = std::tuple<std::string, const char*, const char*>;
    const std::string head = "Command\tValue\r\nCommands\tValue\t\r\n";
    std::string many = head;
    for (int line = 1; line <= 1005; ++line)
        many += fmt::format("{}\t\t\r\n", line);
    const TemporaryFolder folder;
    for (const auto& [content, commands, values] :
         {Case{head + "A\t1\t\r\n", "Commands|A", "Value|1"},
          Case{head + "A\t1\t,B\t2\t\r\nC\t3\t", "Commands|A|B|C", "Value|1|2|3"},
          Case{head + "A,\t1\t\r\nC\t3\t\r\n", "Commands", "Value"},
          Case{head + "\"A,B\t1\t\" x,C\t2\t\r\n", "Commands|A,B|C", "Value|1|2"},
          Case{head + "A\t1\t\r\nB\t2\r\nC\t3\t\r\n", "Commands|A", "Value|1"},
          Case{"x\r\nA\t1\t\r\n", "A", "1"}, Case{"x\r\n", "", ""},
          Case{head + "\xB5\t\t\r\n", "Commands|µ", "Value|"},
          Case{"", "Commands|old", "Value in Hex (data only)|"}}) {
        Bench bench;
        bench.fill("old=");
        bench.fileDialogs.answer(folder.write("Sequence.txt", content));
        bench.press("Cm_LOAD_Seq");
        EXPECT_EQ(bench.column("List_Commands"), commands) << content;
        EXPECT_EQ(bench.column("List_Value"), values) << content;
        EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
    }
    Bench bench;
    bench.fileDialogs.answer(folder.write("Many.txt", many));
    bench.press("Cm_LOAD_Seq");
    EXPECT_EQ(bench.lines("ZT72516.List_Commands").back(), "999") << "a thousand with the headers";
}

} // namespace
} // namespace bitlux::test::zt72516
