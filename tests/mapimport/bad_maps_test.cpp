#include "chips/chip_library.h"
#include "mapimport/import_map.h"
#include "mapimport/xml_source.h"

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
std::string deviceWith(const std::string& peripherals) {
    return "<device><name>D</name><peripherals>\n" + peripherals + "</peripherals></device>";
}
/// One with a peripheral with these registers, from line 2 on.
std::string registers(const std::string& text) {
    return deviceWith("<peripheral><name>P</name><baseAddress>0</baseAddress><registers>" + text +
                      "</registers></peripheral>");
}
std::string field(const std::string& text) {
    return registers("<register><name>R</name><addressOffset>0</addressOffset><fields>\n<field>"
                     "<name>F</name>" +
                     text + "</field></fields></register>");
}

TEST(BadMaps, AreReportedWithTheirPlace) {
    struct Case {
        std::string source;
        const char* problem;
    };
    for (const Case& c : {
             Case{"", "m.svd:1:1: this is no XML: no document element found. Correct the file at "
                      "this place, or export it again."},
             Case{"\xFF\xFE<", "m.svd:1:1: the file is in UTF-16. Save it in UTF-8."},
             Case{"<device>\n <name></device>",
                  "m.svd:2:10: this is no XML: start-end tags mismatch. Correct the file at this "
                  "place, or export it again."},
             Case{"<html/>", "m.svd:1:1: `html` is no register map. Give an IP-XACT `component` or "
                             "a CMSIS-SVD `device`."},
             Case{
                 "\n<c:component xmlns:c=\"http://www.accellera.org/XMLSchema/IPXACT/1685-2022\"/>",
                 "m.svd:2:1: \"http://www.accellera.org/XMLSchema/IPXACT/1685-2022\" is no "
                 "namespace that is read. Export the map as IP-XACT of IEEE 1685-2009 or "
                 "1685-2014."},
             Case{repeated("<a>", 70) + repeated("</a>", 70),
                  "m.svd:1:196: the elements lie too deep in each other. A register map has them "
                  "up to 64 deep."},
             Case{"<device>" + repeated("<a/>", 4'000'000) + "</device>",
                  "m.svd: the file has more than 4 million elements and attributes. Part it into "
                  "several files."},
             Case{std::string(mapimport::longestSource + 1, ' '),
                  "m.svd: the file is longer than 64 MiB. Part it into several files."},
             Case{deviceWith(""),
                  "m.svd:1:1: no register is left. See what was left out, or choose others."},
             Case{deviceWith("<peripheral><name>P</name></peripheral>"),
                  "m.svd:2:1: `baseAddress` is missing. Add it."},
             Case{deviceWith(
                      "<peripheral><name>P</name><baseAddress>0xG</baseAddress></peripheral>"),
                  "m.svd:2:27: `baseAddress` is no number: \"0xG\". Write it as 64 or 0x40."},
             Case{deviceWith("<peripheral derivedFrom='Q'><name>P</name></peripheral>"),
                  "m.svd:2:1: there is no peripheral \"Q\" to derive from. Correct `derivedFrom`."},
             Case{deviceWith("<peripheral derivedFrom='Q'><name>P</name></peripheral>\n"
                             "<peripheral derivedFrom='P'><name>Q</name></peripheral>"),
                  "m.svd:3:1: \"P\" is derived from itself. Break the loop of `derivedFrom`."},
             Case{registers("\n<register><addressOffset>0</addressOffset></register>"),
                  "m.svd:3:1: `register` has no name. Give it a `name`."},
             Case{registers("<register><name>R%s</name><dim>0</dim><addressOffset>0</"
                            "addressOffset></register>"),
                  "m.svd:2:92: an array has 1 to 65,536 elements. Correct `dim`."},
             Case{registers("<register><name>R%s</name><dim>99999999999999999999</"
                            "dim><addressOffset>0</addressOffset></register>"),
                  "m.svd:2:92: `dim` is no number: \"99999999999999999999\". Write it as 64 or "
                  "0x40."},
             Case{registers(
                      "<cluster><name>C%s</name><addressOffset>0</addressOffset><dim>60000</dim>\n"
                      "<cluster><name>D%s</name><addressOffset>0</addressOffset><dim>60000</dim></"
                      "cluster></cluster>"),
                  "m.svd:3:1: the file means more than 200000 elements. Choose peripherals with "
                  "--only, or make its arrays smaller."},
             Case{registers("<cluster><name>C</name><addressOffset>0</addressOffset>\n<cluster "
                            "derivedFrom='P.C'>"
                            "<name>D</name></cluster></cluster>"),
                  "m.svd:3:1: clusters lie too deep in each other. Put them up to 12 deep into "
                  "each other."},
             Case{field("<bitRange>7:0</bitRange>"),
                  "m.svd:3:22: `bitRange` names no bits: \"7:0\". Write it as [7:4]."},
             Case{field("<lsb>3</lsb><msb>1</msb>"), "m.svd:3:34: the field's highest bit is 1, "
                                                     "its lowest 3. Write the highest bit first."},
             Case{field("<bitOffset>0</bitOffset><enumeratedValues><enumeratedValue><name>v</"
                        "name><value>two</value></enumeratedValue></enumeratedValues>"),
                  "m.svd:3:95: `value` is no number: \"two\". Write it as 5, 0x5 or #101, with an "
                  "x for a bit that is not compared."},
             Case{registers("<register><name>R</name><addressOffset>0</addressOffset><size>65</"
                            "size></register>"),
                  "m.svd:1:1: no register is left. See what was left out, or choose others."},
         })
        EXPECT_EQ(chips::describe(importMap(c.source, "m.svd", {}).problems, "m.svd"), c.problem)
            << c.source.substr(0, 300);
}

TEST(BadMaps, ReadNoOtherFile) {
    const std::string source = "<!DOCTYPE device [<!ENTITY file SYSTEM \"file:///etc/hostname\">\n"
                               "<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\">]>\n" +
                               registers("<register><name>R</name><addressOffset>0</addressOffset>"
                                         "<description>&file; &b;</description></register>");
    const std::string text = importMap(source, "m.svd", {}).text;
    EXPECT_NE(text.find("note = \"&file; &b;\"\n"), std::string::npos) << text;
}

} // namespace
} // namespace bitlux::test
