#include "bitlux_program.h"
#include "board_file.h"
#include "dialogue.h"
#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <csignal>
#include <filesystem>
#include <regex>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

const std::string header =
    R"({"kind":"journal","version":1,"program":"P","started":"S","bus":"port","bits":16,"type":1,)"
    R"("order":"msb","cs":"low","di":"high","do":"high","pins":"2,3,4,12",)"
    R"("data_register":1,"control_register":11})"
    "\n";

class Journal : public testing::Test {
protected:
    [[nodiscard]] std::string path(const std::string& name) const { return folder_.path(name); }
    [[nodiscard]] std::string write(const std::string& name, const std::string& content) const {
        return folder_.write(name, content);
    }
    /// A journal without what differs from day to day.
    [[nodiscard]] std::string journal(const std::string& name = "j.jsonl") const {
        static const std::regex own(R"x("program":"[^"]*","started":"[^"]*")x");
        return std::regex_replace(contentOf(path(name)), own, R"("program":"P","started":"S")");
    }
    /// Records a command, replays it, and expects the same on the wire.
    void expectSameWire(const std::string& command, const std::string& outlet,
                        const std::string& result, const std::string& times = "") {
        bitlux(command + " " + outlet + " --journal " + path("j.jsonl") + " --trace " +
               path("then"));
        expectRun("replay " + path("j.jsonl") + " " + outlet + " --trace " + path("now"),
                  result + "\n");
        const std::regex time(times);
        EXPECT_FALSE(contentOf(path("then")).empty()) << command;
        EXPECT_EQ(std::regex_replace(contentOf(path("now")), time, ""),
                  std::regex_replace(contentOf(path("then")), time, ""))
            << command;
    }

private:
    TemporaryFolder folder_;
};

TEST_F(Journal, HasEveryWordWithItsAnswer) {
    expectRun("send --bench echo --bits 16 --journal " + path("j.jsonl") + " A5C3 0FF0",
              "A5C3 0000\n0FF0 A5C3\n");
    EXPECT_EQ(journal(),
              header + R"({"kind":"word","us":0,"took":51,"sent":"A5C3","received":"0000"}
{"kind":"word","us":51,"took":51,"sent":"0FF0","received":"A5C3"}
)");
}

TEST_F(Journal, HasWaitsPinsAndBoxes) {
    const std::string file = write("board.spi", boardFile);
    bitlux("run " + file + " --bench echo --batch 'hold on' --yes --journal " + path("j.jsonl"));
    const std::string held = journal();
    EXPECT_NE(held.find(R"(,"title":"SPI Transfers Paused","text":"SPI routine paused.)"),
              std::string::npos)
        << held;
    bitlux("run " + file + " --bench echo --batch sweep --journal " + path("j.jsonl"));
    const std::string all = journal();
    EXPECT_EQ(all.substr(all.find('\n') + 1),
              R"({"kind":"word","us":0,"took":27,"sent":"A5","received":"00"}
{"kind":"wait","us":27,"for":5000}
{"kind":"pins","us":5028,"register":"data","value":9}
{"kind":"word","us":5028,"took":27,"sent":"A5","received":"A5"}
)");
}

TEST_F(Journal, IsSentAgainExactly) {
    // After a pin the clock of the replay is one access ahead.
    const std::string times = "(^|\n)[0-9]+";
    const std::string port = write("port.spi", boardFile);
    const std::string dongle =
        write("dongle.spi", dongleFile() + "\"[BatchItem]\",\"3 pin\"\r\n"
                                           "\"[BatchItem]\",\"3 read id\"\r\n"
                                           "\"[BatchItem]\",\"3 * Set HIGH: Data 0\"\r\n"
                                           "\"[BatchItem]\",\"3 read id\"\r\n"
                                           "\"[DongleData0Enable]\",1\r\n");
    expectSameWire("send --bits 13 --type 7 --order lsb --cs high --di low --pins 9,8,7,15 1A5C 3",
                   "--bench loopback --bus port", "2 words, 0 differences");
    expectSameWire("send --bits 24 --type 3 --clock 62.5k --do low A5C3FF 0FF000 1",
                   "--bench loopback --bus dongle", "3 words, 0 differences");
    expectSameWire("run " + port, "--bench echo --bus port", "2 words, 0 differences", times);
    expectSameWire("run " + dongle + " --batch pin --pin-word 3C", "--bench echo --bus dongle",
                   "3 words, 0 differences");
    // The chip's words have a length and a type of their own.
    expectSameWire("chip write zt72516 INIT.WD_spi=1 --verify", "--bench zt72516 --bus port",
                   "3 words, 0 differences");
}

