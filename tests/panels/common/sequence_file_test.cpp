#include "panels/panel_bench.h"
#include "support/file_size_limit.h"

namespace bitlux::test {
namespace {

constexpr const char* save = "Cm_SAVE_Seq";
constexpr const char* load = "Cm_LOAD_Seq";

struct FileBench : PanelBench {
    /// Loads what a file holds; the text of the box.
    std::string loadFrom(const std::string& content) {
        fileDialogs.answer(folder.write("a.txt", content));
        press(load);
        return fmt::format("{}", fmt::join(boxes.takeTexts(), "|"));
    }
    std::string saved() {
        fileDialogs.answer(folder.path("saved.txt"));
        press(test::save);
        return contentOf(folder.path("saved.txt"));
    }
    TemporaryFolder folder;
};

TEST(SequenceFile, IsWrittenAndReadByteForByte) {
    FileBench bench;
    EXPECT_EQ(bench.saved(), "Command\tValue\r\nCommands\tValue in Hexa\t\r\n");
    bench.fill("MUX Write=5;Enhanced 4=10ms;Größe µ€=;=A5");
    const std::string bytes = "Command\tValue\r\nCommands\tValue in Hexa\t\r\nMUX Write\t5\t\r\n"
                              "Enhanced 4\t10ms\t\r\nGr\xF6\xDF"
                              "e \xB5\x80\t\t\r\n\tA5\t\r\n";
    EXPECT_EQ(bench.saved(), bytes);
    const std::string rows = bench.sequence();
    const Texts commands = bench.column("List_Commands");
    bench.fill("Wait=1");
    bench.lists().addAnswer({"x", "y"});
    EXPECT_EQ(bench.loadFrom(bytes), "");
    EXPECT_EQ(bench.sequence(), rows);
    EXPECT_EQ(bench.column("List_Commands"), commands) << "with the headers";
    EXPECT_EQ(bench.column("List_Val_read1"), Texts{"MSB in binary (hexa)"});
    EXPECT_EQ(bench.column("List_Val_read0"), Texts{"LSB in binary (hexa)"});
    EXPECT_EQ(bench.saved(), bytes);

    const FileDialog& saving = bench.fileDialogs.shown().front();
    EXPECT_EQ(saving.kind, FileDialog::Kind::Save);
    EXPECT_EQ(saving.title, "Save Sequence");
    EXPECT_EQ(saving.filter, "Sequence file (*.txt)|*.txt");
    bench.press(load); // cancelled
    EXPECT_EQ(bench.fileDialogs.shown().back().kind, FileDialog::Kind::Open);
    EXPECT_EQ(bench.fileDialogs.shown().back().title, "Load sequence");
    bench.press(save);
    EXPECT_EQ(bench.sequence(), rows);
}

TEST(SequenceFile, TakesWhatOtherProgramsLeave) {
    FileBench bench;
    EXPECT_EQ(bench.loadFrom("anything\nHead\tHeads\t\nWait\t5\tand more\t\nMUX Write\t\t"), "");
    EXPECT_EQ(bench.sequence(), "Wait=5 MUX Write=");
    EXPECT_EQ(bench.column("List_Value").front(), "Heads");
}

TEST(SequenceFile, ChangesNothingWhenItIsDamaged) {
    FileBench bench;
    bench.fill("Wait=1;MUX Write=2");
    const std::string name = bench.folder.path("a.txt");
    const std::string head = "Command\tValue\r\nCommands\tValue in Hexa\t\r\n";
    const auto damaged = [&name](int line, const char* reason) {
        return fmt::format("The file \"{}\" is damaged in line {}: {}.", name, line, reason);
    };
    const char* const noTabs = "there is no tab behind the command and behind the value";
    const char* const noHeaders = "there is no row of headers behind it";
    const std::tuple<std::string, int, const char*> cases[] = {
        {head + "Wait\t5\t\r\nMUX Write\t5\r\nWait\t5\t\r\n", 4, noTabs},
        {head + "Wait 5\r\n", 3, noTabs},
        {head + "\r\n", 3, noTabs},
        {"Command\tValue\r\n", 1, noHeaders},
        {"", 0, noHeaders},
    };
    for (const auto& [content, line, reason] : cases)
        EXPECT_EQ(bench.loadFrom(content), damaged(line, reason)) << content;
    EXPECT_NE(bench.loadFrom(head + std::string(70'000, 'x')).find("line 3"), std::string::npos);
    bench.fileDialogs.answer(bench.folder.path());
    bench.press(load);
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);
    EXPECT_EQ(bench.sequence(), "Wait=1 MUX Write=2");

    const std::string before = bench.saved();
    bench.lists().append("MUX Write", "a\tb");
    EXPECT_EQ(bench.saved(), before);
    bench.lists().setValue(3, "\xE2\x88\x9E"); // infinity is in no code page
    EXPECT_EQ(bench.saved(), before);
    EXPECT_EQ(bench.boxes.takeTexts().size(), 2U);
}

TEST(SequenceFile, RecordsWhatIsSent) {
    FileBench bench;
    const std::string name = bench.folder.path("record.txt");
    const auto ticks = [&bench] {
        return fmt::format("{}{}{}", bench.on<forms::CheckBox>("read_auto(39)").value(),
                           bench.on<forms::CheckBox>("read_auto(40)").value(),
                           bench.panel().part<CommandStore>().StoreCommands);
    };
    bench.tick("read_auto(40)"); // cancelled
    EXPECT_EQ(ticks(), "00false");
    EXPECT_EQ(bench.fileDialogs.shown().back().title, "Auto-Save Sequence");
    EXPECT_EQ(bench.fileDialogs.shown().back().filter, "Sequence file (*.txt)|*.txt");
    bench.fileDialogs.answer(bench.folder.path("no folder/record.txt"));
    bench.tick("read_auto(39)");
    EXPECT_EQ(ticks(), "00false");
    EXPECT_EQ(bench.boxes.takeTexts().size(), 1U);

    bench.fileDialogs.answer(name);
    bench.tick("read_auto(39)");
    EXPECT_EQ(ticks(), "11true");
    bench.panel().call("save_log", "MUX Write", "A5");
    bench.panel().call("save_log", "MUX Read Low", "");
    bench.press("watchdog(12)");
    const std::string recorded = "Command\tValue\r\nCommands\tValue in Hexa\t\r\n"
                                 "MUX Write\tA5\t\r\nMUX Read Low\t\t\r\n"
                                 "One Simple Watchdog\t\t\r\n";
    EXPECT_EQ(contentOf(name), recorded);
    EXPECT_EQ(bench.loadFrom(recorded), "");
    EXPECT_EQ(bench.sequence(), "MUX Write=A5 MUX Read Low= One Simple Watchdog=");
    bench.tick("read_auto(40)");
    EXPECT_EQ(ticks(), "00false");
    bench.press("watchdog(12)");
    EXPECT_EQ(contentOf(name), recorded);

    bench.fileDialogs.answer(name);
    bench.tick("read_auto(40)");
    EXPECT_EQ(ticks(), "11true");
    bench.panel().call("save_log", "MUX Write", "A5");
    const std::string untilFull = contentOf(name);
    bench.sent();
    {
        const FileSizeLimit full(untilFull.size() + 5); // space for the start of a row
        bench.press("watchdog(12)");
    }
    EXPECT_EQ(bench.sent(), "5A00") << "a full disk does not prevent commands";
    EXPECT_EQ(ticks(), "00false");
    EXPECT_EQ(
        bench.boxes.takeTexts(),
        std::vector<std::string>{"The file \"" + name + "\" cannot be written: File too large."});
    EXPECT_EQ(contentOf(name), untilFull);
    EXPECT_EQ(bench.loadFrom(untilFull), "");
}

} // namespace
} // namespace bitlux::test
