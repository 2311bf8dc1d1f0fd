#include "platform/conversions.h"

#include "platform/failure.h"
#include "platform/letters.h"

#include <limits>

#include <gtest/gtest.h>

namespace bitlux {
namespace {

Failure::Kind failureOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const Failure& failure) {
        return failure.kind();
    }
    return Failure::Kind::File; // none of those that conversions raise
}

TEST(Val, ReadsTheNumberATextBeginsWith) {
    const std::pair<const char*, double> cases[] = {
        {"", 0},          {"   ", 0},       {"abc", 0},         {"12", 12},
        {"12.5 V", 12.5}, {" 1 6", 16},     {"1\t2\r\n3", 123}, {"+5", 5},
        {"-5", -5},       {"- 5", -5},      {"+-5", 0},         {"--5", 0},
        {"-", 0},         {"+", 0},         {".5", 0.5},        {"-.5", -0.5},
        {".", 0},         {"5.", 5},        {"1.2.3", 1.2},     {"1,5", 1},
        {"1e3", 1000},    {"1E+3", 1000},   {"1e-3", 0.001},    {"1e", 1},
        {"1D3", 1000},    {"-1d+3", -1000}, {"4D000001", 40},   {"4E00FFFF", 4},
        {"43ABCD12", 43}, {"1D", 1},        {"1.5D-1 V", 0.15}, {"1e2d3", 100},
        {"1e-400", 0}, // too small is zero
        {"007", 7},       {"0x10", 0},      {"&HFF", 255},      {"&hff", 255},
        {"& H F F", 255}, {"&H1G", 1},      {"&H", 0},          {"&HG", 0},
        {"&H-5", 0},      {"&O17", 15},     {"&o8", 0},         {"&17", 0},
        {"inf", 0},       {"-inf", 0},      {"nan", 0},         {"infinity", 0},
    };
    for (const auto& [text, number] : cases)
        EXPECT_EQ(val(text), number) << '"' << text << '"';
    EXPECT_EQ(failureOf([] { toInt32(val("4D000123")); }), Failure::Kind::Overflow);
    for (const char* text : {"1e400", "-1e400", "4D999999", "&HFFFFFFFFFFFFFFFFF"})
        EXPECT_EQ(failureOf([text] { val(text); }), Failure::Kind::Overflow) << text;
}

TEST(ToInt16, RoundsTiesToEvenWithinItsLimits) {
    const std::pair<double, int> cases[] = {
        {12.5, 12},   {13.5, 14},       {12.4999, 12},      {-0.5, 0},          {-1.5, -2},
        {-12.5, -12}, {32767.4, 32767}, {-32768.5, -32768}, {-32768.4, -32768}, {0.5000001, 1},
    };
    for (const auto& [value, rounded] : cases)
        EXPECT_EQ(toInt16(value), rounded) << value;
    const double limit = std::numeric_limits<double>::infinity();
    for (const double value : {32767.5, 32768.0, -32768.6, 1e300, limit, -limit,
                               std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(failureOf([value] { toInt16(value); }), Failure::Kind::Overflow) << value;
}

TEST(ToInt32, TakesItsWholeRange) {
    EXPECT_EQ(toInt32(2147483647.4), 2147483647);
    EXPECT_EQ(toInt32(-2147483648.5), -2147483647 - 1);
    for (const double value : {2147483647.5, -2147483648.6, 1e300})
        EXPECT_EQ(failureOf([value] { toInt32(value); }), Failure::Kind::Overflow) << value;
}

TEST(ToNumber, TakesWholeTextsThatAreNumbers) {
    const std::pair<const char*, double> numbers[] = {{"0", 0},     {"-12.5", -12.5}, {"+7", 7},
                                                      {".5", 0.5},  {"5.", 5},        {"1e3", 1000},
                                                      {"1e-400", 0}};
    for (const auto& [text, value] : numbers)
        EXPECT_EQ(toNumber(text), value) << text;
    for (const char* text : {"", " ", "1 ", " 1", "1 6", "1x", "-", ".", "+-1", "e3", "inf", "nan",
                             "&HFF", "0x10", "1,5", "12.5 V"})
        EXPECT_EQ(failureOf([text] { toNumber(text); }), Failure::Kind::Conversion) << text;
    EXPECT_EQ(failureOf([] { toNumber("-1e400"); }), Failure::Kind::Overflow);
}

TEST(WholeNumber, TakesNothingBehindItsDigits) {
    EXPECT_EQ(wholeNumber<int>("-12"), -12);
    EXPECT_EQ(wholeNumber<std::uint16_t>("fFfF", 16), 0xFFFF);
    EXPECT_EQ(wholeNumber<double>("0.5"), 0.5);
    for (const char* text : {"", " 1", "1 ", "+1", "1x", "0x1", "65536", "-1"})
        EXPECT_FALSE(wholeNumber<std::uint16_t>(text)) << text;
}

TEST(Letters, AreTheSameInEitherCase) {
    EXPECT_TRUE(equalIgnoringCase("{4b322ac1-ECA3}", "{4B322AC1-eca3}"));
    for (const char* other : {"{4B322AC1-ECA4}", "{4B322AC1-ECA3", "[4B322AC1-ECA3]"})
        EXPECT_FALSE(equalIgnoringCase("{4b322ac1-ECA3}", other)) << other;
}

} // namespace
} // namespace bitlux
