#include "chips/chip_reader.h"

#include "chips/document.h"
#include "chips/register_reader.h"
#include "chips/table_reader.h"
#include "chips/validate.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr std::size_t mostNodes = 1'000'000;
constexpr int mostWordBits = 64;
constexpr int spiTypes = 8;
constexpr int mostNumbers = 10'000;
constexpr int mostBoxes = 16;
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

/// "Name", "Name(3)" or "Name(4..7)".
std::optional<ControlRange> controlsIn(const std::string& text) {
    const std::size_t dots = text.find("..");
    if (dots == std::string::npos) {
        const auto name = TableReader::controlIn(text);
        return name ? std::optional(ControlRange{name->name, name->index, name->index})
                    : std::nullopt;
    }
    const auto first = TableReader::controlIn(text.substr(0, dots) + ")");
    const auto last = TableReader::controlIn("x(" + text.substr(dots + 2));
    if (!first || !last || first->index < 0 || last->index < first->index)
        return std::nullopt;
    return ControlRange{first->name, first->index, last->index};
}

std::vector<ControlRange> readControls(TableReader& table, const char* key) {
    std::vector<ControlRange> all;
    for (const std::string& text : table.texts(key))
        if (const auto controls = controlsIn(text))
            all.push_back(*controls);
        else
            table.problem(table.at(), fmt::format("\"{}\" names no controls", text),
                          "Write it as \"Name\", \"Name(3)\" or \"Name(4..7)\".");
    return all;
}

