#include "chips/chip_library.h"
#include "chips/chip_reader.h"
#include "chips/embedded_chips.h"
#include "support/temporary_folder.h"
#include "support/test_bench.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using chips::ChipFile;
using chips::ChipPtr;
using chips::Operation;

// Line 1 is the empty one.
constexpr std::string_view lamp = R"(
[chip]
title = "Lamp driver"
name = "lamp"
[word]
bits = 16
address = "13:12"
data = "11:0"
write = 0x4000
[[register]]
title = "Lamp"
address = 0
bits = ["-", "L{0..9}", "Blink"]
[[register.field]]
title = "Brightness"
bits = "2:1"
texts = ["off", "dim", "half", "full"]
[[register.field]]
title = "Blink"
bits = 11
[[register]]
title = "Time"
address = 3
width = 4
)";

/// The lamp with one piece of its file replaced by another.
std::string changed(std::string_view piece, std::string_view by) {
    std::string text(lamp);
    const std::size_t at = text.find(piece);
    if (at == std::string::npos)
        throw std::logic_error(fmt::format("the lamp has no {}", piece));
    return text.replace(at, piece.size(), by);
}

std::string problemsOf(const std::string& text) {
    const ChipFile file = chips::readChip(text, "lamp.toml");
    EXPECT_EQ(file.chip == nullptr, !file.problems.empty());
    return chips::describe(file.problems, "lamp.toml");
}

ChipPtr read(const std::string& text) {
    const ChipFile file = chips::readChip(text, "lamp.toml");
    if (!file.chip)
        throw std::runtime_error(chips::describe(file.problems, "lamp.toml"));
    return file.chip;
}

