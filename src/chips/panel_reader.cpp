#include "chips/panel_reader.h"

#include "chips/chip_reader.h"
#include "chips/register_reader.h"
#include "chips/table_reader.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int mostColumns = 4;
constexpr int mostOfBar = 32'767;
constexpr int longestInterval = 60'000; // ms

Variants::Rule readRule(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    constexpr std::array effects{Variants::Effect::Enabled, Variants::Effect::Visible,
                                 Variants::Effect::Ticked};
    Variants::Rule rule;
    rule.at = table.at();
    rule.effect = effects.at(
        static_cast<std::size_t>(table.oneOf("effect", {"enabled", "visible", "ticked"})));
    rule.on = table.texts("on");
    rule.controls = table.ranges("controls");
    return rule;
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
    if (chip.automaticReads.exists())
        pages.push_back({"Automatic reads", "automatic reads"});
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

/// Every view of the panel, in the order of the file.
std::vector<ControlName> allReads(const Chip& chip) {
    std::vector<ControlName> buttons;
    for (const Register& any : chip.registers)
        for (const View& view : any.views)
            if (view.button.exists() && view.row.form.empty())
                buttons.push_back(view.button);
    return buttons;
}

/// Reads a control, or an array of controls.
std::string nameOf(TableReader& table, const char* key, const std::string& otherwise) {
    const ControlName name = table.control(key, {.name = otherwise});
    return name.exists() ? name.name : otherwise;
}

std::vector<int> readBoxes(TableReader& table, const char* key, std::vector<int> otherwise) {
    if (!table.has(key))
        return otherwise;
    std::vector<int> boxes;
    for (const std::uint64_t box : table.words(key))
        boxes.push_back(static_cast<int>(std::min<std::uint64_t>(box, mostRegisters)));
    return boxes;
}

AutomaticReads::Group readGroup(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    AutomaticReads::Group group;
    group.box = table.number("box", 0, 0, mostRegisters);
    group.title = table.required("title");
    group.ticks = table.bits("ticks").value_or(BitList());
    group.clears = table.bits("clears").value_or(BitList());
    return group;
}

/// "Caption: Name Name(3)", with or without the caption.
Sheet::Row readSheetRow(TableReader& table, const std::string& text) {
    Sheet::Row row;
    const std::size_t colon = text.find(": ");
    if (colon != std::string::npos)
        row.caption = text.substr(0, colon);
    row.controls = table.rangesIn(colon == std::string::npos ? text : text.substr(colon + 2));
    return row;
}

Sheet::Group readSheetGroup(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Sheet::Group group;
    group.title = table.text("title");
    group.frame = table.control("frame");
    for (const std::string& row : table.texts("rows"))
        group.rows.push_back(readSheetRow(table, row));
    group.state = table.control("state");
    group.column = table.number("column", 1, 1, mostColumns) - 1;
    return group;
}

Sheet::Confirmation readConfirmation(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Sheet::Confirmation confirmation;
    confirmation.button = table.control("button");
    confirmation.selected = table.control("selected");
    confirmation.text = table.required("text");
    return confirmation;
}

} // namespace

Variants readVariants(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Variants variants;
    variants.at = table.at();
    variants.options = table.control("options", {.name = "Variant", .index = 0});
    variants.titles = table.texts("titles");
    variants.selected = table.number("selected", 0, 0, static_cast<int>(variants.titles.size()));
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

AutomaticReads readAutomaticReads(const Node& node, const Chip& chip, Problems& problems) {
    TableReader table(node, problems);
    AutomaticReads reads;
    reads.at = table.at();
    reads.array = nameOf(table, "boxes", reads.array);
    reads.timer = nameOf(table, "timer", reads.timer);
    reads.interval = table.number("interval", reads.interval, 10, longestInterval);
    reads.buttons = table.has("press") ? table.controls("press") : allReads(chip);
    const int behind = static_cast<int>(reads.buttons.size());
    reads.switches = readBoxes(table, "switches", {behind});
    reads.recorders = readBoxes(table, "recorders", {});
    for (const Node* group : table.tables("group"))
        reads.groups.push_back(readGroup(*group, problems));
    for (const Node* note : table.tables("note")) {
        TableReader entry(*note, problems);
        const int box = entry.number("box", 0, 0, mostRegisters);
        reads.notes.push_back({.box = box, .text = entry.required("text")});
    }
    reads.lost = table.bits("lost").value_or(BitList());
    return reads;
}

OwnControl readOwnControl(const Node& node, Problems& problems) {
    constexpr std::array kinds{std::pair("label", OwnControl::Kind::Label),
                               std::pair("button", OwnControl::Kind::Button),
                               std::pair("box", OwnControl::Kind::Box),
                               std::pair("frame", OwnControl::Kind::Frame),
                               std::pair("entry", OwnControl::Kind::Entry),
                               std::pair("list", OwnControl::Kind::List),
                               std::pair("options", OwnControl::Kind::Options),
                               std::pair("bar", OwnControl::Kind::Bar)};
    TableReader table(node, problems);
    OwnControl made;
    made.at = table.at();
    int named = 0;
    for (const auto& [key, kind] : kinds)
        if (table.has(key)) {
            made.kind = kind;
            made.name = table.control(key);
            ++named;
        }
    if (named != 1 || !made.name.exists())
        table.problem(made.at, "a control has one kind and a name",
                      "Say for example `label = \"Name\"`.");
    made.texts = table.texts(table.has("texts") ? "texts" : "caption");
    made.prompt = table.text("prompt");
    made.selected =
        table.number("selected", -1, 0, std::max(0, static_cast<int>(made.texts.size()) - 1));
    made.least = table.number("least", 0, 0, mostOfBar);
    made.most = table.number("most", mostOfBar, made.least, mostOfBar);
    if (table.has("colour"))
        made.colour = table.colour("colour", 0);
    made.hidden = table.truth("hidden", false);
    made.disabled = table.truth("disabled", false);
    return made;
}

Sheet readSheet(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Sheet sheet;
    sheet.at = table.at();
    sheet.page = table.text("page");
    sheet.title = table.text("title");
    sheet.form = table.text("form");
    for (const Node* group : table.tables("group"))
        sheet.groups.push_back(readSheetGroup(*group, problems));
    for (const Node* confirmation : table.tables("confirm"))
        sheet.confirmations.push_back(readConfirmation(*confirmation, problems));
    sheet.hasReads = table.truth("automatic_reads", false);
    sheet.stacked = table.truth("stacked", false);
    sheet.entry = table.control("entry");
    sheet.besideWrite = table.control("beside_write");
    sheet.bitsButton = table.control("bits_button");
    sheet.bits = table.ranges("bits");
    sheet.buttons = table.controls("buttons");
    return sheet;
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
    for (const std::string& row : table.texts("last_word"))
        panel.lastWord.push_back(readSheetRow(table, row));
    panel.texts = table.ranges("texts");
    panel.copies = table.ranges("copies");
    panel.marker = table.text("marker");
    panel.active = table.text("active");
    panel.leavesType = table.truth("leaves_type", false);
    panel.showsType = table.truth("shows_type", false);
    panel.unloadsAtEnd = table.truth("unloads_at_end", false);
    panel.holds = table.oneOf("holds", {"while open", "while in front"}) == 1
                      ? PanelLayout::Holds::WhileInFront
                      : PanelLayout::Holds::WhileOpen;
    return panel;
}

} // namespace bitlux::chips
