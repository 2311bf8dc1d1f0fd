#include "bitlux_program.h"
#include "dialogue.h"
#include "support/test_bench.h"

#include <filesystem>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(SendCommand, PrintsALineAWord) {
    for (const auto& [arguments, output] : Rows<const char*, const char*>{
             {"loopback A5", "A5 A5\n"},
             {"loopback --bits 10 3f", "03F 03F\n"},
             {"none --bits 12 --do low 0", "000 000\n"},
             {"loopback --bits 16 --type 5 --order lsb --cs high --pins 9,5,3,13 A5C3",
              "A5C3 4B86\n"},
             {"scripted --replies 1234,ff --bits 16 --order lsb --type 5 0 0 0",
              "0000 1234\n0000 00FF\n0000 00FF\n"},
             {"zt72518s --bus dongle --bits 16 --type 2 --turn-on 'vdd ov' "
              "--turn-on 'CAN Low/Tx Dom' 2580 E500 E100 BF00",
              "2580 92CA\nE500 9204\nE100 1004\nBF00 0000\n"},
             {"echo --bits 16 --repeat 2 0xA5 a5_c3",
              "00A5 0000\nA5C3 00A5\n00A5 A5C3\nA5C3 00A5\n"},
             {"loopback --bits 2 --type 7 --trace - 2", // the words alone
              "0 W 378 04\n1000 W 378 00\n2000 R 379 00\n3000 W 378 06\n4000 W 378 02\n"
              "5000 R 379 20\n6000 W 378 04\n7000 W 378 00\n8000 W 378 01\n9000 W 378 05\n"
              "2 1\n"}})
        expectRun(std::string("send --bench ") + arguments, output);
}

TEST(SendCommand, SendsThroughTheDongle) {
    const std::string cable = "Check the USB cable and restart program\n";
    const std::string lengths = "The dongle carries words of 8, 16, 24, 32 or 40 bits, not of ";
    for (const auto& [arguments, output, code] : Rows<const char*, std::string, int>{
             {"loopback --bits 32 --trace - DEADBEEF",
              "0 OUT 20 70 00 DE AD BE EF 00\n2032000 IN 20 70 00 DE AD BE EF 00\n"
              "DEADBEEF DEADBEEF\n",
              0},
             {"stuck-high --bits 8 --cs high --di low --do low --type 3 --order lsb --trace - 0F",
              "0 OUT 08 4A 00 F0 00 00 00 00\n2008000 IN 08 4A 00 00 00 00 00 00\n0F 00\n", 0},
             {"loopback --clock 62.5k --trace - A5",
              "0 OUT 08 F0 00 A5 00 00 00 00\n2128000 IN 08 F0 00 A5 00 00 00 00\nA5 A5\n", 0},
             {"echo --bits 16 --fault late:700 1234 5678", "1234 0000\n5678 1234\n", 0},
             {"echo --bits 16 --fault gone@2 1234 5678 9ABC",
              "1234 0000\nWord 2, \"5678\": " + cable, 1},
             {"echo --bits 16 --fault short:5/0 --fault stalled@2 1234 5678",
              "1234 0000\nWord 2, \"5678\": " + cable, 1},
             {"echo --bits 16 --fault silent@2 --timeout 0.6 1234 5678 9ABC",
              "1234 0000\nWord 2, \"5678\": No answer came in 0.6 s.\n", 1},
             {"echo --bits 16 --fault babbling@2 1 2 3 4",
              "0001 0000\n0002 0001\nWord 3, \"3\": " + cable, 1},
             {"loopback --bits 9 1FF", lengths + "9.\n", 1},
             {"loopback --bits 48 1", lengths + "48.\n", 1}})
        expectRun(std::string("send --bus dongle --bench ") + arguments, output, code);
    EXPECT_EQ(bitlux("send --bench loopback --bus port --trace - --bits 1 1").output.substr(0, 10),
              "0 W 378 00");
}

