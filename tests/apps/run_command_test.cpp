#include "bitlux_program.h"
#include "board_file.h"
#include "support/file_size_limit.h"
#include "support/test_bench.h"

#include <algorithm>
#include <csignal>
#include <functional>

#include <pty.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// A folder with the file of the board.
struct Board : TemporaryFolder {
    std::string file = write("board.spi", boardFile);

    [[nodiscard]] Outcome run(const std::string& arguments) const {
        return bitlux(fmt::format("run {} {} </dev/null", file, arguments));
    }
};

constexpr const char* pauseText =
    "SPI routine paused.  Click OK to continue,\nor click Cancel to stop.\n";

TEST(RunCommand, PrintsALineAWordAndSavesTheLog) {
    const Board board;
    // A missing pin is reported once, however often its line is played.
    const std::string noPin = "Line 4: there is no extra pin \"DIS\".\n";
    EXPECT_EQ(board.run("--bench echo --times 2").output,
              "A5 00\n" + noPin + "0F A5\nA5 0F\n0F A5\n");
    EXPECT_EQ(board.run("--bench echo --log " + board.path("log")).output,
              "A5 00\n" + noPin + "0F A5\n");
    EXPECT_EQ(contentOf(board.path("log")),
              "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  00\r\n \r\nWaiting 2 hrs ...\r\n"
              "Done Waiting\r\n \r\nSet HIGH: EN\r\n \r\n"
              "SPI Word Sent:\r\n  0F\r\nSPI Word Received:\r\n  A5\r\n \r\n");
    EXPECT_EQ(board.run("--bench loopback --batch sweep --times 3").output,
              "A5 A5\nA5 A5\nA5 A5\nA5 A5\nA5 A5\nA5 A5\n");
    // Without a log, no log can be full.
    EXPECT_EQ(board.run("--bench loopback --batch sweep --times 9000").code, 0);
    const std::string much = "--bench loopback --batch sweep --times 9000 --log ";
    const Outcome full = board.run(much + "-");
    EXPECT_NE(full.output.find("The Session Log is full."), std::string::npos);
    EXPECT_EQ(full.code, 1);
    // A file takes what a list does not.
    EXPECT_EQ(board.run(much + board.path("file")).code, 0);
    const std::string file = contentOf(board.path("file"));
    std::size_t words = 0;
    for (std::size_t at = 0; (at = file.find("SPI Word Sent:\r\n", at)) != std::string::npos; ++at)
        ++words;
    EXPECT_EQ(words, 18000U);
    // On a full disk it ends, and the words go on.
    const FileSizeLimit limit(1000);
    const Outcome stopped =
        board.run("--bench loopback --batch sweep --times 30 --log " + board.path("stopped"));
    EXPECT_EQ(std::count(stopped.output.begin(), stopped.output.end(), '\n'), 60 + 1);
    EXPECT_NE(stopped.output.find("The file \"" + board.path("stopped") +
                                  "\" cannot be written: File too large; the log ends there.\n"),
              std::string::npos);
    EXPECT_EQ(stopped.code, 1);
    const std::string stoppedFile = contentOf(board.path("stopped"));
    EXPECT_TRUE(file.starts_with(stoppedFile) && stoppedFile.ends_with(" \r\n"));
    EXPECT_GT(stoppedFile.size(), 900U);
}

