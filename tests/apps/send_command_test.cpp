#include "bitlux_program.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(SendCommand, PrintsALineAWord) {
    struct Case {
        const char* arguments;
        const char* output;
    };
    for (const Case& c :
         {Case{"--bench loopback --bits 16 A5C3", "A5C3 A5C3\n"},
          Case{"--bench loopback A5", "A5 A5\n"},
          Case{"--bench loopback --bits 10 3f", "03F 03F\n"},
          Case{"--bench loopback --bits 16 0000A5C3", "A5C3 A5C3\n"},
          Case{"--bench none --bits 12 0", "000 FFF\n"},
          Case{"--bench none --bits 12 --do low 0", "000 000\n"},
          Case{"--bench stuck-low --bits 9 1", "001 000\n"},
          Case{"--bench stuck-high --bits 1 0", "0 1\n"},
          Case{"--bench echo --bits 16 1 2 3", "0001 0000\n0002 0001\n0003 0002\n"},
          Case{"--bench scripted --replies 1234,ff --bits 16 --order lsb --type 5 0 0 0",
               "0000 1234\n0000 00FF\n0000 00FF\n"},
          Case{"--bench zt72518s --bus dongle --bits 16 --type 2 --turn-on 'vdd ov' "
               "--turn-on 'CAN Low/Tx Dom' 2580 E500 E100 BF00",
               "2580 92CA\nE500 9204\nE100 1004\nBF00 0000\n"}}) {
        const Outcome outcome = bitlux(std::string("send ") + c.arguments);
        EXPECT_EQ(outcome.output, c.output) << c.arguments;
        EXPECT_EQ(outcome.code, 0) << c.arguments;
    }
}

TEST(SendCommand, AnswersAsTheWireDoesForAllShapes) {
    // Types 1 to 4 sample after the data, so a loop answers with the word itself. Types 5 to 8
    // sample before the data of their bit is out, so the answer comes one bit late.
    for (int type = 1; type <= 8; ++type)
        for (const char* order : {"msb", "lsb"}) {
            const Outcome outcome =
                bitlux(fmt::format("send --bench loopback --bits 16 --type {} --order {} --cs high "
                                   "--pins 9,5,3,13 A5C3",
                                   type, order));
            const char* expected = type <= 4                     ? "A5C3 A5C3\n"
                                   : std::string(order) == "msb" ? "A5C3 52E1\n"
                                                                 : "A5C3 4B86\n";
            EXPECT_EQ(outcome.output, expected) << type << order;
        }
}

TEST(SendCommand, SendsThroughTheDongle) {
    struct Case {
        const char* arguments;
        const char* output;
        int code;
    };
    constexpr const char* checkTheCable = "Check the USB cable and restart program\n";
    const std::string oneGoodWord = fmt::format("1234 0000\n{}", checkTheCable);
    for (const Case& c :
         {Case{"--bench loopback --bits 32 --trace - DEADBEEF",
               "0 OUT 20 70 00 DE AD BE EF 00\n2032000 IN 20 70 00 DE AD BE EF 00\n"
               "DEADBEEF DEADBEEF\n",
               0},
          Case{"--bench stuck-high --bits 8 --cs high --di low --do low --type 3 --order lsb "
               "--trace - 0F",
               "0 OUT 08 4A 00 F0 00 00 00 00\n2008000 IN 08 4A 00 00 00 00 00 00\n0F 00\n", 0},
          Case{"--bench loopback --clock 62.5k --trace - A5",
               "0 OUT 08 F0 00 A5 00 00 00 00\n2128000 IN 08 F0 00 A5 00 00 00 00\nA5 A5\n", 0},
          Case{"--bench echo --bits 16 --fault late:700 1234 5678", "1234 0000\n5678 1234\n", 0},
          Case{"--bench echo --bits 16 --fault gone@2 1234 5678 9ABC", oneGoodWord.c_str(), 1},
          Case{"--bench echo --bits 16 --fault short:5/0 --fault stalled@2 1234 5678",
               oneGoodWord.c_str(), 1},
          Case{"--bench echo --bits 16 --fault babbling@2 1 2 3 4",
               "0001 0000\n0002 0001\nCheck the USB cable and restart program\n", 1},
          Case{"--bench loopback --bits 9 1FF",
               "The dongle carries words of 8, 16, 24, 32 or 40 bits, not of 9.\n", 1},
          Case{"--bench loopback --bits 48 1",
               "The dongle carries words of 8, 16, 24, 32 or 40 bits, not of 48.\n", 1}}) {
        const Outcome outcome = bitlux(fmt::format("send --bus dongle {}", c.arguments));
        EXPECT_EQ(outcome.output, c.output) << c.arguments;
        EXPECT_EQ(outcome.code, c.code) << c.arguments;
    }
    EXPECT_EQ(bitlux("send --bench loopback --bus port --trace - --bits 1 1").output.substr(0, 10),
              "0 W 378 00");
}

