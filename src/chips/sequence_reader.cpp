#include "chips/sequence_reader.h"

#include "chips/table_reader.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux::chips {

namespace {

constexpr int mostNumbers = 10'000;
constexpr int mostBoxes = 16;

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
    loop.picks = table.truth("picks", false);
    return loop;
}

SequenceStyle::Stops readStops(const Node& node, Problems& problems) {
    TableReader table(node, problems);
    SequenceStyle::Stops stops;
    const auto pair = [&table](const char* key, std::vector<std::string> otherwise) {
        std::vector<std::string> texts = table.has(key) ? table.texts(key) : std::move(otherwise);
        if (texts.size() == 2)
            return texts;
        table.problem(table.at(key), fmt::format("`{}` has {} texts", key, texts.size()),
                      "Give two.");
        return std::vector<std::string>(2);
    };
    stops.frames = pair("frames", {"", ""});
    stops.boxes = pair("boxes", {"First condition", "Second condition"});
    stops.events = pair("events", stops.events);
    stops.acts = table.truth("acts", true);
    return stops;
}

} // namespace

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
    style.asksToSave = table.truth("asks_to_save", false);
    style.wait = readWait(table.section("wait"), problems);
    style.loop = readLoop(table.section("loop"), problems);
    if (table.has("stops"))
        style.stops = readStops(table.section("stops"), problems);
    for (const Node* column : table.tables("answers")) {
        TableReader entry(*column, problems);
        const std::string list = entry.required("list");
        style.answers.push_back({.list = list, .title = entry.text("title")});
    }
    if (table.has("editor")) {
        TableReader entry(table.section("editor"), problems);
        style.editor = {.box = entry.number("box", 2, 2, mostBoxes - 1),
                        .list = entry.control("list"),
                        .button = entry.control("button")};
    }
    if (table.has("trigger")) {
        TableReader entry(table.section("trigger"), problems);
        style.trigger = {.box = entry.number("box", 3, 2, mostBoxes - 1),
                         .label = entry.control("label")};
    }
    style.boxes = std::max({style.boxes, style.editor.box + 1, style.trigger.box + 1});
    if (style.answers.empty())
        style.answers = {{"List_Val_read", "Value in Hexadecimal"}};
    return style;
}

} // namespace bitlux::chips
