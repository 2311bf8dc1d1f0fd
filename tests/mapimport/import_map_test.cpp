#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "mapimport/import_map.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using mapimport::ImportedMap;
using mapimport::importMap;
using mapimport::ImportOptions;

/// Words of 24 bits, with addresses of 6 bits and data of 16.
ImportOptions wordOptions() {
    ImportOptions options;
    options.word.bits = 24;
    options.word.address = chips::BitList::range(16, 6);
    options.word.data = chips::BitList::range(0, 16);
    options.word.write = 0x800000;
    return options;
}

std::string notesOf(const ImportedMap& made) {
    return chips::describe(made.notes, "map");
}

chips::ChipPtr chipOf(const ImportedMap& made) {
    const chips::ChipFile file = chips::readChip(made.text, "map.toml");
    EXPECT_EQ(chips::describe(file.problems, "map.toml"), "");
    if (!file.chip)
        throw std::runtime_error("no chip");
    return file.chip;
}

constexpr std::string_view meter = R"(<?xml version="1.0"?>
<device>
 <name>METER</name><description>Two \n
   inputs</description>
 <size>16</size><resetValue>0</resetValue>
 <peripherals>
  <peripheral><name>ADC0</name><baseAddress>0x10</baseAddress>
   <registers>
    <register><name>CTRL</name><description>Say "on" &amp; \ go</description>
     <addressOffset>0</addressOffset><resetValue>0xFF01</resetValue><resetMask>0x81FF</resetMask>
     <fields>
      <field><name>EN</name><bitRange>[0:0]</bitRange></field>
      <field><name>GAIN</name><lsb>1</lsb><msb>3</msb><enumeratedValues><name>Gains</name>
       <enumeratedValue><name>x1</name><description>one</description><value>0</value></enumeratedValue>
       <enumeratedValue><name>x2</name><value>#01x</value></enumeratedValue>
       <enumeratedValue><name>off</name><isDefault>true</isDefault></enumeratedValue>
      </enumeratedValues></field>
      <field><name>Reserved_1</name><bitOffset>4</bitOffset><bitWidth>4</bitWidth></field>
      <field><name>TAP%s</name><dim>2</dim><dimIncrement>4</dimIncrement><dimIndex>2-3</dimIndex>
       <bitOffset>8</bitOffset><bitWidth>4</bitWidth></field>
     </fields></register>
    <register derivedFrom="CTRL"><name>STAT</name><addressOffset>1</addressOffset>
     <access>read-only</access><readAction>clear</readAction><resetValue>0</resetValue>
     <fields><field><name>GAIN2</name><bitOffset>1</bitOffset><bitWidth>1</bitWidth>
      <enumeratedValues derivedFrom="ADC0.CTRL.GAIN.Gains"/></field></fields></register>
    <cluster><name>CH[%s]</name><dim>2</dim><dimIncrement>2</dimIncrement><dimIndex>A,B</dimIndex>
     <addressOffset>4</addressOffset>
     <register><name>LIMIT</name><addressOffset>0</addressOffset></register>
     <register><name>FLAGS</name><addressOffset>1</addressOffset><size>8</size>
      <modifiedWriteValues>oneToClear</modifiedWriteValues></register>
    </cluster>
   </registers></peripheral>
  <peripheral derivedFrom="ADC0"><name>ADC1</name><baseAddress>0x20</baseAddress></peripheral>
 </peripherals>
</device>
)";