TEST_F(Journal, KeepsPausesUnlessDisabled) {
    const std::string file = write("board.spi", boardFile);
    bitlux("run " + file + " --bench echo --batch sweep --journal " + path("j.jsonl"));
    const auto lastTime = [&](const std::string& options) {
        const std::string output =
            bitlux("replay " + path("j.jsonl") + " --bench echo --json " + options).output;
        const std::string name = R"("word":2,"pass":1,"ms":)";
        const std::size_t at = output.find(name) + name.size();
        return output.substr(at, output.find(',', at) - at);
    };
    EXPECT_EQ(lastTime(""), "5.056");
    EXPECT_EQ(lastTime("--fast"), "0.055");
}

TEST_F(Journal, ReportsTheFirstDifferenceAndTheirCount) {
    bitlux("send --bench echo --bits 16 --journal " + path("j.jsonl") + " A5C3 0FF0 5");
    expectRun("replay " + path("j.jsonl") + " --bench stuck-low --trace " + path("t"),
              "Line 3, word 2, 0FF0: 0000, and the journal has A5C3\n"
              "  00000000 00000000  answer\n"
              "  10100101 11000011  expected\n"
              "  ^ ^  ^ ^ ^^    ^^\n"
              "3 words, 2 differences\n",
              3);
    const std::string before = journal();
    expectRun("replay " + path("j.jsonl") + " --bench stuck-low --update 2>&1 | tail -1",
              "3 words, 2 differences, now in the journal\n");
    EXPECT_EQ(journal(),
              std::regex_replace(before, std::regex("(\"received\":\")...."), "$010000"));
    expectRun("replay " + path("j.jsonl") + " --bench stuck-low", "3 words, 0 differences\n");
    const Outcome json = bitlux("replay " + path("j.jsonl") + " --bench loopback --json");
    EXPECT_EQ(json.code, 3);
    EXPECT_NE(
        json.output.find(R"("sent":"A5C3","received":"A5C3","bits":16,"line":2,"then":"0000"})"
                         "\n"
                         R"({"kind":"difference","line":2,"word":1,"sent":"A5C3",)"
                         R"("then":"0000","now":"A5C3"})"),
        std::string::npos)
        << json.output;
    EXPECT_NE(json.output.find(R"({"kind":"replay","words":3,"differences":3})"),
              std::string::npos);
}

TEST_F(Journal, OfALostDongleIsSentAgain) {
    const std::string lost = "Check the USB cable and restart program\n";
    bitlux("send --bench loopback --bus dongle --fault gone@3 --journal " + path("j.jsonl") +
           " A5 5A 3C");
    const std::string all = journal();
    EXPECT_EQ(all.substr(all.find(R"({"kind":"dongle")")),
              R"({"kind":"dongle","us":4016,"present":false}
{"kind":"word","us":4016,"took":0,"sent":"3C","received":null}
{"kind":"box","us":4016,"title":"Bitlux Forge","text":"Check the USB cable and restart program"}
)");
    expectRun("replay " + path("j.jsonl") + " --bench loopback --bus dongle --fault gone@3",
              path("j.jsonl") + ", line 5: " + lost + "3 words, 0 differences\n");
    expectRun("replay " + path("j.jsonl") + " --bench loopback",
              "Line 5, word 3, 3C: 3C, and the journal has no answer\n"
              "3 words, 1 differences\n",
              3);
}

TEST_F(Journal, IsReadableAfterAKill) {
    Dialogue program("send --bench loopback --journal " + path("j.jsonl") + " -");
    ASSERT_TRUE(program.say("A5 5A"));
    EXPECT_EQ(program.line(), "A5 A5\n");
    EXPECT_EQ(program.line(), "5A 5A\n"); // it is in the file before it is printed
    program.signal(SIGKILL);
    program.end();
    expectRun("replay " + path("j.jsonl") + " --bench loopback", "2 words, 0 differences\n");
    const std::string whole = contentOf(path("j.jsonl"));
    const std::string cut = write("cut.jsonl", whole.substr(0, whole.size() - 9));
    expectRun("replay " + cut + " --bench loopback",
              "The last line of the journal was cut off, and is left out.\n"
              "1 words, 0 differences\n");
}

