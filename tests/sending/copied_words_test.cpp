#include "sending/copied_words.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(CopiedWords, AreTextsForOtherPrograms) {
    const std::vector<CopiedWord> one{{.bits = 16, .type = 2, .digits = "A5C3"}};
    EXPECT_EQ(pythonText(one), "b.transfer(0xA5C3, bits=16, type=2)\n");
    EXPECT_EQ(commandLineText(one, {"--bench", "my chip's", "--bus", "port"}),
              "bitlux send --bits 16 --type 2 --bench 'my chip'\\''s' --bus port A5C3\n");
    EXPECT_EQ(cBytesText(one), "/* 16 bits a word, SPI type 2, most significant byte first */\n"
                               "static const uint8_t words[][2] = {{0xA5, 0xC3}};\n");

    // Words of one shape go together, and each shape by itself.
    const std::vector<CopiedWord> several{
        {.bits = 8, .type = 1, .digits = "01"},
        {.bits = 8, .type = 1, .digits = "FF"},
        {.bits = 12, .type = 3, .msbFirst = false, .digits = "A5C"}};
    EXPECT_EQ(pythonText(several), "b.transfer_many([0x01, 0xFF], bits=8, type=1)\n"
                                   "b.transfer(0xA5C, bits=12, type=3)\n");
    EXPECT_EQ(commandLineText(several, {}), "bitlux send --bits 8 --type 1 01 FF\n"
                                            "bitlux send --bits 12 --type 3 --order lsb A5C\n");
    EXPECT_EQ(cBytesText(several),
              "/* 8 bits a word, SPI type 1, most significant byte first */\n"
              "static const uint8_t words[][1] = {{0x01}, {0xFF}};\n"
              "/* 12 bits a word in the low bits of its bytes, SPI type 3, most significant byte "
              "first; on the wire bit 0 goes first */\n"
              "static const uint8_t words_2[][2] = {{0x0A, 0x5C}};\n");
    EXPECT_EQ(pythonText({}) + commandLineText({}, {}) + cBytesText({}), "");
}

TEST(CopiedWords, AreBrokenIntoLines) {
    const std::vector<CopiedWord> words(14, {.bits = 32, .type = 1, .digits = "DEADBEEF"});
    const std::string numbers = "0xDEADBEEF, 0xDEADBEEF, 0xDEADBEEF, 0xDEADBEEF, "
                                "0xDEADBEEF, 0xDEADBEEF, 0xDEADBEEF,";
    EXPECT_EQ(pythonText(words),
              "b.transfer_many([\n    " + numbers + "\n    " + numbers + "\n], bits=32, type=1)\n");
}

} // namespace
} // namespace bitlux::test
