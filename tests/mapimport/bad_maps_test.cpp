#include "chips/chip_library.h"
#include "mapimport/import_map.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using mapimport::importMap;

std::string repeated(std::string_view text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i)
        all += text;
    return all;
}

/// A device with these peripherals, from line 2 on.
std::string device(const std::string& peripherals) {
    return "<device><name>D</name><peripherals>\n" + peripherals + "</peripherals></device>";
}
/// One with a peripheral with these registers, from line 2 on.
std::string registers(const std::string& text) {
    return device("<peripheral><name>P</name><baseAddress>0</baseAddress><registers>" + text +
                  "</registers></peripheral>");
}
std::string field(const std::string& text) {
    return registers("<register><name>R</name><addressOffset>0</addressOffset><fields>\n<field>"
                     "<name>F</name>" +
                     text + "</field></fields></register>");
}

TEST(BadMaps, AreToldWithTheirPlace) {
    const std::string open = "<cluster><name>C</name><addressOffset>0</addressOffset>";
    struct Case {
        std::string source;
        const char* problem;
    };
    for (const Case& c : {
             Case{"", ""},
         })
        EXPECT_EQ(chips::describe(importMap(c.source, "m.svd", {}).problems, "m.svd"), c.problem)
            << c.source.substr(0, 300);
}

TEST(BadMaps, ReadNothingButThemselves) {
    const std::string source = "<!DOCTYPE device [<!ENTITY file SYSTEM \"file:///etc/hostname\">\n"
                               "<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\">]>\n" +
                               registers("<register><name>R</name><addressOffset>0</addressOffset>"
                                         "<description>&file; &b;</description></register>");
    const std::string text = importMap(source, "m.svd", {}).text;
    EXPECT_NE(text.find("note = \"&file; &b;\"\n"), std::string::npos) << text;
}

} // namespace
} // namespace bitlux::test