TEST(SendCommand, FindsWhatCannotBeWrittenBeforeAnythingIsSent) {
    const TemporaryFolder folder;
    folder.write("folder/x", "");
    for (const char* option : {"--vcd /missing/x", "--sr /missing/x", "--log /missing/x",
                               "--trace /missing/x", "--vcd {0}/folder", "--log /dev/null"}) {
        const Outcome outcome = bitlux(fmt::format(
            "send --bench loopback {} 1", fmt::format(fmt::runtime(option), folder.path())));
        EXPECT_EQ(outcome.output.substr(0, 10), "The file \"") << option;
        EXPECT_EQ(outcome.output.find("01 01"), std::string::npos) << option;
        EXPECT_EQ(outcome.code, 1) << option;
    }
}

TEST(SendCommand, WritesEachOutputEvenIfAnotherFails) {
    const TemporaryFolder folder;
    folder.write("gone/x", "");
    Dialogue send(fmt::format("send --bench loopback --vcd {0}/gone/v --sr {0}/s --log - "
                              "--trace {0}/t -",
                              folder.path()));
    ASSERT_TRUE(send.say("A5"));
    EXPECT_EQ(send.line(), "A5 A5\n"); // so all outputs are open
    std::filesystem::remove_all(folder.path("gone"));
    EXPECT_EQ(send.end(), 1);
    EXPECT_EQ(send.rest(), fmt::format("The file \"{}/gone/v\" cannot be written: No such file or "
                                       "directory.\nSPI Word Sent:\n  A5\nSPI Word Received:\n"
                                       "  A5\n \n",
                                       folder.path()));
    EXPECT_TRUE(contentOf(folder.path("s")).starts_with("PK"));
    EXPECT_TRUE(contentOf(folder.path("t")).starts_with("0 W 378 00\n"));
}

TEST(SendCommand, EndsOrderlyAtASignal) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
        const TemporaryFolder folder;
        Dialogue send(fmt::format("send --bench echo --log {0}/log --vcd {0}/vcd --json - 12",
                                  folder.path()));
        ASSERT_TRUE(send.say("A5"));
        EXPECT_NE(send.line().find(R"("sent":"A5","received":"00")"), std::string::npos);
        send.signal(number); // while it waits for the next line
        const std::string summary = send.line();
        EXPECT_EQ(send.end(), 128 + number);
        EXPECT_TRUE(summary.ends_with(fmt::format("\"exit_code\":{}}}\n", 128 + number)))
            << summary;
        EXPECT_EQ(contentOf(folder.path("log")),
                  "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  00\r\n \r\n");
        EXPECT_NE(contentOf(folder.path("vcd")).find("$dumpvars"), std::string::npos);
    }
    Dialogue endless("send --bench loopback --repeat 2000000000 A5");
    EXPECT_EQ(endless.line(), "A5 A5\n");
    endless.signal(SIGTERM);
    EXPECT_EQ(endless.end(), 143);
    EXPECT_EQ(endless.rest().size() % 6, 0U) << "whole lines";
}

TEST(SendCommand, TakesWordsFromItsInput) {
    const TemporaryFolder folder;
    expectRun("send --bench echo 1 - 2 <" + folder.write("in", "3 0x4\n\n5"),
              "01 00\n03 01\n04 03\n05 04\n02 05\n");
    expectRun("send --bench echo - <" + folder.write("in", "3\n 4 100 5\n"),
              "03 00\n04 03\nWord 3, \"100\", line 2 of the standard input: This has 9 bits, and a "
              "word here has 8.\n",
              1);
}

TEST(SendCommand, TakesTheSettingsOfAFile) {
    const TemporaryFolder folder;
    // Words of 16 bits, the least significant first, type 5, the dongle chosen.
    const std::string file = folder.write(
        "x.spi", "\"Bitlux Configuration File (Version 3.x.x)\",\"Verification Line\"\r\n"
                 "\"[SPIWordLength]\",\"16\"\r\n\"[BinaryMode]\",#TRUE#\r\n"
                 "\"[SerialMode]\",1\r\n\"[MSBFirst]\",#FALSE#\r\n\"[SPIType]\",5\r\n"
                 "\"[EnableLog]\",0\r\n\"[ApplyNow]\",\"\"\r\n");
    const auto first = [&](const std::string& arguments) {
        const std::string output =
            bitlux(
                fmt::format("send --config {} --bench loopback --trace - {} 123", file, arguments))
                .output;
        return output.substr(0, output.find('\n'));
    };
    EXPECT_EQ(first("--bus dongle"), "0 OUT 10 74 00 C4 80 00 00 00");
    EXPECT_EQ(first("--bus dongle --bits 24 --order msb --type 1"),
              "0 OUT 18 70 00 00 01 23 00 00");
    EXPECT_EQ(first("--bus port"), "0 W 378 00");
    EXPECT_EQ(bitlux(fmt::format("send --config {} --bench loopback --bits 8 --log - 1", file))
                  .output.substr(6),
              "SPI Word Sent:\n  01\nSPI Word Received:\n  02\n \n"); // a bit late
}

