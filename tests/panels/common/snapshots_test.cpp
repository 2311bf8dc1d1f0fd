// Snapshots on a panel: files, words, marks, the check of writes, failures.

#include "bench/chosen_marker_files.h"
#include "chips/chip_reader.h"
#include "panels/panel_bench.h"
#include "support/lamp_chip.h"
#include "support/temporary_folder.h"

namespace bitlux::test {
namespace {

/// The labels of a panel that are marked.
std::string marksOf(const PanelForm& form) {
    Texts all;
    for (const forms::Control* any : form.controls())
        if (any->marked())
            all.push_back(any->localName());
    return fmt::format("{}", fmt::join(all, " "));
}

std::string reportOf(const PanelForm& form) {
    return std::get<std::string>(form.readVariable("SnapshotReport"));
}

struct SnapshotBench : PanelBench {
    explicit SnapshotBench(const std::string& device = "zt72516",
                           const std::string& form = "ZT72516")
        : PanelBench(device, {}, form, {.bits = 32}) {}

    /// Runs a procedure on a file; what it sends and says.
    std::string run(const char* procedure, const std::string& fileName) {
        fileDialogs.answer(fileName);
        trace.clear();
        program.forms().perform("a test", [&] { panel().call(procedure); });
        std::string all = sent();
        for (const std::string& box : boxes.takeTexts())
            all += fmt::format("[{}]", box);
        return all;
    }
    std::string report() { return reportOf(panel()); }
    std::string marks() { return marksOf(panel()); }

