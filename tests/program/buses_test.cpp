// What is sent and logged does not depend on the bus.

#include "support/test_bench.h"
#include "waveform/word_data.h"

#include "panels/common/panel_form.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

enum class OneBus { Port, Dongle, Adapter };

/// The program on a bus, with words of a length in hexadecimal.
struct BusBench : TestBench {
    BusBench(OneBus bus, const std::string& device, const std::string& bits,
             const std::string& type)
        : TestBench(device, {}, bus == OneBus::Dongle ? WithDongle::Yes : WithDongle::No) {
        if (bus == OneBus::Adapter)
            bench.adapter.plug();
        choose("frmMain.itemPortOptions");
        if (bus != OneBus::Dongle)
            click("frmConfigureSPI.Btn_ParallelPort");
        if (bus == OneBus::Adapter)
            get<forms::ComboBox>("frmConfigureSPI.cmbPortsAvailable").select(1);
        get<forms::ComboBox>("frmConfigureSPI.cmbSPIWordLength").edit(bits);
        get<forms::OptionButton>("frmConfigureSPI.optHex").click();
        get<forms::OptionButton>("frmConfigureSPI.optLSBfirst").click();
        get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").click(std::stoi(type));
        click("frmConfigureSPI.cmdOK");
        program.engine().keepWords(clock);
        loop.drive(program.forms());
    }

    /// All words that were sent since the start, with their answers.
    Texts words() {
        Texts all;
        for (const SentWord& sent : program.engine().sentWords()->last(10'000)) {
            const WordData word(sent);
            all.push_back(fmt::format("{} {}", word.hexOf(word.sent), word.hexOf(word.received)));
        }
        return all;
    }
};

constexpr OneBus others[] = {OneBus::Dongle, OneBus::Adapter};

Texts logOfABatch(OneBus bus, const std::string& bits, const std::string& type) {
    BusBench bench(bus, "echo", bits, type);
    const std::size_t digits = std::stoul(bits) / 4;
    bench.save("first", std::string("A5C3E10F77").substr(0, digits));
    bench.save("second", std::string("0123456789").substr(0, digits));
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.program.mainForm().commands.setToSend(
        {"first", "* Wait 3 ms", "second", "first", "first", "second"});
    bench.click("frmMain.cmdSendOnce");
    Texts log = bench.lines("frmMain.lstSessionLogMult");
    EXPECT_EQ(bench.words().size(), 5U);
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
    return log;
}

TEST(Buses, LogABatchAlike) {
    for (const char* bits : {"8", "16", "24", "32", "40"})
        for (const char* type : {"1", "2", "3", "4", "5", "6", "7", "8"}) {
            const Texts log = logOfABatch(OneBus::Port, bits, type);
            EXPECT_GT(log.size(), 5U);
            for (const OneBus bus : others)
                EXPECT_EQ(logOfABatch(bus, bits, type), log) << bits << " bits, type " << type;
        }
}

/// The words of a panel: its reads, its writes and a sequence, with the answers of the chip.
Texts wordsOfAPanel(OneBus bus) {
    BusBench bench(bus, "zt72516", "8", "1");
    bench.program.forms().show("ZT72516");
    auto& panel = bench.program.panels().touch("zt72516");
    bench.click("ZT72516ReadFlags.Btn_Read_All_Flags");
    SequenceLists& lists = panel.sequence.lists;
    lists.clear();
    for (const char* line : {"Init Reg Read", "TIMER Reg Read", "Simple Watchdog Refresh"})
        lists.append(line, "");
    lists.append("SGFS Reg Write", "291");
    lists.append("SPE_MODE Reg Read", "");
    bench.click("ZT72516.Cm_Run_Seq");
    bench.program.panels().touch("zt72516").setVisible(false);
    return bench.words();
}

TEST(Buses, CarryAPanelAlike) {
    const Texts words = wordsOfAPanel(OneBus::Port);
    EXPECT_GT(words.size(), 8U);
    for (const OneBus bus : others)
        EXPECT_EQ(wordsOfAPanel(bus), words);
}

} // namespace
} // namespace bitlux::test
