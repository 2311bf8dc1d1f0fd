#include "chips/bit_list.h"

#include <array>
#include <tuple>

#include <gtest/gtest.h>

namespace bitlux::chips {
namespace {

TEST(BitList, PutsAValueWhereItsBitsAre) {
    using Case = std::tuple<const char*, std::uint64_t, std::uint64_t>; // text, value, word
    for (const auto& [text, value, word] : {Case{"7:5", 0b101, 0xA0},
                                            {"3", 1, 8},
                                            {"0,3", 0b10, 1},
                                            {"2:0,4:3", 0b00101, 0x09},
                                            {"63:0", ~0ULL, ~0ULL},
                                            {"63", 1, 1ULL << 63},
                                            {"1, 0", 3, 3}}) {
        const std::optional<BitList> bits = BitList::parse(text);
        ASSERT_TRUE(bits) << text;
        EXPECT_EQ(bits->placed(value), word) << text;
        EXPECT_EQ(bits->taken(word), value) << text;
        EXPECT_EQ(bits->replaced(~0ULL, 0), ~bits->mask()) << text;
    }
    EXPECT_EQ(BitList::parse("1,0")->text(), "1:0");
    EXPECT_EQ(BitList::parse("2:0,4:3")->text(), "2:0,4:3");
}

TEST(BitList, RefusesWhatNamesNoBits) {
    for (const char* text : {"", ",", "1,", "0:1", "64", "-1", "1:", ":1", "1,1", "3:1,2", "a",
                             "1:0:0", "99999999999"})
        EXPECT_FALSE(BitList::parse(text)) << text;
}

} // namespace
} // namespace bitlux::chips