TEST(ImportMap, WritesAPeripheralOfAnSvd) {
    ImportOptions options = wordOptions();
    options.only = {"adc1"};
    options.base = 0x20;
    const ImportedMap made = importMap(meter, "some/meter.svd", options);
    EXPECT_EQ(made.text, R"toml(# Imported from meter.svd.

[chip]
title = "METER"
description = "Two inputs"

[word]
bits = 24
# type = ... # SPI type, 1 to 8; without it 1
address = "21:16"
data = "15:0"
write = 0x800000

[[register]]
title = "CTRL"
address = 0x0
bits = ["EN", "GAIN {0..2}", "-", "-", "-", "-", "TAP2 {0..3}", "TAP3 {0..3}"]
reset = 0x8101
page = "ADC1"
note = "Say \"on\" & \\ go"

  [[register.field]]
  title = "EN"
  bits = 0

  [[register.field]]
  title = "GAIN"
  bits = "3:1"
  texts = ["x1", "off (1)", "x2 (2)", "x2 (3)", "off (4)", "off (5)", "off (6)", "off (7)"]
  note = "x1: one"

  [[register.field]]
  title = "TAP2"
  bits = "11:8"

  [[register.field]]
  title = "TAP3"
  bits = "15:12"

[[register]]
title = "STAT"
address = 0x1
bits = ["EN", "GAIN2", "GAIN {1..2}", "-", "-", "-", "-", "TAP2 {0..3}", "TAP3 {0..3}"]
access = "read clears"
page = "ADC1"
note = "Say \"on\" & \\ go"

  [[register.field]]
  title = "GAIN2"
  bits = 1
  texts = ["x1", "off"]
  note = "x1: one"

  [[register.field]]
  title = "EN"
  bits = 0

  [[register.field]]
  title = "GAIN"
  bits = "3:1"
  texts = ["x1", "off (1)", "x2 (2)", "x2 (3)", "off (4)", "off (5)", "off (6)", "off (7)"]
  shares = true
  note = "x1: one"

  [[register.field]]
  title = "TAP2"
  bits = "11:8"

  [[register.field]]
  title = "TAP3"
  bits = "15:12"

[[register]]
title = "CH_A_LIMIT"
address = 0x4
width = 16
page = "ADC1"

[[register]]
title = "CH_A_FLAGS"
address = 0x5
width = 8
access = "write one clears"
page = "ADC1"

[[register]]
title = "CH_B_LIMIT"
address = 0x6
width = 16
page = "ADC1"

[[register]]
title = "CH_B_FLAGS"
address = 0x7
width = 8
access = "write one clears"
page = "ADC1"
)toml");
    EXPECT_EQ(notesOf(made),
              R"(map:13:7: "GAIN" of "STAT" has bits that another field has too. It shares them.
map:15:8: the value 2 of "x2" is left out. The field "GAIN2" has 1 bits.
map:18:7: reserved fields are left out: 2. This is the first one.)");
    EXPECT_EQ(chipOf(made)->registers.size(), 6U);
}

/// Both versions of IP-XACT, by the prefix and the namespace.
std::string component(std::string_view prefix, std::string_view uri, std::string body) {
    for (std::size_t at = 0; (at = body.find('~', at)) != std::string::npos;)
        body.replace(at, 1, fmt::format("{}:", prefix));
    return fmt::format("<{0}:component xmlns:{0}=\"{1}\"><{0}:name>core</{0}:name><{0}:memoryMaps>"
                       "<{0}:memoryMap><{0}:name>m</{0}:name>{2}</{0}:memoryMap></{0}:memoryMaps>"
                       "</{0}:component>",
                       prefix, uri, body);
}

constexpr const char* of2014 = "http://www.accellera.org/XMLSchema/IPXACT/1685-2014";
constexpr const char* of2009 = "http://www.spiritconsortium.org/XMLSchema/SPIRIT/1685-2009";

