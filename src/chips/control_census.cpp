#include "chips/control_census.h"

#include "platform/forms/near_names.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::chips {

ControlCensus::ControlCensus(const Chip& chip, Problems& problems) : problems_(problems) {
    add(chip.panel.outerTabs, chip.panel.at);
    add(chip.panel.registerTabs, chip.panel.at);
    addRow(chip.word.status, chip.word.at);
    for (const Register& any : chip.registers)
        addRegister(any);
    for (const Command& any : chip.commands) {
        add(any.button, any.at);
        add(any.line.button, any.at);
    }
    for (const ReadAll& any : chip.readAlls)
        add(any.button, any.at);
    for (std::size_t i = 0; i < chip.variants.titles.size(); ++i)
        add({chip.variants.options.name, chip.variants.options.index + static_cast<int>(i)},
            chip.variants.at);
}

void ControlCensus::addRegister(const Register& any) {
    addRow(any.row, any.at);
    add(any.writeButton, any.at);
    add(any.writeLine.button, any.at);
    for (const Field& field : any.fields)
        addField(field);
    for (const View& view : any.views) {
        if (!view.row.form.empty()) // names of another form
            continue;
        if (view.row.first != any.row.first)
            addRow(view.row, view.at);
        add(view.button, view.at);
        add(view.line.button, view.at);
    }
}

void ControlCensus::addField(const Field& field) {
    add(field.frame, field.at);
    if (field.kind != Field::Kind::Options) {
        add(field.control, field.at);
        return;
    }
    for (std::size_t i = 0; i < field.choices.size(); ++i)
        add({field.control.name, field.control.index + static_cast<int>(i)}, field.at);
}

void ControlCensus::addRow(const Row& row, const Place& at) {
    if (!row.exists() || !row.form.empty())
        return;
    const auto [known, isNew] =
        rows_.emplace(std::pair(row.first.name, row.first.index), row.width());
    if (!isNew && known->second == row.width())
        return;
    for (int bit = 0; bit < row.width(); ++bit)
        add({row.first.name, row.first.index + bit}, at);
}

void ControlCensus::add(const ControlName& name, const Place& at) {
    if (!name.exists())
        return;
    const auto [found, isNew] = taken_.emplace(std::pair(name.name, name.index), at);
    if (!isNew)
        problems_.push_back({at,
                             fmt::format("the control {} is there already, by line {}", text(name),
                                         found->second.line),
                             "Give it another name, or another title when it has none."});
}

std::string ControlCensus::nearText(const ControlName& name) const {
    std::vector<std::string> names;
    for (const auto& [key, place] : taken_)
        names.push_back(text(ControlName{key.first, key.second}));
    const std::vector<std::string> found = forms::nearNames(text(name), names);
    return found.empty() ? "Name one that the file makes."
                         : fmt::format("Did you mean {}?", fmt::join(found, ", "));
}

} // namespace bitlux::chips
