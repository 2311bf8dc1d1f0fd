#include "bitlux_program.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

constexpr std::string_view driverChip = R"(
chip = { title = "Lamp driver", description = "With a blink" }
register = [
  { title = "Lämp", address = 3, reset = 6, page = "Light", bits = [
      "-", "L0", "L1", "a caption that is long, 0", "a caption that is long, 1", "{5..30}", "Blink",
    ], field = [
      { title = "Brightness", bits = "2:1", texts = ["off", "half", "full"], codes = [0, 1, 3] },
      { title = "Blinks", bits = 31, note = "twice a second" },
    ], view = [
      { title = "Read" },
      { title = "Faults", reads = "flags", bits = ["open", "short"] },
    ], note = """A sentence that is longer than a line of the terminal has room for, so that it \
goes on in the next.""" },
  { title = "Clear", address = 4, page = "Light", access = "write only", width = 9 },
]
command = [{ title = "Reset", word = 0xFF, note = "Ends all." }]
[word]
bits = 40
type = 2
address = "37:33"
data = "31:0"
write = 0x4000000000
flags = 0x100000000
check = { kind = "odd parity", over = "38:33", place = 39 }
answer = "next word"
)";

TEST(ChipCommand, ShowsTheRegistersOfAChip) {
    const TemporaryFolder folder;
    expectRun("chip show " + folder.write("driver.toml", driverChip), R"(driver: Lamp driver
With a blink
Words of 40 bits, SPI type 2, write 4000000000, read 0000000000, flags
0100000000, address [37:33], data [31:0], parity [39], answered with the next
word

Light
  03  Lämp   rw            reset 00000006
        A sentence that is longer than a line of the terminal has room for, so
        that it goes on in the next.
        [2:1]   Brightness
                  0  off
                  1  half
                  3  full
        [31]    Blinks
                  twice a second
        [4] a caption that is long, 1, [3] a caption that is long, 0
        Faults, word 8700000000
        [1] short, [0] open
  04  Clear  w             reset 000

Commands
  00000000FF  Reset
        Ends all.
)");
}

/// The first block of the page that begins with such a line, from `start` on.
std::string blockOf(const std::string& page, const std::string& begin, std::size_t start = 0) {
    const std::size_t at = page.find(begin, start) + begin.size();
    return page.substr(at, page.find("```\n", at) - at);
}

TEST(ChipCommand, ShowsTheExampleOfThePage) {
    const TemporaryFolder folder;
    const std::string page = contentOf(BITLUX_SOURCE "/docs/chip-files.md");
    const std::string file = folder.write("lamp.toml", blockOf(page, "```toml\n"));
    expectRun("chip check " + file, file + ": lamp, 2 registers, 1 commands, no problems\n");
    expectRun("chip show " + file, blockOf(page, "```\n", page.find("prints this chip as:")));
    for (const char* name : {"adxl345", "mcp23s17"}) {
        const std::string map =
            bitlux(fmt::format("chip show " BITLUX_SOURCE "/examples/chips/{}.toml", name)).output;
        for (std::size_t at = 0, end = 0; (end = map.find('\n', at)) != std::string::npos;
             at = end + 1)
            EXPECT_LE(end - at, 80U) << map.substr(at, end - at);
    }
}

TEST(ChipCommand, ChecksAFile) {
    const TemporaryFolder folder;
    const std::string bad =
        folder.write("bad.toml", "[chip]\ntitle='A'\nmodel='m'\n[word]\nbits=8\n"
                                 "[[command]]\ntitle='C'\nword=1\n");
    expectRun("chip check " + bad,
              bad + ":1:1: only chips of the program have a `model`. Remove it.\n", 1);
    const std::string none = folder.path("none.toml");
    expectRun("chip show " + none,
              none + ": there is no such file. Check its name and that you may read it.\n", 1);
}

