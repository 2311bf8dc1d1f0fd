// bitlux run, show and list as a user starts them.

#include "support/test_bench.h"

#include <array>
#include <csignal>
#include <cstdio>

#include <sys/wait.h>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr const char* file = "\"Bitlux Configuration File (Version 3.x.x)\",\"\"\r\n"
                             "\"[PartName]\",\"B\xFCro\"\r\n\"[SPIWordLength]\",\"8\"\r\n"
                             "\"[BinaryMode]\",#FALSE#\r\n\"[Data0Enable]\",1\r\n"
                             "\"[Data0Name]\",\"RESET\"\r\n\"[Data0Assignment]\",\"9\"\r\n"
                             "\"[ApplyNow]\",\"\"\r\n"
                             "\"[QuickCommand]\",\"1 0 1 0 0 1 0 1 read \"id\"\"\r\n"
                             "\"[QuickCommand]\",\"0 0 0 0 1 1 1 1 stop\"\r\n"
                             "\"[CommandToSend]\",\"read \"id\"\"\r\n"
                             "\"[CommandToSend]\",\"* Wait 5 s\"\r\n"
                             "\"[CommandToSend]\",\"* Set HIGH: RESET\"\r\n"
                             "\"[CommandToSend]\",\"stop\"\r\n"
                             "\"[BatchItem]\",\"1 halt\"\r\n\"[BatchItem]\",\"1 stop\"\r\n"
                             "\"[BatchItem]\",\"1 * Pause\"\r\n"
                             "\"[BatchItem]\",\"1 read \"id\"\"\r\n";

struct Outcome {
    int code;
    std::string output; ///< of both streams
};

class RunCommand : public testing::Test {
protected:
    /// Runs the real program with these arguments of a shell line, in which {} is the file.
    Outcome bitlux(const std::string& arguments) {
        const std::string line =
            fmt::format("cd {} && {} {} 2>&1 </dev/null", folder.path(), BITLUX_PROGRAM,
                        fmt::format(fmt::runtime(arguments), name));
        FILE* pipe = ::popen(line.c_str(), "r");
        std::string output;
        std::array<char, 4096> block{};
        while (const std::size_t size = std::fread(block.data(), 1, block.size(), pipe))
            output.append(block.data(), size);
        const int status = ::pclose(pipe);
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, output};
    }

    TemporaryFolder folder;
    std::string name = folder.write("x.spi", file);
};

TEST_F(RunCommand, PrintsWhatGoesOut) {
    EXPECT_EQ(bitlux("run {} --bench echo --times 2").output, "A5 00\n0F A5\nA5 0F\n0F A5\n");
    const Outcome json = bitlux("run {} --bench loopback --bus dongle --json");
    EXPECT_EQ(json.code, 0);
    EXPECT_NE(json.output.find("\"command\":\"read \\\"id\\\"\""), std::string::npos)
        << json.output;
    EXPECT_NE(json.output.find("\"words\":2"), std::string::npos) << json.output;
}

TEST_F(RunCommand, SavesTheLogOfTheProgram) {
    bitlux("run {} --bench loopback --log run.txt");
    TestBench bench;
    bench.get<forms::CheckBox>("frmConfigureSPI.ChkSerialPort").setValue(0);
    bench.click("frmConfigureSPI.Btn_ParallelPort");
    bench.fileDialogs.answer(name);
    bench.choose("frmMain.itemOpen");
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.click("frmMain.cmdSendOnce");
    bench.fileDialogs.answer(folder.path("window.txt"));
    bench.click("frmMain.cmdSaveLogMult");
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{});
    const std::string log = contentOf(folder.path("run.txt"));
    EXPECT_EQ(log, contentOf(folder.path("window.txt")));
    EXPECT_EQ(log, "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  A5\r\n \r\n"
                   "Waiting 5 s ...\r\nDone Waiting\r\n \r\nSet HIGH: RESET\r\n \r\n"
                   "SPI Word Sent:\r\n  0F\r\nSPI Word Received:\r\n  0F\r\n \r\n");
}

TEST_F(RunCommand, EndsWithAMessageWhereItCannotGoOn) {
    struct Case {
        const char* arguments;
        const char* message;
    };
    folder.write("damaged.spi", fmt::format("{}\"[BatchItem]\",\"9 x\"\r\n", file));
    for (const Case& c :
         {Case{"run {} --batch halt --bench loopback", "SPI routine paused."},
          {"run {} --batch hlt --bench loopback", "There is no Batch \"hlt\"; near: \"halt\"."},
          {"run damaged.spi --bench loopback", "is damaged in line 19: there is no Batch 9."},
          {"show damaged.spi", "is damaged in line 19"},
          {"run none.spi --bench loopback", "none.spi"},
          {"run {} --bench loopback --bus dongle --fault stalled@2", "cable"}}) {
        const Outcome outcome = bitlux(c.arguments);
        EXPECT_EQ(outcome.code, 1) << c.arguments;
        EXPECT_NE(outcome.output.find(c.message), std::string::npos) << c.arguments << '\n'
                                                                     << outcome.output;
    }
}

TEST_F(RunCommand, ShowsWhatAFileHolds) {
    const std::string shown = bitlux("show {}").output;
    for (const char* line : {"Part          B\u00FCro\n", "8 bits, MSB first\n",
                             "  A5  read \"id\"\n", "  0F  stop\n", "  halt\n", "* Wait 5 s\n"})
        EXPECT_NE(shown.find(line), std::string::npos) << line << shown;
    EXPECT_EQ(bitlux("show --batches {}").output, "halt\n");
    EXPECT_NE(bitlux("list").output.find("echo        answers with the previous word\n"),
              std::string::npos);
}

} // namespace
} // namespace bitlux::test