TEST_F(Journal, SaysWhatIsWrongWithIt) {
    const std::string word = R"({"kind":"word","us":0,"took":9,"sent":"A5C3","received":"0000"})";
    const std::vector<std::tuple<std::string, std::size_t, std::string>> rows{
        {header + "x\n" + word + "\n", 2, "it is no object of JSON"},
        {header + word + "\nx\n", 3, "it is no object of JSON"},
        {word + "\n", 1, R"(a journal begins with the kind "journal")"},
        {R"({"kind":"journal","version":2})", 1,
         "it is of version 2, and this program reads up to 1"},
        {header + R"({"kind":"word","us":0,"took":9,"sent":"A5C","received":"0000"})" + "\n", 2,
         R"("sent" is no word of 16 bits)"},
        {header + R"({"kind":"word","us":-1,"took":9,"sent":"A5C3","received":"0000"})" + "\n", 2,
         R"("us" is out of range)"},
        {header + R"({"kind":"command","us":0,"took":9,"frame":"00 05","answer":null})" + "\n", 2,
         R"("frame" is no frame of 8 bytes)"},
        {header + R"({"kind":"nothing","us":0})" + "\n", 2, R"(there is no kind "nothing")"},
        {std::regex_replace(header, std::regex("3,4,12"), "3,4,18"), 1,
         R"("pins" has no pins of the connector)"},
    };
    for (const auto& [content, line, reason] : rows) {
        const std::string file = write("bad.jsonl", content);
        expectRun("replay " + file + " --bench loopback",
                  fmt::format("The file \"{}\" is damaged in line {}: {}.\n", file, line, reason),
                  1);
    }
}

TEST_F(Journal, ThatCannotBeWrittenIsReported) {
    const Outcome full =
        shell("trap '' XFSZ; ulimit -f 1; " BITLUX_PROGRAM " send --bench loopback --journal " +
              path("full.jsonl") + " 1 2 3 4 5 6 7 8 2>&1");
    EXPECT_EQ(full.output, "01 01\n02 02\n03 03\n04 04\nThe file \"" + path("full.jsonl") +
                               "\" cannot be written: File too large. The journal ends there.\n"
                               "05 05\n06 06\n07 07\n08 08\n");
    EXPECT_EQ(full.code, 1);
    expectRun("replay " + path("full.jsonl") + " --bench loopback", "4 words, 0 differences\n");
    expectRun("send --bench loopback --journal " + path("none/j.jsonl") + " A5",
              "The file \"" + path("none/j.jsonl") +
                  "\" cannot be written: No such file or directory.\n",
              1);
    const std::string file = write("j.jsonl", header);
    expectRun("replay " + file + " --bench loopback --journal " + file,
              "--journal: this is the journal that is replayed.\n", 1);
    EXPECT_EQ(contentOf(file), header);
}

TEST_F(Journal, EndsAtAWordThatTheBusCannotCarry) {
    bitlux("send --bench loopback --bits 13 --journal " + path("j.jsonl") + " 1A5C");
    expectRun("replay " + path("j.jsonl") + " --bench loopback --bus dongle",
              path("j.jsonl") + ", line 1: The dongle carries words of 8, 16, 24, 32 or 40 bits, "
                                "not of 13.\n",
              1);
}

/// The commands of the page in a folder of their own, with what it says that they print.
TEST_F(Journal, ExamplesOfThePageAreTrue) {
    const std::string page = contentOf(BITLUX_SOURCE "/docs/test-rig.md");
    std::string section = page.substr(page.find("## Journal"));
    section = section.substr(0, section.find("\n## "));
    const std::regex command(R"(\n    \$ ([^\n]*)((?:\n    (?! *\$ )[^\n]*)*))");
    std::size_t count = 0;
    for (std::sregex_iterator next(section.begin(), section.end(), command), end; next != end;
         ++next, ++count) {
        const std::string line = fmt::format(
            "cd {} && PATH={}:$PATH && {{ {}; }} 2>&1", path(""),
            std::filesystem::path(BITLUX_PROGRAM).parent_path().string(), (*next)[1].str());
        const std::string wanted =
            std::regex_replace((*next)[2].str(), std::regex("(^|\n)    "), "$1");
        EXPECT_EQ("\n" + shell(line).output, wanted + "\n") << (*next)[1];
    }
    EXPECT_GE(count, 4U);
}

} // namespace
} // namespace bitlux::test