TEST(ChipReader, ReportsPlaceFaultAndAdvice) {
    // A piece, what takes its place, and the problems without the name of the file.
    const std::tuple<std::string_view, std::string_view, std::string_view> cases[] = {
        // the text
        {"bits = 16", "bits = = 16",
         "6:8: an equals sign is inside a value. Put quotes around the value, or remove this "
         "one."},
        {"title = \"Time\"", "a.b.c.d.e.f.g.h.i.j = 1",
         "22:2: tables lie too deep in each other. Put fewer dots into this key."},
        {"bits = 16", "bits = 16 \u2126",
         "6:11: this character is outside a text. Put it into quotes, or remove it."},
        {"bits = 16", "bits = 16\"\"",
         "6:10: a quote is inside a key or a value. Put quotes around all of it, or remove "
         "this one."},
        {"bits = 16", "bits = 16[\"\u2126\"]",
         "6:10: a bracket is inside a key or a value. Put quotes around all of it, or remove "
         "this one."},
        {"bits = 16", "bits = ,16",
         "6:8: Error while parsing key-value pair: expected value, saw ','. Correct the TOML text "
         "at this place."},
        {"[word]", "[world]",
         "1:1: `[word]` is missing. Every chip's file has it.\n"
         "5:2: there is no key `world` here. Did you mean word?"},
        // keys and kinds of values
        {"address = 3", "adress = 3",
         "21:1: `address` is missing. Say where the register is.\n"
         "23:1: there is no key `adress` here. Did you mean address, access?"},
        {"title = \"Time\"", "title = 5", "22:9: `title` is no text. Put it into quotes."},
        {"title = \"Time\"", "title = \"\"", "22:9: `title` is empty. Say something in it."},
        {"title = \"Time\"", "title = \"T\\u001b[2J\"",
         "22:9: `title` has a control character. Leave it out."},
        {"width = 4", "width = 65",
         "24:9: `width` is no whole number from 1 to 64. Give one in this range."},
        {"width = 4", "access = \"read\"\nwidth = 4",
         "24:10: `access` has no such value. Choose one of: read write, read only, write only, "
         "read clears, write one clears."},
        {"width = 4", "row = \"Time W\"\nwidth = 4",
         "24:7: `row` is no name of a control. Write it as \"Name\" or \"Name(3)\", of letters, "
         "digits and underscores."},
        {"width = 4", "width = 4\none = 0x80000005",
         "25:7: a one and a zero look the same. Give them colours that differ."},
        {"\"11:0\"", "\"0:11\"",
         "8:8: `data` names no bits. Write the highest bit first, as \"7:5\" or \"2:0,4:3\", each "
         "from 0 to 63."},
        {"address = 3", "address = -3",
         "23:11: `address` is no whole number of 0 or more. Write it as 64 or 0x40."},
        {"name = \"lamp\"", "name = \"my lamp\"",
         "4:8: \"my lamp\" is no name for a chip. Give it a `name` of up to 64 letters, digits, - "
         "and _."},
        // words
        {"bits = 16", "bits = 12",
         "5:1: `address` has bit 13, but a word ends with bit 11. Name bits of the word.\n"
         "5:1: `write` has more than 12 bits. Leave out what no word carries."},
        {"\"13:12\"", "\"13:11\"", "5:1: address and data lie on the same bits. Part them."},
        {"0x4000", "0x5000",
         "5:1: `write` has bits of the address, the data or the check. Use only bits that "
         "distinguish operations."},
        {"write = 0x4000", "read = 0",
         "5:1: `read` and `write` are the same word, as for \"Lamp\". Give each operation bits of "
         "its own."},
        {"bits = 16", "bits = 15\npacked = true",
         "5:1: words of 15 bits cannot be packed. Packed words have 8, 16, 24, 32 or 40 bits."},
        {"write = 0x4000",
         "write = 0x4000\ncheck = { kind = \"crc\", over = \"15:13\", place = 12, polynomial = 3 }",
         "10:9: the check shares bits with the address or the data. Give it bits of its own.\n"
         "10:9: the CRC's numbers do not fit its place. Give the polynomial without its highest "
         "term, in as many bits as the place has."},
        {"write = 0x4000", "write = 0x4000\nfetch = 0",
         "10:9: no answer has to be fetched. Remove `fetch`, or say `answer = \"next word\"`."},
        // registers
        {"address = 3", "address = 4",
         "21:1: address 4 does not fit into 2 bits. Give a smaller one, or more bits to `address` "
         "of `[word]`."},
        {"address = 3", "address = 0",
         "21:1: \"Time\" is written by the words of \"Lamp\" in line 10. Give them different "
         "addresses.\n"
         "21:1: \"Read\" of \"Time\" is read by the word of the view in line 10. Give it another "
         "`address` or `extra`."},
        {"width = 4", "width = 13",
         "21:1: the register has 13 bits, but a word carries 12 bits of data. Shorten it, or give "
         "more bits to `data` of `[word]`."},
        {"width = 4", "width = 4\nreset = 16",
         "21:1: the reset value has more than 4 bits. Give one that fits."},
        {"width = 4", "width = 4\nbits = [\"{0..2}\"]",
         "25:8: there are 3 captions for 4 bits. Give one for each bit, bit 0 first, or remove "
         "`width`."},
        {"width = 4", "",
         "21:1: `bits` is missing. List the captions of the bits, bit 0 first, or give their "
         "`width`."},
        {"width = 4", "width = 4\naccess = \"read only\"\nwrite = { title = \"Set\" }",
         "26:9: a register that is only read has no `write`. Remove it, or give the register "
         "another `access`."},
        {"width = 4", "width = 4\nwrite = { reply = \"Timer\" }",
         "21:1: no view shows \"Timer\". Name the register, or the view, whose row shows the "
         "answer to a write."},
        // fields
        {"\"2:1\"", "\"12:11\"",
         "14:1: bit 12 is outside the register, which has 12. Name bits of the register.\n"
         "18:1: \"Brightness\" in line 14 has the bits 11 as well. Name other bits, or say `shares "
         "= true` when both are meant."},
        {"\"full\"]", "\"full\", \"burning\"]",
         "14:1: the value 4 of \"burning\" does not fit into 2 bits. Give fewer texts or smaller "
         "codes, or more bits to the field."},
        {"\"dim\", \"half\", \"full\"]", "]",
         "14:1: the field has one text. Give one for each value."},
        {"\"full\"]", "\"full\"]\ncodes = [0, 1]",
         "18:9: there are 4 texts and 2 codes. Give a code for each text, or none when they count "
         "from 0."},
        {"bits = 11", "bits = 11\nwhen = \"Lamp_Brigthness(1)\"",
         "18:1: there is no box Lamp_Brigthness(1). Did you mean Lamp_Brightness(1), "
         "Lamp_Brightness(0), Lamp_Brightness(2)?"},
        {"bits = 11", "bits = 11\ngate = \"Lamp_Brightness(1)\"",
         "18:1: Lamp_Brightness(1) is no box. Name one."},
        // names
        {"title = \"Time\"", "title = \"LAMP\"\naccess = \"write only\"\nrow = \"\"",
         "21:1: the control Cm_LAMP_W is there as Cm_Lamp_W already, by line 10. Give it another "
         "name, or another title when it has none.\n"
         "21:1: the control Seq_LAMP_W is there as Seq_Lamp_W already, by line 10. Give it another "
         "name, or another title when it has none."},
        {"width = 4", "width = 4\nrow = \"Seq_Lamp_W\"",
         "21:1: the control Seq_Lamp_W(0) is there already, by line 10. Give it another name, or "
         "another title when it has none."},
        {"width = 4", "width = 4\nwrite = { line = \"Lamp Write\" }",
         "21:1: the line \"Lamp Write\" of a sequence is there twice. Give it another name with "
         "`line`."},
        {"[[register]]", "[[command]]\ntitle = \"Run Seq\"\nword = 0x1FFFF\n[[register]]",
         "10:1: the control Cm_Run_Seq is there in every panel. Give it another name, or another "
         "title when it has none.\n"
         "10:1: the word of the command has more than 16 bits. Leave out what no word carries."},
        {"width = 4", "width = 4\n[[read_all]]\npress = [\"Cm_Lamp_R\", \"Cm_Tine_R\"]",
         "25:1: there is no button Cm_Tine_R. Did you mean Cm_Time_R, Cm_Time_W, Cm_Lamp_R?"},
        {"width = 4", "width = 4\n[panel]\npages = [{ title = \"A\", shows = \"diagram\" }]",
         "25:1: nothing is called \"diagram\". A page shows \"registers\", \"flags\", "
         "\"sequence\" or \"automatic reads\"."},
        {"width = 4",
         "width = 4\n[automatic_reads]\npress = [\"Cm_Lamp_R\", \"Cm_Tine_R\"]\n"
         "switches = [0, 2]\ngroup = { box = 2, title = \"All\", ticks = \"9:0\" }",
         "25:1: box 0 of the automatic reads has two uses. Give each its own; those of the reads "
         "are counted by `press`, from 0.\n"
         "25:1: box 2 of the automatic reads has two uses. Give each its own; those of the reads "
         "are counted by `press`, from 0.\n"
         "25:1: there is no button Cm_Tine_R. Did you mean Cm_Time_R, Cm_Time_W, Cm_Lamp_R?\n"
         "25:1: there is no box 9. Name boxes that are there."},
        {"width = 4", "width = 4\n[automatic_reads]\nlost = 9\nnote = { box = 8, text = \"?\" }",
         "25:1: there is no box 9. Name boxes that are there."},
        {"width = 4",
         "width = 4\n[sequence]\nstops = {}\neditor = { list = \"Times\" }\n"
         "trigger = { box = 2 }\n[[command]]\ntitle = \"PassCondition1\"\nword = 7",
         "25:1: the value that is edited and the trigger line have one box. Give each its own "
         "`box`.\n"
         "25:1: there is no part that has the controls of `editor` and `trigger`. Leave `list`, "
         "`button` and `label` out.\n"
         "29:1: the control Cm_PassCondition1 is there already, by line 25. Give it another name, "
         "or another title when it has none."},
        {"width = 4",
         "width = 4\n[panel]\npages = [{ title = \"A\", shows = \"automatic reads\" }]",
         "25:1: nothing is read by itself. Add `[automatic_reads]`, or leave the page out."},
        {"width = 4", "width = 4\n[[register.view]]\ntitle = \"R\"\npage = \"Lamps\"",
         "25:1: there is no page \"Lamps\". Name a page of a register or of a command, or leave "
         "`page` out."},
        {"width = 4", "width = 4\nwrite = { line = \"\u03a9\" }",
         "21:1: no file of a sequence can hold \"\u03a9\". Name the line with `line`, in "
         "characters of Windows-1252."},
        {"[[register]]",
         "[word.status]\nsum = [{ bit = 16, of = [\"Lamp_R\", \"Lamp_R(4..3)\"] }]\n[[register]]",
         "11:8: \"Lamp_R(4..3)\" names no controls. Write it as \"Name\", \"Name(3)\" or "
         "\"Name(4..7)\"."},
        {"[[register]]", "[word.status]\nsum = { bit = 16, of = \"Lamp_R\" }\n[[register]]",
         "11:7: a word has no bit 16. Name a bit of it.\n"
         "11:7: no view of flags has the labels Lamp_R. Name labels of its row on the panel."},
        {"[[register]]",
         "[[command]]\ntitle = \"A\"\ngives_back = { register = \"Time\", value = 16 }\n"
         "[[command]]\ntitle = \"B\"\ngives_back = { register = \"Tune\" }\n[[register]]",
         "10:1: \"Time\" has 4 bits. Name bits of it.\n"
         "13:1: \"Tune\" cannot be given back. Name a register of the same form that has a row "
         "and is read and written."},
        // what is written in short
        {"\"Time\"", "\"Time {0..1}\"",
         "22:9: a range of numbers is given where one text is expected. Put it into a list, as "
         "[\"SG{0..15}\"]."},
        {"L{0..9}", "L{9..0}",
         "13:14: \"L{9..0}\" is no range of up to 64 numbers. Write the lower number first."},
        {"L{0..9}", "L{0..4}{0..1}",
         "13:14: \"L{0..4}{0..1}\" has two ranges. Write one of them out."},
        {"title = \"Time\"", "repeat = { n = [1, 2], m = [1] }\ntitle = \"Time {n}\"",
         "22:10: `repeat` wants lists that are equally long. Write it as { n = [0, 1], name = "
         "[\"A\", \"B\"] }."},
        {"title = \"Time\"", "repeat = { n = [1, 2] }\ntitle = \"Time {m}\"",
         "23:9: no list of `repeat` is called `m`. Name one of its lists between the braces."},
    };
    EXPECT_EQ(problemsOf(std::string(lamp)), "");
    for (const auto& [piece, by, problems] : cases) {
        std::string found = problemsOf(changed(piece, by));
        for (std::size_t at = 0; (at = found.find("lamp.toml:", at)) != std::string::npos;)
            found.erase(at, 10);
        EXPECT_EQ(found, problems) << piece << " -> " << by;
    }
}

