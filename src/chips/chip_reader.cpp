#include "chips/chip_reader.h"

#include "chips/document.h"
#include "chips/panel_reader.h"
#include "chips/register_reader.h"
#include "chips/sequence_reader.h"
#include "chips/table_reader.h"
#include "chips/validate.h"
#include "platform/documents/parser_guard.h"

#include <algorithm>
#include <bit>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr std::size_t mostNodes = 1'000'000;
constexpr int mostWordBits = 64;
constexpr int spiTypes = 8;
constexpr std::size_t mostProblems = 200;

WordCheck readCheck(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    constexpr std::array kinds{WordCheck::Kind::EvenParity, WordCheck::Kind::OddParity,
                               WordCheck::Kind::Crc};
    WordCheck check;
    check.at = table.at();
    check.kind = kinds.at(
        static_cast<std::size_t>(table.oneOf("kind", {"even parity", "odd parity", "crc"})));
    check.over = table.bits("over").value_or(BitList());
    check.place = table.bits("place").value_or(BitList());
    check.polynomial = table.word("polynomial").value_or(0);
    check.start = table.word("start").value_or(0);
    check.invert = table.word("invert").value_or(0);
    for (const char* key : {"polynomial", "start", "invert"})
        if (check.kind != WordCheck::Kind::Crc && table.has(key))
            table.problem(table.at(key), fmt::format("parity has no `{}`", key),
                          "Remove it, or say `kind = \"crc\"`.");
    return check;
}

void readStatus(const Node& node, WordFormat& word, Problems& problems) {
    TableReader table(node, problems);
    word.status = readRow(table, {}, {.name = "Status", .index = 0});
    word.statusFirst = table.number("first_bit", 0, 0, mostWordBits - 1);
    word.statusOfRead = table.bits("of_read").value_or(BitList());
    for (const Node* sum : table.tables("sum")) {
        TableReader entry(*sum, problems);
        entry.require("bit", "Say which bit of an answer it is.");
        word.sums.push_back({.bit = entry.number("bit", 0, 0, mostWordBits - 1),
                             .of = entry.ranges("of"),
                             .at = entry.at()});
    }
}

WordFormat readWord(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    WordFormat word;
    word.at = table.at();
    table.require("bits", "Say how many bits a word has.");
    word.bits = table.number("bits", word.bits, 1, mostWordBits);
    word.type = static_cast<std::int16_t>(table.number("type", word.type, 1, spiTypes));
    word.packed = table.truth("packed", false);
    word.address = table.bits("address").value_or(BitList());
    word.data = table.bits("data").value_or(BitList());
    word.write = table.word("write").value_or(0);
    word.read = table.word("read").value_or(0);
    word.flags = table.word("flags");
    word.answersNext = table.oneOf("answer", {"same word", "next word"}) == 1;
    word.fetch = table.word("fetch");
    if (word.fetch && !word.answersNext)
        table.problem(table.at("fetch"), "no answer has to be fetched",
                      "Remove `fetch`, or say `answer = \"next word\"`.");
    if (table.has("check"))
        word.check = readCheck(table.section("check"), problems);
    if (table.has("status"))
        readStatus(table.section("status"), word, problems);
    return word;
}

/// Bits that a number takes.
int bitsOf(std::uint64_t number) {
    return std::max(1, static_cast<int>(std::bit_width(number)));
}

/// Whether some register is written and read by the same word while no bits distinguish the two.
bool needsConstants(const Chip& chip) {
    return std::any_of(chip.registers.begin(), chip.registers.end(), [](const Register& any) {
        return any.writable() && any.neverWritten == 0 && any.alwaysWritten == 0 &&
               std::any_of(any.views.begin(), any.views.end(), [&any](const View& view) {
                   return view.operation == Operation::Read && view.extra == 0 &&
                          view.address == any.address;
               });
    });
}

/// Reports the keys of `[word]` that are missing and without which no word carries the registers.
void requireForRegisters(const Node& node, const Chip& chip, Problems& problems) {
    if (node.table() == nullptr || chip.registers.empty())
        return;
    std::uint64_t address = 0;
    int width = 1;
    for (const Register& any : chip.registers) {
        address = std::max(address, any.address);
        width = std::max(width, any.width());
    }
    const auto missing = [&](const char* text, std::string advice) {
        problems.push_back({node.at, text, std::move(advice)});
    };
    if (address > 0 && node.find("address") == nullptr)
        missing("`address` is missing",
                fmt::format("Say which bits of a word carry the address, as \"15:8\"; at least {}.",
                            bitsOf(address)));
    if (node.find("data") == nullptr)
        missing("`data` is missing",
                fmt::format("Say which bits of a word carry the data, as \"7:0\"; at least {}.",
                            width));
    if (node.find("write") == nullptr && node.find("read") == nullptr && needsConstants(chip))
        missing("`write` and `read` are missing",
                "Give the bits that are set in each write, in each read, or in both, as 0x8000.");
}

