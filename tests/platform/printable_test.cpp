#include "platform/printable.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Printable, KeepsTextAndDisarmsTheRest) {
    using namespace std::string_view_literals;
    struct Case {
        std::string_view text;
        const char* shown;
    };
    for (const Case& c : {
             Case{"", ""}, Case{"Word dongle", "Word dongle"}, Case{"0123456789AB", "0123456789AB"},
             Case{"0123456789ABC", "0123456789AB..."}, Case{"\x1b[2J\a\x7f", "?[2J??"},
             Case{"a\0b\nc"sv, "a?b?c"}, Case{"\xc2\xb5SPI", "\xc2\xb5SPI"},
             Case{"\xe2\x82\xac \xf0\x9f\x98\x80", "\xe2\x82\xac \xf0\x9f\x98\x80"},
             Case{"\xc2\x9b", "??"},        // a control character of two bytes
             Case{"\xc2", "?"},             // cut off
             Case{"\xe2\x82", "??"},        // likewise
             Case{"\xc2x\x80\xff", "?x??"}, // no UTF-8
             Case{"\xc0\xaf\xf8z", "???z"}, // likewise
             Case{"\xed\xa0\x80\xe0\x80\xf4\x90z",
                  "???????z"}, // likewise: half a pair, too long, too large
             Case{"0123456789A\xc2\xb5", "0123456789A..."}, // never half a character
         })
        EXPECT_EQ(printable(c.text, 12), c.shown) << c.text;
}

} // namespace
} // namespace bitlux::test
