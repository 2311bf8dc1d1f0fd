#include "bitlux_program.h"
#include "board_file.h"
#include "support/chip_folder.h"
#include "support/test_bench.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(ShowCommand, PrintsWhatAFileHolds) {
    const TemporaryFolder folder;
    folder.write("board.spi", boardFile);
    folder.write("dongle.spi", dongleFile());
    expectRun("show " + folder.path("board.spi"),
              "Settings\n"
              "  Part          B\xC3\xBCro\n"
              "  Word          8 bits, MSB first\n"
              "  Bus           the parallel port\n"
              "  SPI type      1\n"
              "  Chip select   low when asserted\n"
              "  Data in       a one is high\n"
              "  Data out      a one is high\n"
              "  Dongle clock  1 MHz\n"
              "  Port address  the first that is found\n"
              "  Port pins     CS 2, DI 3, CLK 4, DO 12\n"
              "  Data pins     EN on 5\n"
              "  Control pins  none\n"
              "  Dongle pins   none\n"
              "  Display       hexadecimal\n"
              "  Session Log   on, 5 words of continuous sending\n"
              "  Part tabs     none\n"
              "\nQuick Commands: 2\n"
              "  A5  read id\n"
              "  0F  gr\xC3\xBCn \"a\\b\" ?[2J\n"
              "\nCommands To Send: 5\n"
              "     1  read id\n"
              "     2  * Wait 2 hrs\n"
              "     3  * Set HIGH: EN\n"
              "     4  * Set LOW: DIS\n"
              "     5  gr\xC3\xBCn \"a\\b\" ?[2J\n"
              "\nBatches: 2\n"
              "  sweep\n"
              "     1  read id\n"
              "     2  * Wait 5 ms\n"
              "     3  * Set HIGH: EN\n"
              "     4  read id\n"
              "  hold on\n"
              "     1  read id\n"
              "     2  * Pause\n"
              "     3  read id\n");
    expectRun("show --batches " + folder.path("board.spi"), "sweep\nhold on\n");
    EXPECT_NE(bitlux("show " + folder.path("dongle.spi"))
                  .output.find("  Bus           the dongle, else the parallel port\n"),
              std::string::npos);
}

TEST(ShowCommand, MarksLinesThatHaveNoWord) {
    const TemporaryFolder folder;
    const std::string output =
        bitlux("show " + folder.write("lost.spi",
                                      "\"Bitlux Configuration File (Version 3.x.x)\",0\r\n"
                                      "\"[ApplyNow]\",0\r\n"
                                      "\"[QuickCommand]\",\"0 0 0 0 0 0 1 1 Read\"\r\n"
                                      "\"[CommandToSend]\",\"Wake\"\r\n"
                                      "\"[CommandToSend]\",\"* Pause\"\r\n"
                                      "\"[BatchItem]\",\"1 Night\"\r\n"
                                      "\"[BatchItem]\",\"1 Read\"\r\n"
                                      "\"[BatchItem]\",\"1 read\"\r\n"))
            .output;
    EXPECT_EQ(output.substr(output.find("Commands To")), "Commands To Send: 2\n"
                                                         "     1  Wake  (no word)\n"
                                                         "     2  * Pause\n"
                                                         "\nBatches: 1\n"
                                                         "  Night\n"
                                                         "     1  Read\n"
                                                         "     2  read  (no word)\n");
}

TEST(ShowCommand, EndsWithOneAtADamagedFile) {
    const TemporaryFolder folder;
    const std::string file =
        folder.write("damaged.spi", boardFile + "\"[QuickCommand]\",\"1 0\"\r\n");
    expectRun("show " + file,
              fmt::format("The file \"{}\" is damaged in line 26: the Quick Command "
                          "\"1 0\" has no 8 bits and a name.\n",
                          file),
              1);
    expectRun("show " + folder.write("empty.spi", ""), "Invalid File Format.\n", 1);
}

TEST(ShowCommand, GoesOnWithoutAChipThatIsMissing) {
    const ChipFolder chips;
    const TemporaryFolder folder;
    const std::string file = folder.write("chips.spi", boardFile + "\"[UserChip]\",\"meter\"\r\n");
    const Outcome outcome = bitlux("show " + file);
    EXPECT_EQ(
        outcome.output.find("The configuration has tabs of chips that have no file: meter.\n"), 0U);
    EXPECT_NE(outcome.output.find("  Chips         meter\n"), std::string::npos);
    EXPECT_EQ(outcome.code, 0);
    const Outcome run = bitlux("run --bench echo --batch \"sweep\" " + file);
    EXPECT_NE(run.output.find("A5 00\nA5 A5\n"), std::string::npos) << run.output;
    EXPECT_EQ(run.code, 0);
}

TEST(ListCommand, PrintsTheDevices) {
    const std::string names = bitlux("list --names").output;
    EXPECT_EQ(names.substr(0, 14), "none\nloopback\n");
    const std::string lines = bitlux("list").output;
    const std::string devices = lines.substr(0, lines.find("\n\nPlugged in:"));
    EXPECT_EQ(std::count(devices.begin(), devices.end(), '\n') + 1,
              std::count(names.begin(), names.end(), '\n'));
    EXPECT_EQ(lines.find("  \n"), std::string::npos) << "a device without a description";
}

} // namespace
} // namespace bitlux::test