TEST(SendCommand, EndsWithOneAtAMessage) {
    for (const auto& [arguments, output] : Rows<const char*, const char*>{
             {"loopback --pins 2,2,4,12 1",
              "Pin Conflict!  Please select a different pin configuration.\n"},
             {"none --config /missing/x.spi 1", "There is no file \"/missing/x.spi\".\n"},
             {"loopback --turn-on x 1", "This device has no switches\n"},
             {"loopback --trace /dev/full --log - 1 2",
              "The file \"/dev/full\" cannot be written: No space left on device.\n"
              "01 01\n02 02\nSPI Word Sent:\n  01\nSPI Word Received:\n  01\n \n"
              "SPI Word Sent:\n  02\nSPI Word Received:\n  02\n \n"}})
        expectRun(std::string("send --bench ") + arguments, output, 1);
}

TEST(SendCommand, EndsWithTwoAtABadUsage) {
    std::vector<std::string> wrong{"",
                                   "send",
                                   "send --bench nothing A5",
                                   "send --bench scripted A5",
                                   "send --bench scripted --replies 12,zz A5",
                                   "send --bus dongle --port lpt1 A5",
                                   "send --bus port --serial 1 A5",
                                   "send --port lpt4 A5",
                                   "send --port 0 A5",
                                   "send --bench loopback --repeat 2 -",
                                   "send --bench loopback A5 ''",
                                   "send --bench loopback A5 _5",
                                   "send --bench loopback A5 5_",
                                   "send --bench loopback A5 A__5",
                                   "send --bench loopback A5 0x",
                                   "doctor A5",
                                   "doctor --udev --wrong"};
    for (const char* option :
         {"--type 9",         "--bits 0",     "--bits -3",    "--bits 161",
          "--bits many",      "--order up",   "--pins 2,3,4", "--pins 2,3,4,5",
          "--pins 12,3,4,13", "--replies 12", "--wrong",      "--bus usb",
          "--clock 2M",       "--clock 2",    "--fault gone", "--bus dongle --fault lost",
          "--port lpt1",      "--serial 1",   "--vcd -",      "--json --log -",
          "--repeat 0",       "--timeout 0"})
        wrong.push_back(fmt::format("send --bench loopback {} A5", option));
    for (const std::string& arguments : wrong)
        EXPECT_EQ(bitlux(arguments).code, 2) << arguments;
    for (const auto& [arguments, output] : Rows<const char*, const char*>{
             {"sned A5", "There is no command \"sned\"; near: send.\n"},
             {"send --bench loopback 12 100",
              "Word 2, \"100\": This has 9 bits, and a word here has 8.\n"},
             {"send --bench loopback 12 xy",
              "Word 2, \"xy\": This is no hexadecimal number.\nRun with --help for more "
              "information.\n"}})
        expectRun(arguments, output, 2);
}

TEST(Help, EndsWithExamplesAndExitCodes) {
    for (const char* command : {"", "send", "run", "show", "list", "doctor"}) {
        const Outcome help = bitlux(fmt::format("{} --help", command));
        EXPECT_EQ(help.code, 0) << command;
        const std::size_t examples = help.output.find("\nExamples:\n  $ bitlux ");
        ASSERT_NE(examples, std::string::npos) << command;
        EXPECT_NE(help.output.find("\nExit codes:\n  0  ", examples), std::string::npos) << command;
    }
}

} // namespace
} // namespace bitlux::test