TEST(ChipCommand, ListsTheChips) {
    const TemporaryFolder folder;
    const EnvironmentVariable home("XDG_DATA_HOME", folder.path().c_str());
    const EnvironmentVariable machine("XDG_DATA_DIRS", folder.path("none").c_str());
    folder.write("bitlux-forge/chips/lamp.toml", "[chip]\ntitle='A lamp'\n[word]\nbits=8\n"
                                                 "[[command]]\ntitle='C'\nword=1\n");
    const std::string broken = folder.write("bitlux-forge/chips/broken.toml", "=");
    const std::string blank = folder.write("bitlux-forge/chips/a b.toml", "");
    EXPECT_EQ(
        bitlux("chip list").output,
        fmt::format("broken   user     damaged, see: bitlux chip check {}\n"
                    "lamp     user     A lamp\n"
                    "zt72361  program  ZT72361: CAN system-basis chip: high side, wake-up inputs, "
                    "watchdog\n"
                    "zt72516  program  ZT72516: System-basis chip: supplies, CAN, LIN, switch "
                    "inputs, watchdog\n"
                    "zt72518  program  ZT7251x family: System-basis chip: power, CAN, LIN, "
                    "watchdog\n"
                    "zt72537  program  ZT72537: LIN system-basis chip: high and low sides, "
                    "wake-up inputs, watchdog\n"
                    "{} is left out: the name of a chip has letters, digits, - and _ alone.\n",
                    broken, blank));
    expectRun("chip list --names", "broken\nlamp\nzt72361\nzt72516\nzt72518\nzt72537\n");
    expectRun("chip show lampe", "There is no chip \"lampe\". Did you mean lamp?\n", 1);
    EXPECT_TRUE(bitlux("chip show lamp").output.starts_with("lamp: A lamp\n"));
}

TEST(ChipCommand, ImportsARegisterMap) {
    const TemporaryFolder folder;
    const std::string map = folder.write(
        "meter.svd",
        "<device><name>M</name><peripherals><peripheral><name>P</name><baseAddress>0x40"
        "</baseAddress><registers>\n<register><name>A</name><addressOffset>0</addressOffset>"
        "</register>\n<register><name>B</name><addressOffset>4</addressOffset><size>8</size>"
        "</register></registers></peripheral></peripherals></device>");
    const std::string file = folder.path("meter.toml");
    const std::string command = fmt::format("chip import {} -o {} ", map, file);
    const std::string missing = fmt::format(
        "{0}:6:1: `bits` is missing. Say how many bits a word has.\n"
        "{0}:6:1: `address` is missing. Say which bits of a word carry the address, as \"15:8\"; "
        "at "
        "least 7.\n"
        "{0}:6:1: `data` is missing. Say which bits of a word carry the data, as \"7:0\"; at least "
        "32.\n"
        "{0}:6:1: `write` and `read` are missing. Give the bits that are set in each write, in "
        "each "
        "read, or in both, as 0x8000.\n",
        file);
    Outcome outcome = bitlux(command);
    EXPECT_EQ(outcome.output, "2 registers; before the chip can be used:\n" + missing);
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(bitlux("chip check " + file).output, missing);

    outcome =
        bitlux(command + "--only p --base 40 --step 4 --bits 10 --type 3 --address 8 --data 7:0 "
                         "--write 0x200 --answer 'next word' --fetch 1");
    EXPECT_EQ(outcome.output,
              map + ":2:1: \"A\" is left out: it has 32 bits. Up to 8 bits are possible.\n"
                    "1 registers\n");
    const std::string kept = contentOf(file);
    EXPECT_EQ(kept, R"(# Imported from meter.svd.

[chip]
title = "M"

[word]
bits = 10
type = 3
address = "8"
data = "7:0"
write = 0x200
answer = "next word"
fetch = 0x1

[[register]]
title = "B"
address = 0x1
width = 8
page = "P"
)");
    EXPECT_EQ(bitlux("chip check " + file).code, 0);

    outcome = bitlux(command + "--only Q");
    EXPECT_EQ(outcome.output,
              map + ": there is no peripheral or address block \"Q\". There is P.\n");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(bitlux(command + "--data 0-7").code, 2);
    EXPECT_EQ(bitlux("chip import " + folder.path("none.svd")).output,
              folder.path("none.svd") + ": The file cannot be read.\n");
    EXPECT_EQ(contentOf(file), kept);
}

} // namespace
} // namespace bitlux::test
