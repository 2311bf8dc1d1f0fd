#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/linux/adapter_settings.h"
#include "platform/linux/ftdi_chip.h"

#include <cmath>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(AdapterSettings, ReadsATableForEachAdapter) {
    const TemporaryFolder folder;
    const AdapterSettings settings(
        {folder.write("system", "[A50285BI]\n2 = 'D4'\nclock = 500_000\n[FT1]\nchannel = 'C'\n"),
         folder.path("missing"),
         folder.write("user",
                      "# mine\n[A50285BI]\n4 = 'D7'\n12 = 'D0' # DO\nkeep_lines = true\n")});
    EXPECT_EQ(settings.problems(), std::vector<std::string>());
    EXPECT_EQ(settings.count(), 2U);
    const AdapterWishes mine = settings.of("A50285BI");
    ASSERT_TRUE(mine.wiring);
    EXPECT_EQ(mine.wiring->pinsText(), "4 and 12") << "the whole wiring, and of the user's file";
    EXPECT_EQ(mine.wiring->lineOf(4), 7);
    EXPECT_EQ(mine.wiring->lineOf(12), 0);
    EXPECT_FALSE(mine.clock);
    EXPECT_TRUE(mine.keepsLines);
    EXPECT_EQ(settings.of("FT1").channel, 2);
    EXPECT_FALSE(settings.of("FT1").wiring);
    EXPECT_EQ(settings.of("other").channel, 0);
}

TEST(AdapterSettings, TellsWhatIsWrongWhereAndUsesTheRest) {
    for (const auto& [line, problem] : Rows<const char*, const char*>{
             {"2 = 'D8'", "2:5: pin 2 gets no line. Write one from \"D0\" to \"D7\"."},
             {"2 = 3", "2:5: pin 2 gets no line. Write one from \"D0\" to \"D7\"."},
             {"18 = 'D1'",
              "2:6: pin 18 cannot get the line D1. The pins with a signal are 1 to 17, "
              "and each has a line of its own."},
             {"3 = 'D1'\n5 = 'D1'", "3:5: pin 5 cannot get the line D1. The pins with a signal are "
                                    "1 to 17, and each has a line of its own."},
             {"channel = 'E'", "2:11: `channel` is no channel of a chip. Write \"A\" or \"B\", on "
                               "an FT4232H also \"C\" or \"D\"."},
             {"clock = '1M'", "2:9: `clock` is no number of bytes a second. Write it as 500_000, "
                              "without quotes."},
             {"clock = 0", "2:9: `clock` is no number of bytes a second. Write it as 500_000, "
                           "without quotes."},
             {"keep_lines = 1", "2:14: `keep_lines` is neither true nor false. Write true or "
                                "false."},
             {"pin = 2",
              "2:1: there is no key `pin` here. The keys are pins from 1 to 17, channel, "
              "clock and keep_lines."}}) {
        SCOPED_TRACE(line);
        const TemporaryFolder folder;
        const std::string file =
            folder.write("adapters.conf", fmt::format("[bad]\n{}\n[good]\n3 = 'D3'\n", line));
        const AdapterSettings settings({file});
        EXPECT_EQ(settings.problems(), std::vector{fmt::format("{}:{}", file, problem)});
        EXPECT_EQ(settings.of("bad").problem, settings.problems().at(0));
        EXPECT_EQ(settings.of("good").problem, "");
        EXPECT_EQ(settings.of("good").wiring->lineOf(3), 3);
    }
}

TEST(AdapterSettings, TrustsNoFileThatItCannotRead) {
    const TemporaryFolder folder;
    for (const auto& [text, part] : Rows<std::string, const char*>{
             {"[A]\n2 = D4\n", ":2:5: "},
             {"[A]\n\x01", ":2:1: this character is outside a text"},
             {"clock = 4\n", ":1:9: this is no table of an adapter. Begin it with the serial"},
             {std::string(70'000, '#'), ": it is longer than 64 KiB"}}) {
        const std::string file = folder.write("adapters.conf", text);
        const AdapterSettings settings({file});
        ASSERT_EQ(settings.problems().size(), 1U) << text.substr(0, 20);
        EXPECT_TRUE(settings.problems()[0].starts_with(file + part)) << settings.problems()[0];
        EXPECT_EQ(settings.of("A").problem.empty(), text.starts_with("clock"));
    }
    EXPECT_TRUE(AdapterSettings({folder.path()})
                    .problems()
                    .at(0)
                    .starts_with(folder.path() + ": it cannot be read (Is a directory)"));
}

TEST(FtdiChip, MakesTheNearestByteRate) {
    for (const auto& [release, wanted, baud, rate] :
         Rows<std::uint16_t, int, int, double>{{0x0600, 1'000'000, 62'500, 1e6},
                                               {0x0600, 24'000'000, 1'500'000, 24e6},
                                               {0x0600, 9'990'000, 631'579, 48e6 / 4.75},
                                               {0x1000, 3'000, 188, 48e6 * 8 / 127'660},
                                               {0x0900, 1'000'000, 200'000, 1e6},
                                               {0x0700, 30'000'000, 6'000'000, 30e6},
                                               {0x0800, 4'000, 800, 4e3}}) {
        const FtdiRate made = nearestRate(*findFtdiChip(release), wanted).value();
        EXPECT_EQ(made.baud, baud) << release << " " << wanted;
        EXPECT_EQ(made.bytes, rate) << release << " " << wanted;
    }
    for (const std::uint16_t release : {std::uint16_t{0x0600}, std::uint16_t{0x0700}}) {
        const FtdiChip& chip = *findFtdiChip(release);
        EXPECT_FALSE(nearestRate(chip, chip.slowest - 1));
        EXPECT_FALSE(nearestRate(chip, chip.fastest + 1));
        for (int wanted = chip.slowest; wanted < 2'000'000; wanted += wanted / 7)
            EXPECT_LT(std::abs(nearestRate(chip, wanted)->bytes / wanted - 1), 0.003) << wanted;
    }
    EXPECT_EQ(findFtdiChip(0x0500), nullptr);
}

} // namespace
} // namespace bitlux::test