TEST(ChipReader, DerivesWhatAFileLeavesOut) {
    const ChipPtr chip = read(std::string(lamp));
    EXPECT_EQ(chip->panel.form, "Panel_lamp");
    EXPECT_EQ(chip->registerPages(), (std::vector<std::string>{"Lamp", "Time"}));
    const chips::Register& one = chip->registers[0];
    EXPECT_EQ(one.width(), 12);
    EXPECT_EQ(one.row.captions[10], "L9");
    EXPECT_EQ(text(one.writeButton), "Cm_Lamp_W");
    EXPECT_EQ(one.writeLine.name, "Lamp Write");
    EXPECT_EQ(one.fields[0].kind, chips::Field::Kind::Options);
    EXPECT_EQ(text(one.fields[0].control), "Lamp_Brightness(0)");
    EXPECT_EQ(one.fields[1].kind, chips::Field::Kind::Box);
    EXPECT_EQ(one.fields[1].choices[0].code, 1U);
    ASSERT_EQ(one.views.size(), 1U);
    EXPECT_EQ(text(one.views[0].row.first), "Lamp_R(0)");
    EXPECT_EQ(chip->registers[1].row.captions, (std::vector<std::string>{"0", "1", "2", "3"}));
    // bits that only show something have no control
    EXPECT_FALSE(read(changed("texts = [\"off\", \"dim\", \"half\", \"full\"]", ""))
                     ->registers[0]
                     .fields[0]
                     .control.exists());
    const ChipPtr status = read(changed("address = 0", "address = 0\naccess = \"read clears\""));
    EXPECT_FALSE(status->registers[0].fields[0].control.exists());
    EXPECT_FALSE(status->registers[0].writeButton.exists());
    EXPECT_TRUE(status->registers[0].views[0].clears);
}

