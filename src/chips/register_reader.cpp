#include "chips/register_reader.h"

#include <array>
#include <limits>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int mostRegisterBits = 64;
constexpr std::size_t mostOptions = 4; ///< more choices are a list, unless the file says otherwise
constexpr std::array accessNames{"read write", "read only", "write only", "read clears",
                                 "write one clears"};

std::vector<std::string> numbered(int count) {
    std::vector<std::string> captions;
    for (int bit = 0; bit < count; ++bit)
        captions.push_back(std::to_string(bit));
    return captions;
}

void readChoices(TableReader& table, Field& field) {
    const std::vector<std::string> texts = table.texts("texts");
    const std::vector<std::uint64_t> codes = table.words("codes");
    if (!codes.empty() && codes.size() != texts.size())
        table.problem(table.at("codes"),
                      fmt::format("there are {} texts and {} codes", texts.size(), codes.size()),
                      "Give a code for each text, or none when they count from 0.");
    for (std::size_t i = 0; i < texts.size(); ++i)
        field.choices.push_back(
            {.text = texts[i], .code = i < codes.size() ? codes[i] : std::uint64_t{i}});
}

/// Whether a key names the field's control, and thereby its kind.
bool readNamedControl(TableReader& table, Field& field) {
    constexpr std::array<std::pair<const char*, Field::Kind>, 3> keys{
        {{"options", Field::Kind::Options},
         {"box", Field::Kind::Box},
         {"list", Field::Kind::List}}};
    int named = 0;
    for (const auto& [key, kind] : keys)
        if (table.has(key)) {
            field.kind = kind;
            field.control = table.control(key);
            if (kind == Field::Kind::Options && field.control.index < 0)
                field.control.index = 0;
            ++named;
        }
    if (named > 1)
        table.problem(field.at, "a field has one of `options`, `box` and `list`",
                      "Remove the others.");
    return named > 0;
}

/// The kind of control that bits and texts suggest.
void deriveControl(const std::string& stem, bool writable, Field& field) {
    const std::string name = stem + "_" + identifier(field.title);
    const bool single = field.bits.size() == 1;
    if (field.choices.empty())
        field.kind = single ? Field::Kind::Box : Field::Kind::Options;
    else
        field.kind = field.choices.size() <= mostOptions ? Field::Kind::Options : Field::Kind::List;
    if (!writable || (field.choices.empty() && !single))
        return; // nothing to choose, or a number: the bits show it
    field.control.name = name;
    if (field.kind == Field::Kind::Options)
        field.control.index = 0;
}

Field readField(const Node& node, const std::string& stem, bool writable, Problems& problems) {
    TableReader table(node, problems);
    Field field;
    field.at = table.at();
    field.title = table.required("title");
    table.require("bits", "Say which bits the field is.");
    field.bits = table.bits("bits").value_or(BitList());
    readChoices(table, field);
    if (!readNamedControl(table, field))
        deriveControl(stem, writable, field);
    if (field.kind == Field::Kind::Box) {
        if (field.choices.empty())
            field.choices.push_back({.text = field.title, .code = 1});
        else if (field.choices.size() == 1 && !table.has("codes"))
            field.choices.front().code = 1;
    }
    field.frame = table.control("frame");
    field.mirror = table.control("mirror");
    field.gate = table.control("gate");
    field.when.control = table.control("when");
    field.follows = table.truth("follows", true);
    field.shares = table.truth("shares", false);
    field.typed = table.truth("typed", false);
    field.prompt = table.text("prompt");
    field.markedFrom = table.number("marked_from", -1, 0, std::numeric_limits<std::int16_t>::max());
    field.selected = table.number("selected", -1, 0, std::numeric_limits<std::int16_t>::max());
    field.note = table.text("note");
    field.heads = table.texts("heads");
    return field;
}

TextLabel readTextLabel(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    TextLabel made;
    made.label = table.control("label");
    made.texts = table.texts("texts");
    made.otherwise = table.text("otherwise");
    made.procedure = table.text("procedure");
    if (!made.label.exists() || made.texts.empty())
        table.problem(table.at(), "`tells` wants a label and texts",
                      "Name the `label`, and give one of the `texts` for each value.");
    return made;
}

View readView(const Node& node, const Register& owner, const std::string& stem,
              Problems& problems) {
    TableReader table(node, problems);
    View view;
    view.at = table.at();
    view.title = table.text("title", "Read");
    const std::string name =
        view.title == "Read" ? stem + "_R" : stem + "_" + identifier(view.title);
    view.operation =
        table.oneOf("reads", {"register", "flags"}) == 1 ? Operation::Flags : Operation::Read;
    view.address = table.word("address").value_or(owner.address);
    view.extra = table.word("extra").value_or(0);
    view.row = readRow(table, owner.row.captions, {.name = name, .index = 0});
    if (!table.has("form"))
        view.row.form = owner.row.form;
    TableReader names(table.section("read"), problems);
    view.button = names.control("button", {.name = "Cm_" + name});
    view.line = readLine(names, owner.title + " " + view.title, {.name = "Seq_" + name});
    view.on = table.texts("on");
    view.page = table.text("page", view.operation == Operation::Flags ? "Flags" : "");
    view.group = table.text("group");
    view.clears = table.truth("clears", owner.access == Access::ReadClears);
    view.reset = table.word("reset");
    view.switches = table.text("switches");
    view.frame = table.control("frame");
    if (table.has("tells"))
        view.textLabel = readTextLabel(table.section("tells"), problems);
    return view;
}

