// The window's program, the command line and a script write the same log for a Batch.

#include "bitlux_program.h"
#include "board_file.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

std::string logOfWindow(const TemporaryFolder& folder, const std::string& file,
                        const std::string& bus) {
    TestBench bench("echo", {},
                    bus == "dongle" ? TestBench::WithDongle::Yes : TestBench::WithDongle::No);
    if (bus == "ftdi") {
        bench.port.setAddresses({});
        bench.bench.adapter.plug();
    }
    if (bus != "dongle")
        bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.program.open(file);
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.get<forms::ComboBox>("frmMain.cmbBatches").select(0);
    bench.click("frmMain.cmdSendOnce");
    bench.fileDialogs.answer(folder.path("window"));
    bench.click("frmMain.cmdSaveLogMult");
    return contentOf(folder.path("window"));
}

std::string logOfCommandLine(const TemporaryFolder& folder, const std::string& file,
                             const std::string& bus) {
    EXPECT_EQ(bitlux(fmt::format("run {} --bench echo --bus {} --batch sweep --log {}", file, bus,
                                 folder.path("command")))
                  .code,
              0);
    return contentOf(folder.path("command"));
}

#ifdef BITLUX_PYTHON
std::string logOfScript(const TemporaryFolder& folder, const std::string& file,
                        const std::string& bus) {
    const std::string script =
        folder.write("play.py", fmt::format("import bitlux\n"
                                            "b = bitlux.Bench(device='echo', bus='{}')\n"
                                            "b.open('{}')\n"
                                            "b['frmMain.TabStripMain'].value = 2\n"
                                            "b['frmMain.cmbBatches'].text = 'sweep'\n"
                                            "b['frmMain.cmdSendOnce'].click()\n"
                                            "b.answer_file('{}')\n"
                                            "b['frmMain.cmdSaveLogMult'].click()\n",
                                            bus, file, folder.path("script")));
    EXPECT_EQ(std::system(fmt::format("{} {}", BITLUX_PYTHON, script).c_str()), 0);
    return contentOf(folder.path("script"));
}
#endif

TEST(SameLog, ComesFromWindowCommandLineAndScript) {
    for (const char* bus : {"port", "dongle", "ftdi"}) {
        const TemporaryFolder folder;
        const std::string file =
            folder.write("board.spi", bus == std::string("dongle") ? dongleFile() : boardFile);
        const std::string log = logOfWindow(folder, file, bus);
        EXPECT_EQ(log.substr(0, 20), "SPI Word Sent:\r\n  A5");
        EXPECT_EQ(logOfCommandLine(folder, file, bus), log);
#ifdef BITLUX_PYTHON
        EXPECT_EQ(logOfScript(folder, file, bus), log);
#endif
    }
}

} // namespace
} // namespace bitlux::test
