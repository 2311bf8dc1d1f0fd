#include "bitlux_program.h"
#include "board_file.h"
#include "support/temporary_folder.h"

#include <fstream>
#include <iterator>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

class ExpectedRun : public testing::Test {
protected:
    Outcome run(const std::string& expected, const std::string& options) {
        folder_.write("expect.toml", expected);
        return bitlux("run " + file_ + " --bench echo --expect " + folder_.path() +
                      "/expect.toml " + options);
    }
    [[nodiscard]] std::string path(const std::string& name) const {
        return folder_.path() + "/" + name;
    }

private:
    TemporaryFolder folder_;
    std::string file_ = folder_.write("board.spi", boardFile);
};

// "read id" is A5; the echo answers with the word before, 00 at first.
TEST_F(ExpectedRun, ComparesQuickCommandsByNameAndLinesByNumber) {
    const Outcome good =
        run("[quick_commands]\n\"read id\" = \"XX\"\n[lines]\n4 = \"A5\"\n", "--batch sweep");
    EXPECT_EQ(good.output, "A5 00\nA5 A5\n");
    EXPECT_EQ(good.code, 0);
    const Outcome bad = run("[quick_commands]\n\"read id\" = \"A5\"\n", "--batch sweep --times 2");
    EXPECT_EQ(bad.output, "A5 00\n"
                          "Word 1, line 1, \"read id\": 00 is not A5\n"
                          "  00000000  answer\n"
                          "  10100101  expected\n"
                          "  ^ ^  ^ ^\n"
                          "A5 A5\nA5 A5\nA5 A5\n");
    EXPECT_EQ(bad.code, 3);
    const Outcome stopped = run("[quick_commands]\n\"read id\" = \"A5\"\n",
                                "--batch sweep --times 2 --stop 2>/dev/null | wc -l");
    EXPECT_EQ(stopped.output, "1\n");
}

TEST_F(ExpectedRun, ReportsEachLineAsATestCase) {
    const std::string report = path("report.xml");
    EXPECT_EQ(run("[lines]\n1 = \"0b1XXXXXXX\"\n", "--batch sweep --junit " + report).code, 3);
    // Read by an independent parser.
    const std::string reader =
        "import sys, xml.etree.ElementTree as tree\n"
        "suite = tree.parse(sys.argv[1]).getroot()[0]\n"
        "print(suite.attrib['name'], suite.attrib['tests'], suite.attrib['failures'])\n"
        "for case in suite:\n"
        "    print(case.attrib['classname'], '|', case.attrib['name'], '|',\n"
        "          float(case.attrib['time']) > 0.004, [f.attrib['message'] for f in case])\n";
    const std::string script = path("read.py");
    std::ofstream(script) << reader;
    FILE* pipe = ::popen(("/usr/bin/python3 " + script + " " + report).c_str(), "r");
    std::string read(2000, '\0');
    read.resize(std::fread(read.data(), 1, read.size(), pipe));
    ::pclose(pipe);
    EXPECT_EQ(read, "sweep 4 1\n"
                    "sweep.pass 1 | line 1: read id | False ['00 is not 0b1XXXXXXX']\n"
                    "sweep.pass 1 | line 2: * Wait 5 ms | True []\n"
                    "sweep.pass 1 | line 3: * Set HIGH: EN | False []\n"
                    "sweep.pass 1 | line 4: read id | False []\n");
}

TEST_F(ExpectedRun, ReportsAFaultyFileBeforeAWordIsSent) {
    const std::vector<std::tuple<std::string, std::string>> rows{
        {"[quick_commands]\n\"reed id\" = \"XX\"\n",
         ": There is no Quick Command among the lines \"reed id\". Did you mean read id?\n"},
        {"[lines]\n9 = \"XX\"\n", ": there is no line 9, the last one is 4\n"},
        {"[lines]\nfirst = \"XX\"\n",
         ":2:1: this is no number of a line. Lines are counted from 1.\n"},
        {"[lines]\n1 = \"XXX\"\n", ":2:5: The pattern \"XXX\" is for 12 bits, and the word has 8. "
                                   "Correct the pattern.\n"},
        {"[words]\n", ":1:2: there is no key `words` here. Remove it.\n"},
    };
    for (const auto& [text, message] : rows) {
        const Outcome outcome = run(text, "--batch sweep");
        EXPECT_EQ(outcome.output, path("expect.toml") + message);
        EXPECT_EQ(outcome.code, 1);
    }
}

} // namespace
} // namespace bitlux::test