TEST(ChipReader, RepeatsATableOverParallelLists) {
    const ChipPtr chip = read(changed("[[register]]\ntitle = \"Time\"\naddress = 3",
                                      R"([[register]]
repeat = { n = ["{1..2}"], at = [2, 3], bits = [["a", "b"], ["c{0..2}"]] }
title = "Time {n}"
address = "{at}"
bits = "{bits}"
[[register.view]]
repeat = { which = ["Low", "High"], extra = [0, 1] }
title = "{which} {n}"
extra = "{extra}"
[[register]]
title = "Last"
address = 1)"));
    ASSERT_EQ(chip->registers.size(), 4U);
    const chips::Register& second = chip->registers[2];
    EXPECT_EQ(second.title, "Time 2");
    EXPECT_EQ(second.address, 3U);
    EXPECT_EQ(second.row.captions, (std::vector<std::string>{"c0", "c1", "c2"}));
    EXPECT_EQ(second.views[1].title, "High 2");
    EXPECT_EQ(second.views[1].extra, 1U);
}

TEST(ChipReader, SurvivesAnyFile) {
    const auto first = [](const std::string& text) {
        const std::string all = problemsOf(text);
        return all.substr(0, all.find('\n'));
    };
    std::string blocks;
    for (int i = 0; i < 4096; ++i)
        blocks += fmt::format("[[register]]\ntitle=\"R{0}\"\naddress={0}\nwidth=1\n", i);
    const std::string head =
        "[chip]\ntitle=\"x\"\n[word]\nbits=16\naddress=\"13:1\"\ndata=0\nwrite=0x4000\n";
    EXPECT_EQ(first(head + blocks), "");
    EXPECT_EQ(first(head + blocks + "[[register]]\ntitle=\"one more\"\naddress=5000\nwidth=1\n"),
              "lamp.toml:16392:1: there are more than 4096 registers. Part the chip into several "
              "files.");
    EXPECT_NE(first("a=" + repeated(200'000, '[')).find("TOML_MAX_NESTED_VALUES"),
              std::string::npos);
    // tables in tables by dots, after a text that ends in two quotes of its own
    std::string dots;
    for (int i = 0; i < 200'000; ++i)
        dots += ".a";
    for (const std::string before : {"a", "[a", "x={y=\"\"\"z\"\"\"\"\", a", "x='''y\n''''', a"})
        EXPECT_NE(first(before + dots).find("Put fewer dots"), std::string::npos) << before;
    EXPECT_EQ(first("x = \"a" + dots + "\" # " + dots + "\ny = 1.5"),
              "lamp.toml:1:1: `[chip]` is missing. Every chip's file has it.");
    // a repeat in a repeat in a repeat
    std::string many = "1";
    for (int i = 0; i < 999; ++i)
        many += ",1";
    const std::string nested =
        fmt::format("[[a]]\nrepeat={{n=[{0}]}}\n[[a.b]]\nrepeat={{n=[{0}]}}\n[[a.b.c]]\n"
                    "repeat={{n=[{0}]}}\nx=\"{{n}}\"\n",
                    many);
    EXPECT_NE(problemsOf(nested).find("the file says too much once it is written out"),
              std::string::npos);
    // no more problems than a user can read
    std::string unknown = head;
    for (int i = 0; i < 1000; ++i)
        unknown += fmt::format("k{} = 1\n", i);
    const std::string all = problemsOf(unknown);
    EXPECT_EQ(std::count(all.begin(), all.end(), '\n'), 200);

    const TemporaryFolder folder;
    const auto of = [&folder](const std::string& name) {
        return chips::describe(chips::readChipFile(folder.path(name)).problems, name);
    };
    folder.write("long.toml", repeated(1024 * 1024 + 1, '#'));
    folder.write("full.toml", repeated(1024 * 1024, '#'));
    EXPECT_EQ(of("long.toml"),
              "long.toml: the file is longer than 1 MiB. Part the chip into several files.");
    EXPECT_EQ(of("full.toml").find("full.toml:1:1: `[chip]` is missing"), 0U);
    EXPECT_EQ(of("none.toml"),
              "none.toml: there is no such file. Check its name and that you may read it.");
    EXPECT_EQ(of(""), ": there is no such file. Check its name and that you may read it.");
}

TEST(WordFormat, MakesAndKnowsWords) {
    const auto format = [](const std::string& section) {
        return read(changed("bits = 16\naddress = \"13:12\"\ndata = \"11:0\"\nwrite = 0x4000",
                            section))
            ->word;
    };
    // bits that lie apart, and flags
    const chips::WordFormat apart =
        format("bits = 16\naddress = \"1:0,15\"\ndata = \"14:3\"\nwrite = 4\nflags = 0");
    EXPECT_EQ(apart.word(Operation::Write, 0b101, 0xABC), 0xABC * 8U + 4 + 0x8002U);
    EXPECT_EQ(apart.operationOf(0xFFFC), Operation::Write);
    EXPECT_EQ(apart.operationOf(0x7FFB), Operation::Read);
    // parity over all other bits
    const std::string parity = "bits = 16\naddress = \"13:12\"\ndata = \"11:0\"\nwrite = 0x4000\n"
                               "check = { kind = \"{0}\", over = \"14:0\", place = 15 }";
    const auto even = format(std::string(parity).replace(parity.find("{0}"), 3, "even parity"));
    const auto odd = format(std::string(parity).replace(parity.find("{0}"), 3, "odd parity"));
    EXPECT_EQ(even.word(Operation::Write, 3, 0), 0xF000U);
    EXPECT_EQ(odd.word(Operation::Write, 3, 0), 0x7000U);
    EXPECT_EQ(odd.word(Operation::Read, 0, 0), 0x8000U);
    EXPECT_EQ(odd.operationOf(0x8000), Operation::Read);
    // CRC-8 with polynomial 07 over the bytes 31 32 33 34, plain and otherwise
    const std::string crc = "bits = 40\naddress = \"39:38\"\ndata = \"19:8\"\nwrite = 0x{:X}\n"
                            "check = {{ kind = \"crc\", over = \"39:8\", place = \"7:0\", "
                            "polynomial = 7{} }}";
    const auto crcOf = [&](const char* more) {
        return format(fmt::format(fmt::runtime(crc), 0x3132300000ULL, more))
                   .word(Operation::Write, 0, 0x334) &
               0xFF;
    };
    EXPECT_EQ(crcOf(""), 0xC2U);
    EXPECT_EQ(crcOf(", start = 0xFF, invert = 0xFF"), 0xECU);
}

TEST(EmbeddedChips, EqualTheirFiles) {
    for (const chips::EmbeddedChip& any : chips::embeddedChips()) {
        const std::string name(any.name);
        EXPECT_EQ(any.text, contentOf(fmt::format(BITLUX_SOURCE "/src/chips/data/{}.toml", name)));
        EXPECT_EQ(chips::embeddedChip(name)->name, name);
    }
}

/// The words of a register, as the data sheet has them.
void expectWords(const chips::Chip& chip, const char* title, std::uint64_t value,
                 std::uint64_t write, std::uint64_t read, std::uint64_t reset) {
    const chips::Register* found = chip.find(title);
    ASSERT_NE(found, nullptr) << title;
    EXPECT_EQ(chip.word.word(Operation::Write, found->address, value), write) << title;
    EXPECT_EQ(chip.word.word(Operation::Read, found->views[0].address, 0), read) << title;
    EXPECT_EQ(found->reset, reset) << title;
}

TEST(ExampleChips, HaveTheWordsOfTheirDataSheets) {
    const auto example = [](const char* name) {
        const std::string file = fmt::format(BITLUX_SOURCE "/examples/chips/{}.toml", name);
        const ChipFile found = chips::readChipFile(file);
        EXPECT_EQ(chips::describe(found.problems, file), "");
        EXPECT_EQ(chips::describe(chips::problemsOfUsersChip(*found.chip), file), "");
        return found.chip;
    };
    const ChipPtr expander = example("mcp23s17");
    EXPECT_EQ(expander->registers.size(), 21U);
    EXPECT_EQ(expander->word.bits, 24);
    EXPECT_EQ(expander->word.type, 1);
    expectWords(*expander, "IODIRA", 0x0F, 0x40000F, 0x410000, 0xFF);
    expectWords(*expander, "IODIRB", 0x0F, 0x40010F, 0x410100, 0xFF);
    expectWords(*expander, "IOCON", 0x20, 0x400A20, 0x410A00, 0);
    expectWords(*expander, "GPPUB", 0xFF, 0x400DFF, 0x410D00, 0);
    expectWords(*expander, "INTCAPB", 0, 0x401100, 0x411100, 0);
    expectWords(*expander, "OLATB", 0xA5, 0x4015A5, 0x411500, 0);

    const ChipPtr meter = example("adxl345");
    EXPECT_EQ(meter->registers.size(), 30U);
    EXPECT_EQ(meter->word.bits, 16);
    EXPECT_EQ(meter->word.type, 4);
    expectWords(*meter, "DEVID", 0, 0x0000, 0x8000, 0xE5);
    expectWords(*meter, "THRESH_TAP", 0x30, 0x1D30, 0x9D00, 0);
    expectWords(*meter, "BW_RATE", 0x0F, 0x2C0F, 0xAC00, 0x0A);
    expectWords(*meter, "POWER_CTL", 0x08, 0x2D08, 0xAD00, 0);
    expectWords(*meter, "INT_SOURCE", 0, 0x3000, 0xB000, 0x02);
    expectWords(*meter, "DATAZ1", 0, 0x3700, 0xB700, 0);
    expectWords(*meter, "FIFO_STATUS", 0, 0x3900, 0xB900, 0);
}

} // namespace
} // namespace bitlux::test