TEST(RunCommand, PrintsObjects) {
    const Board board;
    const std::string output =
        "{\"kind\":\"word\",\"word\":1,\"pass\":1,\"line\":1,\"command\":\"read id\",\"ms\":0.027,"
        "\"sent\":\"A5\",\"received\":\"00\",\"bits\":8}\n"
        "{\"kind\":\"wait\",\"pass\":1,\"line\":2,\"command\":\"* Wait 2 hrs\",\"ms\":0.027,"
        "\"duration_ms\":7200000}\n"
        "{\"kind\":\"pin\",\"pass\":1,\"line\":3,\"command\":\"* Set HIGH: EN\","
        "\"ms\":7200000.027,\"pin\":\"EN\",\"level\":\"high\",\"known\":true}\n"
        "{\"kind\":\"pin\",\"pass\":1,\"line\":4,\"command\":\"* Set LOW: DIS\","
        "\"ms\":7200000.028,\"pin\":\"DIS\",\"level\":\"low\",\"known\":false}\n"
        "Line 4: there is no extra pin \"DIS\".\n"
        "{\"kind\":\"word\",\"word\":2,\"pass\":1,\"line\":5,"
        "\"command\":\"gr\xC3\xBCn \\\"a\\\\b\\\" \\u001b[2J\",\"ms\":7200000.055,"
        "\"sent\":\"0F\",\"received\":\"A5\",\"bits\":8}\n";
    const std::string whole = board.run("--bench echo --json").output;
    EXPECT_EQ(whole.substr(0, output.size()), output);
    EXPECT_EQ(whole.substr(output.size()).substr(0, 41),
              "{\"kind\":\"summary\",\"passes\":1,\"words\":2,\"m");
}

TEST(RunCommand, EndsWithOneAtAMessage) {
    const Board board;
    board.write("damaged.spi", boardFile + "\"[BatchItem]\",\"9 x\"\r\n");
    board.write("dongle.spi", dongleFile());
    board.write("other.spi", "hello\r\n");
    std::string nineBits = dongleFile();
    nineBits.replace(nineBits.find(",\"8\""), 4, ",\"9\"");
    board.write("nine.spi", nineBits);
    const std::string sends = dongleFile();
    board.write("pin.spi", sends.substr(0, sends.find("\"[CommandToSend]")) +
                               "\"[CommandToSend]\",\"* Set LOW: Data 1\"\r\n"
                               "\"[DongleData1Enable]\",1\r\n");
    const std::string start = "run --bench echo " + board.path();
    for (const auto& [arguments, output] : Rows<std::string, std::string>{
             {"/board.spi --batch sweeep", "There is no Batch \"sweeep\"; near: \"sweep\".\n"},
             {"/board.spi --batch ''", "There is no Batch \"\".\n"},
             {"/board.spi --batch 'hold on'",
              fmt::format("A5 00\n{}Nobody can be asked: the standard input is no terminal. "
                          "\"--yes\" goes on.\n",
                          pauseText)},
             {"/damaged.spi", fmt::format("The file \"{}\" is damaged in line 26: there is no "
                                          "Batch 9.\n",
                                          board.path("damaged.spi"))},
             {"/other.spi", "Invalid File Format.\n"},
             {"/nine.spi --bus dongle",
              "The dongle carries words of 8, 16, 24, 32 or 40 bits, not of 9.\n"},
             {"/none.spi", fmt::format("There is no file \"{}\".\n", board.path("none.spi"))},
             {"/dongle.spi --bus dongle --batch sweep --fault gone@2",
              "A5 00\nLine 3: there is no extra pin \"EN\".\nWord 2, line 4, \"read id\": Check "
              "the USB cable and restart program\n"},
             {"/pin.spi --bus dongle", "A pin goes with the word of the first page, line 1, "
                                       "\"* Set LOW: Data 1\": Nothing to send!\n"},
             {"/dongle.spi --bus dongle --batch sweep --fault silent --timeout 1 --trace -",
              "Word 1, line 1, \"read id\": No answer came in 1 s.\n"
              "0 OUT 08 70 00 A5 00 00 00 00\n"},
             {"/board.spi --log /missing/log",
              "The file \"/missing/log\" cannot be written: No such file or directory.\n"}})
        expectRun(start + arguments + " </dev/null", output, 1);
    for (const char* arguments : {"", "--times 0", "--bus port", "--bench echo --json --log -"})
        EXPECT_EQ(board.run(arguments).code, *arguments == '\0' ? 1 : 2) << arguments;
    EXPECT_EQ(board.run("--bench echo >/dev/full").code, 1);
}

