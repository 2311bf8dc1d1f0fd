#include "platform/failure.h"
#include "sending/answer_pattern.h"

#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

std::vector<std::int16_t> elementsOf(std::uint64_t word, int bits) {
    std::vector<std::int16_t> elements;
    for (int bit = 0; bit < bits; ++bit)
        elements.push_back(static_cast<std::int16_t>(word >> bit & 1));
    return elements;
}

TEST(AnswerPattern, MatchesTheBitsThatCount) {
    const std::vector<std::tuple<const char*, int, std::uint64_t, bool>> rows{
        {"5AXX", 16, 0x5A00, true},
        {"5axx", 16, 0x5AFF, true},
        {"5AXX", 16, 0x5B00, false},
        {"0x5A_FF", 16, 0x5AFF, true},
        {"0b1X0X", 4, 0xD, true},
        {"0b1X0X", 4, 0xB, false},
        {"5A/F0", 8, 0x5F, true},
        {"5A/F0", 8, 0x6A, false},
        {"0x5A/0x0F", 8, 0xFA, true},
        {"3FX", 10, 0x3F7, true},
        {"XFF", 10, 0x2FF, true}, // bits that the word lacks may be any
        {"0FF", 10, 0x2FF, false},
        {"0", 1, 0, true},
        {"FFFFFFFFFFFFFFFF", 64, ~0ULL, true},
    };
    for (const auto& [text, bits, answer, wanted] : rows)
        EXPECT_EQ(AnswerPattern::parse(text, bits).matches(elementsOf(answer, bits)), wanted)
            << text << " " << std::hex << answer;
    const AnswerPattern any = AnswerPattern::parse("XX", 8);
    EXPECT_FALSE(any.matches(elementsOf(0, 16)));
    EXPECT_FALSE(any.matches(std::vector<std::int16_t>(8, 2))); // whole bytes are no bits
}

TEST(AnswerPattern, RefusesOtherTextsAndReportsBothLengths) {
    constexpr const char* none = " is no pattern: write 5AXX, 0b1X0X or 5A/F0";
    const auto lengths = [](const char* text, int has) {
        return "The pattern \"" + std::string(text) + "\" is for " + std::to_string(has) +
               " bits, and the word has 8";
    };
    const std::vector<std::tuple<const char*, std::string>> rows{
        {"", "\"\"" + std::string(none)},
        {"5G", "\"5G\"" + std::string(none)},
        {"_5A", "\"_5A\"" + std::string(none)},
        {"0b12", "\"0b12\"" + std::string(none)},
        {"5X/F0", "\"5X/F0\"" + std::string(none)}, // the mask says which bits are any
        {"5A/", "\"5A/\"" + std::string(none)},
        {"5AX", lengths("5AX", 12)},
        {"5", lengths("5", 4)},
        {"0b101", lengths("0b101", 3)},
        {"5A/F", lengths("5A/F", 4)},
    };
    for (const auto& [text, wanted] : rows) {
        try {
            static_cast<void>(AnswerPattern::parse(text, 8));
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.what(), wanted);
        }
    }
    EXPECT_THROW(AnswerPattern::parse("7FF", 10), Failure); // bit 10 is none of the word
}

TEST(AnswerPattern, MarksTheBitsThatDiffer) {
    EXPECT_EQ(AnswerPattern::parse("5AXX", 16).comparison(elementsOf(0x5B13, 16)),
              "  01011011 00010011  answer\n"
              "  01011010 XXXXXXXX  expected\n"
              "         ^");
    EXPECT_EQ(AnswerPattern::parse("0b00001111", 8).comparison(elementsOf(0xF0, 8)),
              "  11110000  answer\n"
              "  00001111  expected\n"
              "  ^^^^^^^^");
}

} // namespace
} // namespace bitlux::test