    const TemporaryFolder folder;
    const std::string file = folder.path("before.toml");
};

/// What the ZT72516 has that no read changes: not its flags and not its random codes.
constexpr const char* allReads =
    "01000000 02000000 03000000 05000000 06000000 08000000 88000080 89000000 0A000000 8A000000 "
    "0B000000 8B000000 8B800000 0C000000 8C000000 0D000000 8D000000 0E000000 0F000000 10000000 "
    "11000000 12000000 13000000 14000000 30000000 31000000 32000000 33000000 34000000 38000000 "
    "39000000 3A000000 3B000000 3C000000";

TEST(PanelSnapshots, AreSavedComparedAndWritten) {
    SnapshotBench bench;
    EXPECT_EQ(bench.run("SaveSnapshot", bench.file), allReads);
    EXPECT_NE(contentOf(bench.file).find("\"TIMER\" = 0xF0001E # "), std::string::npos);
    bench.pokeTo("Init_Reg", 0x210);
    bench.pokeTo("TIMER_Reg", 0x7);
    bench.outcomeOf("Btn_Write_Init_reg Btn_Write_TIMER_Reg");
    EXPECT_EQ(bench.run("CompareSnapshot", bench.file), allReads);
    EXPECT_EQ(bench.report(),
              "Different from before.toml: 2 of 34 registers.\n"
              "INIT 0x000010 -> 0x000210: WD_spi Simple Watchdog selection: W/D refresh done by a "
              "8bits or 32 bits SPI -> Enhanced 1: Refresh done using Random Code, and by a single "
              "32 bits.\n"
              "TIMER 0xF0001E -> 0x000007: Watchdog in Low Power VDD ON Mode (ms) 2048 -> 12, "
              "Watchdog in Flash Mode (ms) 32768 -> 48, Watchdog Period in Device Normal Mode (ms) "
              "256 -> 320");
    EXPECT_EQ(bench.marks(), "Init_Reg(9) TIMER_Reg(0) TIMER_Reg(3) TIMER_Reg(4) TIMER_Reg(20) "
                             "TIMER_Reg(21) TIMER_Reg(22) TIMER_Reg(23)");

    const std::string asked = "[Write 2 registers of the ZT72516 that differ from before.toml?\r\n"
                              "INIT, TIMER]";
    bench.boxes.answer(MessageBox::Answer::No);
    EXPECT_EQ(bench.run("WriteSnapshot", bench.file), allReads + asked);
    EXPECT_EQ(bench.boxes.shown().back().preset, MessageBox::Answer::No);
    bench.press("Btn_Read_TIMER_Reg");
    EXPECT_EQ(bench.marks(), "Init_Reg(9)") << "a register is read again";
    bench.boxes.answer(MessageBox::Answer::Yes);
    EXPECT_EQ(bench.run("WriteSnapshot", bench.file),
              fmt::format("{} 43000010 03000000 45F0001E 05000000{}", allReads, asked));
    EXPECT_EQ(bench.report(), "Written: 2 of 2 registers. Did not take: 0.");
    EXPECT_EQ(bench.marks(), "");
    EXPECT_EQ(bench.row("TIMER_Reg"), 0xF0001EU) << "the panel has what was written";
    EXPECT_EQ(bench.run("WriteSnapshot", bench.file), allReads);
    EXPECT_EQ(bench.report(), "Nothing was written: no register differs from before.toml.");
}

TEST(PanelSnapshots, ChangeNothingWhenTheyFail) {
    constexpr const char* values = "[snapshot]\nchip = \"{}\"\n\n[values]\nINIT = 0x11\n"
                                   "TIMER = 0xF0001F\nSPE_MODE = 1\n";
    SnapshotBench bench;
    bench.folder.write("before.toml", fmt::format(fmt::runtime(values), "zt72516"));
    bench.run("CompareSnapshot", bench.file);
    const std::string report = bench.report();
    EXPECT_EQ(report,
              "Different from before.toml: 2 of 2 registers. Not compared, as no read leaves "
              "them alone: 1.\nINIT 0x000011 -> 0x000010: Unused 1 -> 0\nTIMER 0xF0001F -> "
              "0xF0001E: Watchdog Period in Device Normal Mode (ms) 512 -> 256");
    const std::string other =
        bench.folder.write("other.toml", fmt::format(fmt::runtime(values), "zt72518"));
    for (const char* procedure : {"CompareSnapshot", "WriteSnapshot"})
        EXPECT_EQ(bench.run(procedure, other),
                  fmt::format("[{}: this is a snapshot of zt72518, not of zt72516]", other));
    const std::string nowhere = bench.folder.path("none/before.toml");
    EXPECT_EQ(bench.run("SaveSnapshot", nowhere),
              fmt::format("{}[The file \"{}\" cannot be written: No such file or directory.]",
                          allReads, nowhere));
    EXPECT_EQ(bench.marks(), "Init_Reg(0) TIMER_Reg(0)");

    int words = 0;
    const Subscription lost = bench.program.engine().wordTransferred.follow([&] {
        if (++words == 2) // a register was read
            bench.dongle.unplug();
    });
    EXPECT_EQ(bench.run("CompareSnapshot", bench.file), "03000000 05000000");
    for (const char* procedure : {"CompareSnapshot", "SaveSnapshot", "WriteSnapshot"})
        EXPECT_EQ(bench.run(procedure, bench.file), "[Check the USB cable and restart program]")
            << procedure;
    EXPECT_EQ(bench.report(), report);
    EXPECT_NE(contentOf(bench.file).find("INIT = 0x11"), std::string::npos);

    bench.dongle.plug();
    words = -1;
    bench.boxes.answer(MessageBox::Answer::Yes);
    EXPECT_EQ(bench.run("WriteSnapshot", bench.file),
              "03000000 05000000 43000011[Write 2 registers of the ZT72516 that differ from "
              "before.toml?\r\nINIT, TIMER][Check the USB cable and restart program]");
    EXPECT_EQ(bench.report(), "Written: 1 of 2 registers. Then the chip did not answer.");
}

TEST(PanelSnapshots, AreNotRecordedAsCommands) {
    SnapshotBench bench("zt72518d", "ZT72518");
    const std::string commands = bench.folder.path("commands.txt");
    bench.fileDialogs.answer(commands);
    bench.panel().part<CommandStore>().start();
    const std::string recorded = contentOf(commands);
    EXPECT_EQ(bench.run("SaveSnapshot", bench.file),
              "0100 0300 0500 0700 0900 0B00 0D00 0F00 1100 1500 1700 1900 1D80 "
              "1F00 2100 2180 2300 2380 2500 2580 2700 2780 2900 2980");
    EXPECT_EQ(contentOf(commands), recorded);
}

/// The lamp on a loopback: a read gives zeros back, so that no one takes.
struct EchoingLamp : TestBench {
    EchoingLamp() : TestBench("loopback") {
        configure("8");
        sent = program.engine().wordTransferred.follow([this] {
            unsigned word = 0;
            for (std::size_t i = session().WordToSend.size(); i-- > 0;)
                word = word << 1 | (session().WordToSend[i] == 1 ? 1U : 0U);
            words += fmt::format("{:04X} ", word);
        });
    }
    std::string click(const char* control) {
        words.clear();
        panel.control(control).click();
        return words;
    }

