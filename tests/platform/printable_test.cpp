#include "platform/printable.h"

#include "support/rows.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Printable, KeepsTextAndDisarmsTheRest) {
    using namespace std::string_view_literals;
    const Rows<std::string_view, const char*> cases{
        {"", ""},
        {"Word dongle", "Word dongle"},
        {"0123456789AB", "0123456789AB"},
        {"0123456789ABC", "0123456789AB..."},
        {"\x1b[2J\a\x7f", "?[2J??"},
        {"a\0b\nc"sv, "a?b?c"},
        {"\xc2\xb5SPI", "\xc2\xb5SPI"},
        {"\xe2\x82\xac \xf0\x9f\x98\x80", "\xe2\x82\xac \xf0\x9f\x98\x80"},
        {"\xc2\x9b", "??"},                            // a control character of two bytes
        {"\xe2\x82", "??"},                            // cut off
        {"\xc2x\x80\xff", "?x??"},                     // no UTF-8
        {"\xc0\xaf\xf8z", "???z"},                     // the same
        {"\xed\xa0\x80\xe0\x80\xf4\x90z", "???????z"}, // half a pair, too long, too large
        {"0123456789A\xc2\xb5", "0123456789A..."}      // never half a character
    };
    for (const auto& [text, shown] : cases)
        EXPECT_EQ(printable(text, 12), shown) << text;
}

} // namespace
} // namespace bitlux::test