void readWrite(const Node& node, const std::string& stem, Register& made, Problems& problems) {
    TableReader table(node, problems);
    made.writeTitle = table.text("title", "Write");
    made.writeButton = table.control("button", {.name = "Cm_" + stem + "_W"});
    made.writeLine = readLine(table, made.title + " Write", {.name = "Seq_" + stem + "_W"});
    made.reply = table.text("reply");
    made.alarm = table.control("alarm");
    made.alarmText = table.text("alarm_text", made.alarm.exists() ? made.title + " alarm" : "");
}

/// A register without views in the file has one of its own width.
void readViews(TableReader& table, const std::string& stem, Register& made, Problems& problems) {
    const bool none = !table.has("view");
    for (const Node* view : table.tables("view"))
        made.views.push_back(readView(*view, made, stem, problems));
    if (none && made.access != Access::WriteOnly)
        made.views.push_back(
            readView({.at = made.at, .value = Node::Table{}}, made, stem, problems));
}

void checkWidth(TableReader& table, int width, const Register& made) {
    if (!table.has("bits") && width == 0) {
        if (!table.has("width"))
            table.require("bits",
                          "List the captions of the bits, bit 0 first, or give their `width`.");
    } else if (table.has("bits") && (made.width() == 0 || made.width() > mostRegisterBits)) {
        table.problem(table.at("bits"), fmt::format("there are {} captions", made.width()),
                      "Give one for each bit, bit 0 first, 1 to 64 of them.");
    } else if (width != 0 && made.width() != width) {
        table.problem(table.at("bits"),
                      fmt::format("there are {} captions for {} bits", made.width(), width),
                      "Give one for each bit, bit 0 first, or remove `width`.");
    }
}

} // namespace

std::string identifier(std::string_view title) {
    std::string name;
    for (const char c : title) {
        const bool plain =
            (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        if (plain)
            name += c;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    while (name.ends_with('_'))
        name.pop_back();
    return name;
}

Row readRow(TableReader& table, std::vector<std::string> captions, ControlName first) {
    Row row;
    row.first = table.control("row", std::move(first));
    if (row.exists() && row.first.index < 0)
        row.first.index = 0;
    if (table.has("bits"))
        captions = table.texts("bits");
    row.captions = std::move(captions);
    row.colours.one = table.colour("one", row.colours.one);
    row.colours.zero = table.colour("zero", row.colours.zero);
    if (row.colours.one == row.colours.zero)
        table.problem(table.at("one"), "a one and a zero look the same",
                      "Give them colours that differ.");
    row.form = table.text("form");
    return row;
}

Line readLine(TableReader& table, const std::string& name, const ControlName& button) {
    Line line;
    line.name = table.text("line", name);
    line.value = table.text("value");
    line.aliases = table.texts("aliases");
    line.address = table.word("line_address");
    line.played = table.truth("played", true);
    line.takesValue = table.truth("takes_value", true);
    line.button = table.control("append", line.exists() ? button : ControlName());
    return line;
}

Register readRegister(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    Register made;
    made.at = table.at();
    made.title = table.required("title");
    made.page = table.text("page", made.title);
    table.require("address", "Say where the register is.");
    made.address = table.word("address").value_or(0);
    made.access =
        static_cast<Access>(table.oneOf("access", {accessNames.begin(), accessNames.end()}));
    made.reset = table.word("reset").value_or(0);
    made.neverWritten = table.word("never_written").value_or(0);
    made.alwaysWritten = table.word("always_written").value_or(0);
    made.isVolatile = table.truth("volatile", false);
    made.note = table.text("note");
    const std::string stem = identifier(made.title);
    const int width =
        table.number("width", 0, 1, mostRegisterBits); // 0 when the captions determine it
    made.row = readRow(table, numbered(width), {.name = stem + "_W", .index = 0});
    made.hexBox = table.control("hex_box");
    made.hexButton =
        table.control("hex_button", {.name = made.hexBox.exists() ? "Cm_" + stem + "_Hex" : ""});
    checkWidth(table, width, made);
    readWrite(table.section("write"), stem, made, problems);
    if (!made.writable()) {
        if (table.has("write"))
            table.problem(table.at("write"), "a register that is only read has no `write`",
                          "Remove it, or give the register another `access`.");
        made.row.first = {};
        made.writeButton = {};
        made.writeLine = {};
    }
    for (const Node* field : table.tables("field"))
        made.fields.push_back(readField(*field, stem, made.writable(), problems));
    readViews(table, stem, made, problems);
    return made;
}

} // namespace bitlux::chips
