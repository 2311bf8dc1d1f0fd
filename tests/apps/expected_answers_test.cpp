#include "bitlux_program.h"

#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(ExpectedAnswers, ReportDifferences) {
    const std::vector<std::tuple<std::string, int, std::string>> rows{
        {"--bench echo --bits 16 --expect 0000,5AXX 5B13 0", 3,
         "5B13 0000\n0000 5B13\nWord 2, \"0\": 5B13 is not 5AXX\n"
         "  01011011 00010011  answer\n"
         "  01011010 XXXXXXXX  expected\n"
         "         ^\n"},
        {"--bench echo --expect XX 1 2 3", 0, "01 00\n02 01\n03 02\n"},
        // The answer comes with the third word; only the last attempt is printed.
        {"--bench scripted --replies 1,2,3,4 --expect 03 --retries 2 A5", 0, "A5 03\n"},
        {"--bench scripted --replies 1,2,3,4 --expect 03 --within 1s A5", 0, "A5 03\n"},
        {"--bench scripted --replies 1,2,3,4 --expect 04 --within 1s --retries 2 A5 2>&1 | head -1",
         0, "A5 03\n"},
        {"--bench echo --expect 00 --json A5 | cut -d, -f5-", 0,
         "\"sent\":\"A5\",\"received\":\"00\",\"bits\":8,\"expected\":\"00\",\"matches\":true}\n"
         "\"exit_code\":0}\n"},
        {"--bench echo --expect 000 A5", 2,
         "--expect: The pattern \"000\" is for 12 bits, and the word has 8\n"},
        {"--bench echo --expect 00,01 A5 2>&1 | head -1", 0,
         "--expect: takes one pattern for all words, or one a word: there are 2 patterns and 1 "
         "words\n"},
    };
    for (const auto& [arguments, code, output] : rows) {
        const Outcome outcome = bitlux("send " + arguments);
        EXPECT_EQ(outcome.code, code) << arguments;
        EXPECT_EQ(outcome.output, output) << arguments;
    }
}

} // namespace
} // namespace bitlux::test