TEST(ImportMap, WritesTheBlocksOfAnIpXactComponent) {
    const std::string body = R"(
<~addressBlock><~name>regs</~name><~baseAddress>'h8</~baseAddress><~volatile>false</~volatile>
 <~register><~name>MODE</~name><~addressOffset>'h0</~addressOffset><~size>8</~size>
  <~volatile>true</~volatile>
  <~field><~name>run</~name><~bitOffset>0</~bitOffset><~resets><~reset><~value>1'b1</~value></~reset></~resets>
   <~bitWidth>1</~bitWidth><~modifiedWriteValue>oneToSet</~modifiedWriteValue></~field>
  <~field><~name>state</~name><~bitOffset>4</~bitOffset><~resets><~reset><~value>RESET_STATE</~value></~reset></~resets>
   <~bitWidth>4</~bitWidth><~access>read-only</~access><~readAction>modify</~readAction>
   <~enumeratedValues><~enumeratedValue><~name>idle</~name><~value>8'd3</~value></~enumeratedValue></~enumeratedValues></~field>
 </~register>
 <~registerFile><~name>lane</~name><~dim>2</~dim><~addressOffset>4</~addressOffset><~range>0x10</~range>
  <~register><~name>GO</~name><~dim>2</~dim><~addressOffset>2</~addressOffset><~size>16</~size>
   <~access>write-only</~access></~register>
 </~registerFile>
 <~register><~name>odd</~name><~addressOffset>BASE + 4</~addressOffset><~size>8</~size></~register>
</~addressBlock>)";
    const ImportedMap made = importMap(component("ipxact", of2014, body), "core.xml", {});
    EXPECT_EQ(made.text.substr(made.text.find("[word]")), R"toml([word]
# A register map does not know the words that carry it: fill in these keys.
# bits = ... # bits of a word, 1 to 64
# type = ... # SPI type, 1 to 8; without it 1
# address = ... # bits that carry the address, as "15:8"; at least 6
# data = ... # bits that carry the data, as "7:0"; at least 16
# write = ... # bits that are set in each write, as 0x8000
# read = ... # bits that are set in each read, as 0x8000

[[register]]
title = "MODE"
address = 0x8
bits = ["run", "-", "-", "-", "state {0..3}"]
reset = 0x1
volatile = true
page = "regs"
note = "run: oneToSet"

  [[register.field]]
  title = "run"
  bits = 0

  [[register.field]]
  title = "state"
  bits = "7:4"
  texts = ["0", "idle"]
  codes = [0x0, 0x3]
  note = "(read only)"

  [[register.view]]
  clears = true

[[register]]
title = "lane_0_GO_0"
address = 0xE
width = 16
access = "write only"
page = "regs"

[[register]]
title = "lane_0_GO_1"
address = 0x10
width = 16
access = "write only"
page = "regs"

[[register]]
title = "lane_1_GO_0"
address = 0x1E
width = 16
access = "write only"
page = "regs"

[[register]]
title = "lane_1_GO_1"
address = 0x20
width = 16
access = "write only"
page = "regs"
)toml");
    EXPECT_EQ(
        notesOf(made),
        R"(map:3:2: writes of "MODE" do more than set its bits. It is marked as volatile; its note names the fields.
map:7:116: `value` is no number: "RESET_STATE". The reset value is 0 instead.
map:15:2: the register "odd" is left out: `addressOffset` is no number: "BASE + 4". Write a number in place of the expression.)");
    // the file says itself what is missing
    const chips::ChipFile file = chips::readChip(made.text, "core.toml");
    EXPECT_EQ(chips::describe(file.problems, "core.toml"),
              "core.toml:6:1: `bits` is missing. Say how many bits a word has.\n"
              "core.toml:6:1: `address` is missing. Say which bits of a word carry the address, as "
              "\"15:8\"; at least 6.\n"
              "core.toml:6:1: `data` is missing. Say which bits of a word carry the data, as "
              "\"7:0\"; at least 16.\n"
              "core.toml:6:1: `write` and `read` are missing. Give the bits that are set in each "
              "write, in each read, or in both, as 0x8000.");
    // 2009: the reset value is that of the register, "#" is hexadecimal
    const ImportedMap older = importMap(
        component("spirit", of2009, R"(<~addressBlock><~name>b</~name><~baseAddress>0</~baseAddress>
 <~register><~name>ID</~name><~addressOffset>#1F</~addressOffset><~size>8</~size><~access>read-only</~access>
  <~reset><~value>0xFFA</~value><~mask>#F0</~mask></~reset></~register></~addressBlock>)"),
        "old.xml", wordOptions());
    EXPECT_EQ(older.text.substr(older.text.find("[[")),
              "[[register]]\ntitle = \"ID\"\naddress = 0x1F\nwidth = 8\nreset = 0xF0\n"
              "access = \"read only\"\npage = \"b\"\n");
    chipOf(older);
}

/// A register of a peripheral P as SVD.
std::string registerText(const std::string& name, int offset, std::string_view more = {}) {
    return fmt::format("<register><name>{}</name><addressOffset>{}</addressOffset>{}</register>\n",
                       name, offset, more);
}
std::string device(const std::string& registers) {
    return fmt::format(
        "<device><name>D</name><size>16</size><peripherals><peripheral><name>P</name>"
        "<baseAddress>0</baseAddress><registers>\n{}</registers></peripheral>"
        "</peripherals></device>",
        registers);
}