TEST(SendCommand, TracesTheWordsAlone) {
    const Outcome outcome = bitlux("send --bench loopback --bits 2 --type 7 --trace - 2");
    EXPECT_EQ(outcome.output, "0 W 378 04\n"
                              "1000 W 378 00\n"
                              "2000 R 379 00\n"
                              "3000 W 378 06\n"
                              "4000 W 378 02\n"
                              "5000 R 379 20\n"
                              "6000 W 378 04\n"
                              "7000 W 378 00\n"
                              "8000 W 378 01\n"
                              "9000 W 378 05\n"
                              "2 1\n");
    const TemporaryFolder folder;
    bitlux("send --bench loopback --bits 1 --type 6 --trace " + folder.path("t") + " 1 1");
    EXPECT_EQ(contentOf(folder.path("t")), "0 W 378 00\n1000 R 379 00\n2000 W 378 06\n"
                                           "3000 W 378 02\n4000 W 378 01\n"
                                           "5000 W 378 00\n6000 R 379 00\n7000 W 378 06\n"
                                           "8000 W 378 02\n9000 W 378 01\n");
}

TEST(SendCommand, SavesTheLog) {
    const TemporaryFolder folder;
    EXPECT_EQ(bitlux("send --bench loopback --log - A5").output,
              "A5 A5\nSPI Word Sent:\n  A5\nSPI Word Received:\n  A5\n \n");
    bitlux("send --bench loopback --log " + folder.path("log.txt") + " A5");
    EXPECT_EQ(contentOf(folder.path("log.txt")),
              "SPI Word Sent:\r\n  A5\r\nSPI Word Received:\r\n  A5\r\n \r\n");
}

TEST(SendCommand, SavesTheWaveform) {
    const TemporaryFolder folder;
    const std::string files =
        fmt::format("--vcd {} --sr {}", folder.path("w.vcd"), folder.path("w.sr"));
    EXPECT_EQ(bitlux("send --bench loopback --bits 1 --trace - " + files + " 1").output,
              "0 W 378 00\n1000 W 378 02\n2000 W 378 06\n3000 R 379 20\n4000 W 378 00\n"
              "5000 W 378 01\n1 1\n");
    const std::string vcd = contentOf(folder.path("w.vcd"));
    EXPECT_EQ(vcd.substr(vcd.find("#1000")),
              "#1000\n0!\n#2000\n1#\n#3000\n1\"\n1$\n#5000\n0\"\n0#\n#6000\n1!\n#7000\n");
    EXPECT_TRUE(contentOf(folder.path("w.sr")).starts_with("PK"));
    EXPECT_EQ(bitlux("send --bench loopback --vcd /missing/w.vcd 1").output,
              "01 01\nThe file \"/missing/w.vcd\" cannot be written: No such file or directory.\n");
}

TEST(SendCommand, EndsWithOneAtAMessageBox) {
    struct Case {
        const char* arguments;
        const char* output;
    };
    for (const Case& c :
         {Case{"--bench loopback 100", "The word is too long!\n"},
          Case{"--bench loopback 12 xy 34", "12 12\nNot a valid hex number!\n"},
          Case{"--bench loopback --bits 161 1", "The maximum number of SPI bits is 160\n"},
          Case{"--bench loopback --bits 99999 1", "Overflow\n"},
          Case{"--bench loopback --bits 0 ''", "Nothing to send!\n"},
          Case{"--bench loopback --pins 2,2,4,12 1",
               "Pin Conflict!  Please select a different pin configuration.\n"},
          Case{"--bench loopback --trace /missing/trace 1",
               "The file \"/missing/trace\" cannot be written: No such file or directory.\n"},
          Case{"--bench loopback --log /missing/log 1",
               "01 01\nThe file \"/missing/log\" cannot be written: No such file or directory.\n"},
          Case{"--bench loopback --trace /dev/full 1",
               "The file \"/dev/full\" cannot be written: No space left on device.\n"}}) {
        const Outcome outcome = bitlux(std::string("send ") + c.arguments);
        EXPECT_EQ(outcome.output, c.output) << c.arguments;
        EXPECT_EQ(outcome.code, 1) << c.arguments;
    }
}

TEST(SendCommand, EndsWithTwoAtABadUsage) {
    for (const char* arguments : {"",
                                  "send",
                                  "send --bench nothing A5",
                                  "send --bench loopback --type 9 A5",
                                  "send --bench loopback --type 0 A5",
                                  "send --bench loopback --bits many A5",
                                  "send --bench loopback --order up A5",
                                  "send --bench loopback --pins 2,3,4 A5",
                                  "send --bench loopback --pins 2,3,4,5 A5",
                                  "send --bench loopback --pins 12,3,4,13 A5",
                                  "send --bench scripted A5",
                                  "send --bench loopback --replies 12 A5",
                                  "send --bench scripted --replies 12,zz A5",
                                  "send --bench loopback --wrong A5",
                                  "send --bench loopback --bus usb A5",
                                  "send --bench loopback --clock 2M A5",
                                  "send --bench loopback --fault gone A5",
                                  "send --bench loopback --bus dongle --fault lost A5",
                                  "receive A5",
                                  "doctor A5",
                                  "doctor --udev --wrong"})
        EXPECT_EQ(bitlux(arguments).code, 2) << arguments;
    EXPECT_EQ(bitlux("--help").code, 0);
    EXPECT_EQ(bitlux("send --help").code, 0);
    EXPECT_EQ(bitlux("doctor --help").code, 0);
}

} // namespace
} // namespace bitlux::test
