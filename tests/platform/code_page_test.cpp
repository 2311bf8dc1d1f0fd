#include "platform/code_page.h"

#include "platform/failure.h"
#include "support/rows.h"

#include <gtest/gtest.h>

namespace bitlux {
namespace {

TEST(CodePage, ConvertsEveryByteThereAndBack) {
    std::string bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    EXPECT_EQ(toCodePage(toUtf8(bytes)), bytes);
    EXPECT_EQ(toUtf8("\x80 \x93\xE9\x94 \xFF \x9F"), "\u20AC \u201C\u00E9\u201D \u00FF \u0178");
    EXPECT_EQ(toUtf8("\x81"), "\u0081");
}

TEST(CodePage, NamesTheCharacterThatItLacks) {
    for (const auto& [text, shown] : test::Rows<const char*, const char*>{
             {"10 \u03A9", "\"\u03A9\""},
             {"\u0080", "\"??\""}, // the euro's byte is no control character
             {"a\U0001F50Cb", "\"\U0001F50C\""},
             {"half \xE2\x82", "\"??\""},
             {"\xFF", "\"?\""}}) {
        try {
            toCodePage(text);
            ADD_FAILURE() << text;
        } catch (const Failure& failure) {
            EXPECT_EQ(failure.kind(), Failure::Kind::Conversion);
            EXPECT_NE(std::string(failure.what()).find(shown), std::string::npos) << failure.what();
        }
    }
}

} // namespace
} // namespace bitlux