GivenBack readGivenBack(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    return {.owner = table.required("register"),
            .inverted = table.bits("inverted").value_or(BitList()),
            .value = table.word("value").value_or(0)};
}

Command readCommand(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Command command;
    command.at = table.at();
    command.title = table.required("title");
    if (table.has("gives_back"))
        command.givenBack = readGivenBack(table.section("gives_back"), problems);
    else
        table.require("word", "Say what the command sends.");
    command.word = table.word("word");
    const std::string name = identifier(command.title);
    command.button = table.control("button", {.name = "Cm_" + name});
    command.line = readLine(table, command.title, {.name = "Seq_" + name});
    command.page = table.text("page", "Commands");
    command.group = table.text("group");
    command.form = table.text("form");
    command.note = table.text("note");
    return command;
}

ReadAll readReadAll(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    constexpr std::array failures{ReadAll::Failure::Ends, ReadAll::Failure::EndsAfterFirst,
                                  ReadAll::Failure::EndsUnanswered, ReadAll::Failure::GoesOn};
    ReadAll group;
    group.at = table.at();
    group.title = table.text("title", "Read all");
    group.group = table.text("group");
    group.page = table.text("page");
    group.form = table.text("form");
    group.button = table.control("button", {.name = "Cm_" + identifier(group.title)});
    group.failure = failures.at(static_cast<std::size_t>(
        table.oneOf("failure", {"ends", "ends after first", "ends unanswered", "goes on"})));
    if (!table.has("read"))
        table.require("press", "List the buttons that it presses.");
    for (const Node* step : table.elements("press")) {
        if (step->table() != nullptr) {
            TableReader entry(*step, problems);
            const ControlName button = entry.control("button");
            group.steps.push_back({.button = button, .variants = entry.texts("on"), .row = {}});
        } else if (const auto name = TableReader::controlIn(
                       step->text() != nullptr ? *step->text() : std::string("-"))) {
            group.steps.push_back({.button = *name, .variants = {}, .row = {}});
        } else {
            table.problem(step->at, "this is no name of a button", "Write it as \"Cm_Lamp_R\".");
        }
    }
    for (const std::string& row : table.texts("read"))
        if (const auto name = TableReader::controlIn(row))
            group.steps.push_back({.button = {}, .variants = {}, .row = *name});
        else
            table.problem(group.at, fmt::format("\"{}\" names no row", row),
                          "Write it as \"Lamp_R\".");
    return group;
}

void readRegisters(TableReader& table, Chip& chip, Problems& problems) {
    const std::vector<const Node*> nodes = table.tables("register");
    if (nodes.size() > mostRegisters) {
        table.problem(nodes.at(mostRegisters)->at,
                      fmt::format("there are more than {} registers", mostRegisters),
                      "Part the chip into several files.");
        return;
    }
    chip.registers.reserve(nodes.size());
    for (const Node* node : nodes)
        chip.registers.push_back(readRegister(*node, problems));
}

Device readDevice(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Device device;
    device.at = table.at();
    device.name = table.required("name");
    device.description = table.text("description");
    device.variant = table.text("variant");
    for (const Node* reset : table.tables("reset")) {
        TableReader entry(*reset, problems);
        device.resets.push_back({.owner = entry.required("register"),
                                 .view = entry.text("view"),
                                 .value = entry.word("value").value_or(0),
                                 .at = entry.at()});
    }
    return device;
}

void readHead(const Node& node, const std::string& file, Chip& chip, Problems& problems) {
    TableReader table(node, problems);
    chip.title = table.required("title");
    chip.name = table.text("name", std::filesystem::path(file).stem().string());
    if (!isChipName(chip.name))
        table.problem(table.at("name"), fmt::format("\"{}\" is no name for a chip", chip.name),
                      "Give it a `name` of up to 64 letters, digits, - and _.");
    chip.description = table.text("description");
    chip.modelParts = table.texts("model");
}