TEST(ImportMap, AdaptsWhatAChipFileCannotExpress) {
    constexpr const char* wide =
        "<size>32</size><resetValue>0xFFFFFFFF</resetValue><fields><field><name>b</"
        "name><bitOffset>3</bitOffset></field></fields>";
    const ImportedMap made = importMap(
        device(
            registerText(
                "A", 0,
                "<fields><field><name>W</name><bitRange>[0:0]</bitRange></field>"
                "<field><name>w</name><bitRange>[1:1]</bitRange></field>"
                "<field><name>far</name><bitRange>[16:15]</bitRange></field>"
                "<field><name>\xE6\x97\xA5{1}</name><bitRange>[2:2]</bitRange></field></fields>") +
            registerText("a", 1) + registerText("A_b", 2) +
            registerText(
                "List", 3,
                "<fields><field><name>Commands</name><bitOffset>0</bitOffset></field></fields>") +
            registerText("WIDE", 4, wide) + registerText("LONG", 5, "<size>128</size>") +
            registerText("FAR", 64) + registerText("IN", 6, "<access>read-only</access>") +
            registerText("OUT", 6, "<access>write-only</access>") + registerText("TWICE", 6) +
            registerText("PART", 9) + registerText("PORT", 9, "<access>writeOnce</access>") +
            registerText("BELL", 7, "<description>a\x01 \x7F \xFF</description>")),
        "odd.svd", wordOptions());
    EXPECT_EQ(
        notesOf(made),
        R"t(map:2:65: the field "W" of "A" became "W_2". Titles and the names of controls differ from each other.
map:2:120: the field "w" of "A" became "w_3". Titles and the names of controls differ from each other.
map:2:175: the field "far" is left out: it has bits beyond the register "A". The register has 16 bits.
map:2:234: the field "日{1}" of "A" became "___(1)". Titles and the names of controls differ from each other.
map:3:1: "a" became "a_2". Titles and the names of controls differ from each other.
map:5:68: the field "Commands" of "List" became "Commands_2". Titles and the names of controls differ from each other.
map:6:1: "WIDE" is shortened from 32 to 16 bits. No field is beyond them.
map:6:1: the reset value of "WIDE" is shortened to 16 bits. It had more.
map:7:1: "LONG" is left out: it has 128 bits. Up to 16 bits are possible.
map:8:1: "FAR" is left out: its address 0x40 has more than 6 bits. Give more bits to --address, or a --base or --step.
map:11:1: "TWICE" is left out: it has the address of "IN". Describe it as fields with `shares` there.
map:13:1: "PORT" is left out: it has the address of "PART". Describe it as fields with `shares` there.
map:14:1: the description of "BELL" was changed. It was too long, or had characters that cannot be shown.)t");
    const chips::ChipPtr chip = chipOf(made);
    std::string titles;
    for (const chips::Register& any : chip->registers)
        titles += any.title + " ";
    EXPECT_EQ(titles, "A a_2 A_b List WIDE IN OUT PART BELL ");
}

TEST(ImportMap, StaysWithinTheLimitsOfAChipsFile) {
    constexpr const char* many =
        "<dim>5000</dim><dimIncrement>1</dimIncrement><fields><field><name>F%s</name><dim>16</dim>"
        "<dimIncrement>1</dimIncrement><bitOffset>0</bitOffset><description>a flag</description>"
        "</field></fields>";
    ImportOptions options = wordOptions();
    options.word.bits = 64;
    options.word.address = chips::BitList::range(16, 16);
    options.word.write = std::uint64_t{1} << 63;
    const ImportedMap made = importMap(device(registerText("R%s", 0, many)), "big.svd", options);
    EXPECT_LE(made.text.size(), chips::longestFile);
    EXPECT_EQ(
        notesOf(made),
        "map: descriptions are left out, and single bits are captions alone. A chip's file has "
        "up to 1 MiB: choose peripherals with --only.\n"
        "map:2:1: the registers from \"R4096\" on are left out: a chip's file has up to 4096. "
        "Choose peripherals with --only.");
    EXPECT_EQ(chipOf(made)->registers.size(), 4096U);

    // 600 registers with all that they have
    std::string registers;
    for (int i = 0; i < 600; ++i)
        registers +=
            registerText(fmt::format("R{}", i), i,
                         "<description>One</description><resetValue>0x1234</resetValue>"
                         "<fields><field><name>MODE</name><bitRange>[7:4]</bitRange>"
                         "<enumeratedValues><enumeratedValue><name>off</name><value>0</value>"
                         "</enumeratedValue><enumeratedValue><name>on</name><value>0xA</value>"
                         "</enumeratedValue></enumeratedValues></field></fields>");
    const ImportedMap large = importMap(device(registers), "large.svd", options);
    EXPECT_EQ(notesOf(large), "");
    const chips::ChipPtr chip = chipOf(large);
    ASSERT_EQ(chip->registers.size(), 600U);
    const chips::Register& last = chip->registers.back();
    EXPECT_EQ(last.title, "R599");
    EXPECT_EQ(last.address, 599U);
    EXPECT_EQ(last.reset, 0x1234U);
    EXPECT_EQ(last.note, "One");
    EXPECT_EQ(last.fields.at(0).choices.at(1).code, 0xAU);
    EXPECT_EQ(last.fields.at(0).bits.text(), "7:4");
}

} // namespace
} // namespace bitlux::test
