#include "support/environment_variable.h"
#include "support/rows.h"
#include "support/temporary_folder.h"

#include "platform/linux/dongle_numbers.h"

#include <filesystem>

#include <sys/stat.h>

#include <fmt/format.h>
#include <fmt/ranges.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

std::string listed(const DongleNumbers& numbers) {
    std::string text;
    for (const UsbNumbers& pair : numbers.all())
        text += numbersText(pair) + " ";
    return text;
}

TEST(DongleNumbers, ReadsAPairALine) {
    for (const auto& [content, pairs] : Rows<std::string_view, const char*>{
             {"1234:abcd\n", "1234:abcd "},
             {"1234:ABCD", "1234:abcd "},
             {" \t1234:abcd \t# the one on the bench\r\n", "1234:abcd "},
             {"\r\n\n# 1111:2222\n0001:ffff\r\n", "0001:ffff "},
             {"2222:0000\n1111:0000\n2222:0000\n", "2222:0000 1111:0000 "},
             {"1234:abcd#\n#\n  #", "1234:abcd "},
             {"", ""}}) {
        const TemporaryFolder folder;
        const DongleNumbers numbers({folder.write("dongles.conf", content)});
        EXPECT_EQ(listed(numbers), pairs) << content;
        EXPECT_TRUE(numbers.problems().empty()) << content;
    }
}

TEST(DongleNumbers, ReportsALineThatIsNoPair) {
    using namespace std::string_view_literals;
    Rows<std::string_view, std::string> cases{
        {"\n\nzz\n", "line 3: \"zz\""},
        {"1234:abcd\n1234:abc\n", "line 2: \"1234:abc\""},
        {"1234:abcd\r1234:abce", "line 1: \"1234:abcd?1234:abce\""},
        {"1234:abcd\0"sv, "line 1: \"1234:abcd?\""},
        {"\x1b[2J", "line 1: \"?[2J\""},
        {"0123456789012345678901234567890123456789x",
         "line 1: \"0123456789012345678901234567890123456789...\""}};
    for (const char* line : {"1234:abcde", "12:34", "1234abcd5", "1234:abcg", "-123:abcd",
                             "0x12:abcd", "1234: bcd", "1234:abcd 1234:abce"})
        cases.emplace_back(line, fmt::format("line 1: \"{}\"", line));
    for (const auto& [content, problem] : cases) {
        const TemporaryFolder folder;
        const std::string file = folder.write("dongles.conf", content);
        const DongleNumbers numbers({file});
        ASSERT_EQ(numbers.problems().size(), 1U) << content;
        EXPECT_EQ(numbers.problems()[0],
                  fmt::format("{}, {} is no pair of numbers such as 1234:abcd.", file, problem));
    }
}

TEST(DongleNumbers, JoinsItsFiles) {
    const TemporaryFolder folder;
    const DongleNumbers numbers({folder.write("system", "1111:0001\nbad\n2222:0002\n"),
                                 folder.path("missing"), folder.path("system/below"),
                                 folder.write("user", "2222:0002\nworse\n3333:0003\n")});
    EXPECT_EQ(listed(numbers), "1111:0001 2222:0002 3333:0003 ");
    EXPECT_EQ(numbers.problems().size(), 2U);
    EXPECT_TRUE(numbers.contains({.vendor = 0x3333, .product = 3}));
    EXPECT_FALSE(numbers.contains({.vendor = 3, .product = 0x3333}));
}

TEST(DongleNumbers, IsNotHurtByGarbage) {
    const TemporaryFolder folder;
    std::string garbage = "1234:abcd\n";
    for (unsigned i = 0, state = 1; i < 3'000'000; ++i) {
        state = state * 1664525 + 1013904223;
        garbage += static_cast<char>(state >> 24U);
    }
    const DongleNumbers numbers({folder.write("garbage", garbage)});
    EXPECT_EQ(listed(numbers), "1234:abcd ");
    ASSERT_EQ(numbers.problems().size(), 7U) << fmt::format("{}", numbers.problems());
    EXPECT_NE(numbers.problems()[5].find(": and "), std::string::npos) << numbers.problems()[5];
    EXPECT_NE(numbers.problems()[6].find("is longer than 65536 bytes"), std::string::npos);
    std::string cut(65536 - 5 - 1, '#');
    cut += "\n1234:abcd\n";
    EXPECT_EQ(listed(DongleNumbers({folder.write("cut by the limit", cut)})), "");
}

TEST(DongleNumbers, ReportsWhatCannotBeRead) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("folder"));
    std::filesystem::create_symlink("loop", folder.path("loop"));
    const DongleNumbers numbers({folder.path("folder"), folder.path("loop")});
    ASSERT_EQ(numbers.problems().size(), 2U);
    EXPECT_EQ(numbers.problems()[0],
              "The file " + folder.path("folder") + " cannot be read: Is a directory.");
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    EXPECT_TRUE(DongleNumbers({folder.path("pipe")}).problems().empty()) << "must not wait";
}

TEST(DongleNumbers, KnowsWhereItsFilesAre) {
    for (const auto& [configValue, homeValue, userFile] :
         Rows<const char*, const char*, const char*>{
             {nullptr, "/home/ann", "/home/ann/.config/bitlux-forge/dongles.conf"},
             {"", "/home/ann", "/home/ann/.config/bitlux-forge/dongles.conf"},
             {"relative", "/home/ann", "/home/ann/.config/bitlux-forge/dongles.conf"},
             {"/etc/xdg", "/home/ann", "/etc/xdg/bitlux-forge/dongles.conf"},
             {"/etc/xdg", nullptr, "/etc/xdg/bitlux-forge/dongles.conf"},
             {nullptr, nullptr, nullptr},
             {nullptr, "", nullptr}}) {
        const EnvironmentVariable config("XDG_CONFIG_HOME", configValue);
        const EnvironmentVariable home("HOME", homeValue);
        std::vector<std::string> expected{"/etc/bitlux-forge/dongles.conf"};
        if (userFile != nullptr)
            expected.emplace_back(userFile);
        EXPECT_EQ(DongleNumbers::files(), expected);
    }
}

} // namespace
} // namespace bitlux::test