void readDocument(const Node& document, const std::string& file, Chip& chip, Problems& problems) {
    TableReader table(document, problems);
    for (const char* section : {"chip", "word"})
        if (!table.has(section))
            table.problem({.line = 1, .column = 1}, fmt::format("`[{}]` is missing", section),
                          "Every chip's file has it.");
    if (table.has("chip"))
        readHead(table.section("chip"), file, chip, problems);
    if (table.has("word"))
        chip.word = readWord(table.section("word"), problems);
    readRegisters(table, chip, problems);
    if (table.has("word"))
        requireForRegisters(table.section("word"), chip, problems);
    for (const Node* command : table.tables("command"))
        chip.commands.push_back(readCommand(*command, problems));
    for (const Node* group : table.tables("read_all"))
        chip.readAlls.push_back(readReadAll(*group, problems));
    for (const Node* device : table.tables("device"))
        chip.devices.push_back(readDevice(*device, problems));
    if (chip.devices.empty())
        chip.devices.push_back(
            {.name = chip.name, .description = {}, .variant = {}, .resets = {}, .at = {}});
    if (table.has("variants"))
        chip.variants = readVariants(table.section("variants"), problems);
    chip.sequence = readSequence(table.section("sequence"), problems);
    if (table.has("automatic_reads"))
        chip.automaticReads = readAutomaticReads(table.section("automatic_reads"), chip, problems);
    for (const Node* control : table.tables("control"))
        chip.controls.push_back(readOwnControl(*control, problems));
    for (const Node* sheet : table.tables("sheet"))
        chip.sheets.push_back(readSheet(*sheet, problems));
    chip.panel = readPanel(table.section("panel"), chip, problems);
}

/// In the order of the text, limited to a readable number.
void arrange(Problems& problems) {
    std::stable_sort(problems.begin(), problems.end(),
                     [](const Problem& one, const Problem& other) {
                         return std::pair(one.at.line, one.at.column) <
                                std::pair(other.at.line, other.at.column);
                     });
    if (problems.size() <= mostProblems)
        return;
    const std::size_t others = problems.size() - mostProblems;
    const Place last = problems[mostProblems].at;
    problems.resize(mostProblems);
    problems.push_back({last, fmt::format("from here on there are {} more problems", others),
                        "Correct those above first."});
}

} // namespace

bool isChipName(std::string_view text) {
    constexpr std::size_t longest = 64;
    return !text.empty() && text.size() <= longest &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') ||
                      c == '_' || c == '-';
           });
}

ChipFile readCheckedChip(std::string_view text, const std::string& file) {
    ChipFile result;
    auto chip = std::make_shared<Chip>();
    chip->file = file;
    std::optional<Node> document = parseDocument(text, result.problems);
    if (document)
        expand(*document, mostNodes, result.problems);
    if (document && result.problems.empty())
        readDocument(*document, file, *chip, result.problems);
    if (result.problems.empty())
        result.chip = std::move(chip);
    arrange(result.problems);
    return result;
}

ChipFile readChip(std::string_view text, const std::string& file) {
    if (std::optional<Problem> problem = documents::unbearable(text))
        return {.chip = {}, .problems = {*std::move(problem)}};
    ChipFile result = readCheckedChip(text, file);
    if (!result.chip)
        return result;
    result.problems = validate(*result.chip);
    if (!result.problems.empty())
        result.chip.reset();
    arrange(result.problems);
    return result;
}

ChipText readChipText(const std::string& fileName) {
    const auto failed = [](std::string text, std::string advice) {
        return ChipText{.text = {}, .problems = {{{}, std::move(text), std::move(advice)}}};
    };
    std::error_code error;
    if (!std::filesystem::is_regular_file(fileName, error))
        return failed("there is no such file", "Check its name and that you may read it.");
    std::ifstream file(fileName, std::ios::binary);
    std::string text(longestFile + 1, '\0');
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(file.gcount()));
    if (file.bad() || (text.empty() && !file.eof()))
        return failed("the file cannot be read", "Check that you may read it.");
    if (text.size() > longestFile)
        return failed("the file is longer than 1 MiB", "Part the chip into several files.");
    return {.text = std::move(text), .problems = {}};
}

ChipFile readChipFile(const std::string& fileName) {
    ChipText file = readChipText(fileName);
    if (!file.problems.empty())
        return {.chip = {}, .problems = std::move(file.problems)};
    return readChip(file.text, fileName);
}

} // namespace bitlux::chips
