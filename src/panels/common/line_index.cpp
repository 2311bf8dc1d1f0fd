#include "panels/common/line_index.h"

namespace bitlux {

LineIndex::LineIndex(const chips::Chip& chip) {
    for (const chips::Register& any : chip.registers) {
        add(any.writeLine, {.written = &any, .line = &any.writeLine});
        for (const chips::View& view : any.views)
            add(view.line, {.read = &view, .line = &view.line});
    }
    for (const chips::Command& any : chip.commands)
        add(any.line, {.line = &any.line, .command = &any});
}

void LineIndex::add(const chips::Line& line, const LineMeaning& meaning) {
    if (!line.exists() || !line.played)
        return;
    meanings_.emplace(line.name, meaning);
    for (const std::string& alias : line.aliases)
        meanings_.emplace(alias, meaning);
}

const LineMeaning* LineIndex::find(std::string_view name) const {
    const auto found = meanings_.find(name);
    return found == meanings_.end() ? nullptr : &found->second;
}

} // namespace bitlux