TEST(RunCommand, ChangesAPinOfTheDongleWithTheWordThatItIsGiven) {
    const Board board;
    std::string text = dongleFile() + "\"[BatchItem]\",\"3 pin\"\r\n"
                                      "\"[BatchItem]\",\"3 * Set HIGH: Data 0\"\r\n"
                                      "\"[DongleData0Enable]\",1\r\n";
    board.write("hex.spi", text);
    board.write("binary.spi", text.replace(text.find("#FALSE#"), 7, "#TRUE#"));
    const std::string run = "run --bench echo --bus dongle --batch pin " + board.path();
    expectRun(run + "/hex.spi",
              "A pin goes with the word of the first page, line 1, "
              "\"* Set HIGH: Data 0\": Nothing to send!\n",
              1);
    for (const char* file : {"/hex.spi", "/binary.spi"})
        expectRun(run + file + " --pin-word 0x3C --trace -",
                  "0 OUT 48 70 01 3C 00 00 00 00\n2008000 IN 48 70 01 00 00 00 00 00\n3C 00\n");
    expectRun(run + "/hex.spi --pin-word 13C",
              "--pin-word \"13C\": This has 9 bits, and a word here has 8.\n", 2);
}

TEST(RunCommand, GoesOnAtAPauseAndEndsQuietlyWhenItsOutputIsClosed) {
    const Board board;
    EXPECT_EQ(board.run("--bench echo --batch 'hold on' --yes </dev/null").output,
              fmt::format("A5 00\n{}A5 A5\n", pauseText));
    const std::string errors = board.path("errors");
    const int status =
        std::system(fmt::format("bash -c '" BITLUX_PROGRAM
                                " run {} --bench echo --batch sweep --times 100000 2>{} | "
                                "head -1 >/dev/null; exit ${{PIPESTATUS[0]}}'",
                                board.path("board.spi"), errors)
                        .c_str());
    EXPECT_EQ(status, 0);
    EXPECT_EQ(contentOf(errors), "");
}

TEST(RunCommand, SendsNoneOfAFilesEscapesToTheTerminal) {
    // Control characters of one byte, and one that is two bytes on the terminal.
    const std::string bad = "xyz\x1B]0;\a\x7F\x9D";
    std::string text = boardFile; // with that for the name of its pin
    for (std::size_t at = 0; (at = text.find("EN\"", at)) != std::string::npos;)
        text.replace(at, 2, bad);
    const Board board;
    for (const auto& [command, record, start] :
         {row("show", "[PartName]", ""), row("show", "[CSpin]", ""),
          row("show", "[QuickCommand]", ""), row("show", "[BatchItem]", "1 "),
          row("show --batches", "[BatchItem]", "3 "), row("run --bench echo --log -", "[x]", ""),
          row("run --bench echo --json", "[x]", "")}) {
        const std::string file =
            board.write("bad.spi", fmt::format("{}\"{}\",\"{}{}\"\r\n", text, record, start, bad));
        const std::string output = bitlux(fmt::format("{} {} </dev/null", command, file)).output;
        EXPECT_NE(output.find("xyz"), std::string::npos) << command << record << output;
        for (const char* sequence : {"\x1B", "\a", "\x7F", "\xC2\x9D"})
            EXPECT_EQ(output.find(sequence), std::string::npos) << command << '\n' << output;
    }
}

TEST(RunCommand, LeavesTheChoiceOfTheBusToTheFile) {
    const Board board;
    board.write("dongle.spi", dongleFile());
    const auto frames = [&](const std::string& arguments) {
        const std::string vcd = board.path("w.vcd");
        const Outcome run = bitlux(fmt::format("run {}/{} --bench loopback --batch sweep --vcd {}",
                                               board.path(), arguments, vcd));
        const bool onDongle = contentOf(vcd).find("as commanded") != std::string::npos;
        EXPECT_EQ(run.output, // its pins have other names
                  fmt::format("A5 A5\n{}A5 A5\n",
                              onDongle ? "Line 3: there is no extra pin \"EN\".\n" : ""));
        return onDongle;
    };
    EXPECT_FALSE(frames("board.spi --bus dongle"));
    EXPECT_FALSE(frames("dongle.spi --bus port"));
    EXPECT_TRUE(frames("dongle.spi --bus dongle"));
}