void readStatus(const Node& node, WordFormat& word, Problems& problems) {
    TableReader table(node, problems);
    word.status = readRow(table, {}, {.name = "Status", .index = 0});
    word.statusOfRead = table.bits("of_read").value_or(BitList());
    for (const Node* sum : table.tables("sum")) {
        TableReader entry(*sum, problems);
        entry.require("bit", "Say which bit of an answer it is.");
        word.sums.push_back({.bit = entry.number("bit", 0, 0, mostWordBits - 1),
                             .of = readControls(entry, "of"),
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
    command.autoRead = table.control("auto");
    command.page = table.text("page", "Commands");
    command.group = table.text("group");
    command.form = table.text("form");
    command.note = table.text("note");
    return command;
}

ReadAll readReadAll(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    constexpr std::array failures{ReadAll::Failure::Ends, ReadAll::Failure::EndsAfterFirst,
                                  ReadAll::Failure::GoesOn};
    ReadAll group;
    group.at = table.at();
    group.title = table.text("title", "Read all");
    group.group = table.text("group");
    group.page = table.text("page");
    group.form = table.text("form");
    group.button = table.control("button", {.name = "Cm_" + identifier(group.title)});
    group.failure = failures.at(
        static_cast<std::size_t>(table.oneOf("failure", {"ends", "ends after first", "goes on"})));
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

Variants::Rule readRule(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    constexpr std::array effects{Variants::Effect::Enabled, Variants::Effect::Visible,
                                 Variants::Effect::Ticked};
    Variants::Rule rule;
    rule.at = table.at();
    rule.effect = effects.at(
        static_cast<std::size_t>(table.oneOf("effect", {"enabled", "visible", "ticked"})));
    rule.on = table.texts("on");
    rule.controls = readControls(table, "controls");
    return rule;
}

Variants readVariants(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Variants variants;
    variants.at = table.at();
    variants.options = table.control("options", {.name = "Variant", .index = 0});
    variants.titles = table.texts("titles");
    variants.otherwise = table.text("otherwise", variants.otherwise);
    for (const Node* rule : table.tables("rule"))
        variants.rules.push_back(readRule(*rule, problems));
    for (const Node* row : table.tables("caption")) {
        TableReader entry(*row, problems);
        const std::string text = entry.text("text");
        const std::vector<std::string> on = entry.texts("on");
        for (const std::string& label : entry.texts("labels"))
            if (const auto name = TableReader::controlIn(label))
                variants.captions.push_back({*name, text, on, entry.at()});
            else
                entry.problem(entry.at(), fmt::format("\"{}\" is no label", label),
                              "Write it as \"Name(3)\".");
    }
    return variants;
}

SequenceStyle::Wait readWait(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    SequenceStyle::Wait wait;
    wait.text = table.text("text", wait.text);
    wait.timer = table.text("timer", wait.timer);
    wait.asksNumber = table.truth("asks_number", false);
    wait.endless = table.truth("endless", false);
    return wait;
}

SequenceStyle::Loop readLoop(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    SequenceStyle::Loop loop;
    loop.caption = table.text("caption", loop.caption);
    loop.start = table.text("start");
    loop.stop = table.text("stop");
    loop.startLabel = table.control("start_label");
    loop.stopLabel = table.control("stop_label");
    loop.hides = table.truth("hides", false);
    loop.endsRun = table.truth("ends_run", false);
    return loop;
}

SequenceStyle readSequence(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    SequenceStyle style;
    style.at = table.at();
    style.valueTitle = table.text("value", style.valueTitle);
    style.numbers = table.number("numbers", style.numbers, 0, mostNumbers);
    style.boxes = table.number("boxes", style.boxes, 2, mostBoxes);
    style.appendTitle = table.text("append", style.appendTitle);
    style.wholeWords = table.oneOf("writes", {"data", "word"}) == 1;
    style.arrowAtLine = table.oneOf("arrow", {"next line", "line"}) == 1;
    style.moves = table.truth("moves", false);
    style.headersMove = table.truth("headers_move", false);
    style.fieldFiles = table.oneOf("files", {"whole", "fields"}) == 1;
    style.wait = readWait(table.section("wait"), problems);
    style.loop = readLoop(table.section("loop"), problems);
    for (const Node* column : table.tables("answers")) {
        TableReader entry(*column, problems);
        const std::string list = entry.required("list");
        style.answers.push_back({.list = list, .title = entry.text("title")});
    }
    return style;
}

std::vector<OuterPage> usualPages(const Chip& chip) {
    const bool hasFlags =
        std::any_of(chip.registers.begin(), chip.registers.end(), [](const Register& any) {
            return std::any_of(any.views.begin(), any.views.end(),
                               [](const View& view) { return view.page == "Flags"; });
        });
    std::vector<OuterPage> pages{{"Registers", "registers"}};
    if (hasFlags)
        pages.push_back({"Flags", "flags"});
    pages.push_back({"Sequence", "sequence"});
    return pages;
}

/// Names of forms, or tables of those that the file describes.
void readCompanions(TableReader& table, PanelLayout& panel, Problems& problems) {
    for (const Node* node : table.elements("companions")) {
        if (const std::string* name = node->text()) {
            panel.companions.push_back(*name);
            continue;
        }
        TableReader entry(*node, problems);
        Companion companion;
        companion.form = entry.required("form");
        companion.caption = entry.text("caption", companion.form);
        companion.button = entry.control("button");
        companion.title = entry.text("title", companion.caption);
        companion.marked = entry.truth("marked", false);
        panel.companions.push_back(companion.form);
        panel.described.push_back(std::move(companion));
    }
}

PanelLayout readPanel(const Node& node, const Chip& chip, Problems& problems) {
    TableReader table(node, problems);
    PanelLayout panel;
    panel.at = table.at();
    panel.form = table.text("form", "Panel_" + identifier(chip.name));
    panel.caption = table.text("caption", chip.title);
    panel.outerTabs = table.control("tabs", {.name = "PanelTabs"});
    panel.registerTabs = table.control("register_tabs", {.name = "RegisterTabs"});
    for (const Node* page : table.tables("pages")) {
        TableReader entry(*page, problems);
        const std::string title = entry.required("title");
        panel.pages.push_back({.title = title, .shows = entry.required("shows")});
    }
    if (panel.pages.empty())
        panel.pages = usualPages(chip);
    panel.firstPage =
        table.number("first", 1, 1, std::max(1, static_cast<int>(panel.pages.size()))) - 1;
    panel.parts = table.texts("parts");
    readCompanions(table, panel, problems);
    panel.marker = table.text("marker");
    panel.active = table.text("active");
    panel.showsType = table.truth("shows_type", false);
    panel.unloadsAtEnd = table.truth("unloads_at_end", false);
    panel.holds = table.oneOf("holds", {"while open", "while in front"}) == 1
                      ? PanelLayout::Holds::WhileInFront
                      : PanelLayout::Holds::WhileOpen;
    return panel;
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
    for (const Node* command : table.tables("command"))
        chip.commands.push_back(readCommand(*command, problems));
    for (const Node* group : table.tables("read_all"))
        chip.readAlls.push_back(readReadAll(*group, problems));
    for (const Node* device : table.tables("device"))
        chip.devices.push_back(readDevice(*device, problems));
    if (chip.devices.empty())
        chip.devices.push_back({.name = chip.name, .resets = {}, .at = {}});
    if (table.has("variants"))
        chip.variants = readVariants(table.section("variants"), problems);
    chip.sequence = readSequence(table.section("sequence"), problems);
    if (chip.sequence.answers.empty())
        chip.sequence.answers = {{"List_Val_read", "Value in Hexadecimal"}};
    chip.panel = readPanel(table.section("panel"), chip, problems);
}

/// In the order of the text, and no more than anybody reads.
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

ChipFile readChip(std::string_view text, const std::string& file) {
    ChipFile result;
    auto chip = std::make_shared<Chip>();
    chip->file = file;
    std::optional<Node> document = parseDocument(text, result.problems);
    if (document)
        expand(*document, mostNodes, result.problems);
    if (document && result.problems.empty())
        readDocument(*document, file, *chip, result.problems);
    if (document && result.problems.empty())
        result.problems = validate(*chip);
    if (result.problems.empty())
        result.chip = std::move(chip);
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