    const ChosenMarkerFiles markers;
    Desk shown = desk.desk();
    PanelForm panel{program.forms(),
                    "Lamp",
                    chips::readChip(lampChip, "lamp.toml").chip,
                    {.session = program.session(),
                     .engine = program.engine(),
                     .dongle = program.dongle(),
                     .desk = shown,
                     .markers = markers,
                     .clock = clock}};
    std::string words;
    Subscription sent;
};

TEST(PanelSnapshots, CheckWritesOnlyWhenAsked) {
    EchoingLamp bench;
    bench.click("Lamp_Brightness(2)");
    bench.click("Lamp_Blink");
    EXPECT_EQ(bench.click("Cm_Lamp_W"), "4804 ");
    bench.panel.writeVariable("CheckWrites", true);
    EXPECT_EQ(bench.click("Cm_Lamp_W"), "4804 0000 ");
    EXPECT_EQ(marksOf(bench.panel), "Lamp_W(2) Lamp_W(11) Lamp_R(2) Lamp_R(11)");
    EXPECT_EQ(bench.panel.pageControls.row("Lamp_W").value(), 0x804U);
    EXPECT_EQ(bench.click("Cm_Unlock"), "1234 3000 700D ") << "a command is no write of the user";
    EXPECT_EQ(bench.click("Cm_Lamp_R"), "0000 ");
    EXPECT_EQ(marksOf(bench.panel), "");
}

TEST(PanelSnapshots, ShowWhatWasWrittenAndWhatDidNotTake) {
    const TemporaryFolder folder;
    EchoingLamp bench;
    bench.fileDialogs.answer(
        folder.write("a.toml", "[snapshot]\nchip = \"lamp\"\n[values]\nLamp = 0x804\nGuard = 9\n"));
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.panel.call("WriteSnapshot");
    EXPECT_EQ(bench.words, "0000 2000 4804 0000 6009 2000 ");
    EXPECT_EQ(reportOf(bench.panel),
              "Written: 2 of 2 registers. Did not take: 2.\n"
              "Lamp 0x804 -> 0x000: Blink 1 -> 0, Brightness half -> off\n"
              "Guard 0x9 -> 0x0: Kind fast -> slow, Slow time 1 -> 1, Fast time 9 -> 8");
    EXPECT_EQ(bench.panel.pageControls.row("Lamp_W").value(), 0x804U);
    EXPECT_EQ(bench.panel.pageControls.row("Lamp_R").value(), 0U);
    for (const char* choice : {"Lamp_Brightness(2)", "Guard_Kind(1)", "Guard_Fast_time(1)"})
        EXPECT_TRUE(dynamic_cast<forms::OptionButton&>(bench.panel.control(choice)).value())
            << choice;
    EXPECT_EQ(marksOf(bench.panel), "Lamp_W(2) Lamp_W(11) Lamp_R(2) Lamp_R(11) Guard_R(0)");
}

} // namespace
} // namespace bitlux::test