/// The program on a terminal of its own; its standard output goes to a file.
class OnTerminal {
public:
    OnTerminal(const std::string& arguments, const std::string& outputFile) {
        child_ = forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (child_ != 0)
            return;
        const std::string line =
            fmt::format("exec {} {} >{}", BITLUX_PROGRAM, arguments, outputFile);
        execl("/bin/sh", "sh", "-c", line.c_str(), nullptr);
        _exit(127);
    }
    ~OnTerminal() { ::close(terminal_); }
    OnTerminal(const OnTerminal&) = delete;
    OnTerminal& operator=(const OnTerminal&) = delete;

    /// Reads until the terminal shows this; false when the program ends before.
    bool waitFor(const std::string& text) {
        std::array<char, 512> block{};
        while (seen_.find(text) == std::string::npos) {
            const ssize_t size = ::read(terminal_, block.data(), block.size());
            if (size <= 0)
                return false;
            seen_.append(block.data(), static_cast<std::size_t>(size));
        }
        seen_.erase(0, seen_.find(text) + text.size());
        return true;
    }
    void type(const std::string& keys) const {
        EXPECT_EQ(::write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }
    void signal(int number) const { ::kill(child_, number); }
    int exitCode() {
        waitFor("nothing that it says"); // a terminal that is not read keeps it from ending
        int status = 0;
        ::waitpid(child_, &status, 0);
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    int terminal_ = -1;
    pid_t child_ = -1;
    std::string seen_;
};

TEST(RunCommand, AsksOnATerminal) {
    for (const auto& [keys, code, output] : Rows<const char*, int, const char*>{
             {"\n", 0, "A5 00\nA5 A5\n"}, {"what\nc\n", 1, "A5 00\n"}, {"\x04", 1, "A5 00\n"}}) {
        const Board board;
        OnTerminal terminal(fmt::format("run {} --bench echo --batch 'hold on'", board.file),
                            board.path("out"));
        ASSERT_TRUE(terminal.waitFor("or click Cancel to stop."));
        ASSERT_TRUE(terminal.waitFor("Enter continues, c cancels: "));
        terminal.type(keys);
        EXPECT_EQ(terminal.exitCode(), code) << keys;
        EXPECT_EQ(contentOf(board.path("out")), output) << keys;
    }
}

TEST(RunCommand, EndsOrderlyAtASignal) {
    for (const int number : {SIGINT, SIGTERM}) {
        const Board board;
        OnTerminal terminal(fmt::format("run {} --bench echo --batch 'hold on' --log {} --vcd {}",
                                        board.file, board.path("log"), board.path("vcd")),
                            board.path("out"));
        ASSERT_TRUE(terminal.waitFor("Enter continues, c cancels: "));
        terminal.signal(number);
        EXPECT_EQ(terminal.exitCode(), 128 + number);
        EXPECT_EQ(contentOf(board.path("out")), "A5 00\n");
        EXPECT_EQ(contentOf(board.path("log")),
                  "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  00\r\n \r\n");
        EXPECT_NE(contentOf(board.path("vcd")).find("$dumpvars"), std::string::npos);
    }
}

TEST(RunCommand, EndsBetweenWordsAndReportsItsProgress) {
    const Board board;
    OnTerminal terminal(
        fmt::format("run {} --bench echo --batch sweep --times 2000000000", board.file),
        "/dev/null");
    ASSERT_TRUE(terminal.waitFor(" of 2000000000, line ")); // so it is among the words
    terminal.signal(SIGTERM);
    EXPECT_EQ(terminal.exitCode(), 143);
}

} // namespace
} // namespace bitlux::test
