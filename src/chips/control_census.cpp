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
        add(any.button, any.at, any.form);
        add(any.line.button, any.at, any.form);
    }
    for (const ReadAll& any : chip.readAlls)
        add(any.button, any.at, any.form);
    add(chip.sequence.loop.startLabel, chip.sequence.at);
    add(chip.sequence.loop.stopLabel, chip.sequence.at);
    for (const Companion& any : chip.panel.described)
        add(any.button, chip.panel.at);
    for (std::size_t i = 0; i < chip.variants.titles.size(); ++i)
        add({chip.variants.options.name, chip.variants.options.index + static_cast<int>(i)},
            chip.variants.at);
}

void ControlCensus::addRegister(const Register& any) {
    const std::string& form = any.row.form;
    addRow(any.row, any.at);
    add(any.hexBox, any.at, form);
    add(any.hexButton, any.at, form);
    add(any.writeButton, any.at, form);
    add(any.writeLine.button, any.at, form);
    for (const Field& field : any.fields)
        addField(field, form);
    for (const View& view : any.views) {
        if (view.row.first != any.row.first)
            addRow(view.row, view.at);
        add(view.button, view.at, view.row.form);
        add(view.line.button, view.at, view.row.form);
    }
}

void ControlCensus::addField(const Field& field, const std::string& form) {
    add(field.frame, field.at, form);
    if (field.kind != Field::Kind::Options) {
        add(field.control, field.at, form);
        return;
    }
    for (std::size_t i = 0; i < field.choices.size(); ++i)
        add({field.control.name, field.control.index + static_cast<int>(i)}, field.at, form);
}

void ControlCensus::addRow(const Row& row, const Place& at) {
    if (!row.exists())
        return;
    const auto [known, isNew] =
        rows_.emplace(Key(row.form, row.first.name, row.first.index), row.width());
    if (!isNew && known->second == row.width())
        return;
    for (int bit = 0; bit < row.width(); ++bit)
        add({row.first.name, row.first.index + bit}, at, row.form);
}

void ControlCensus::add(const ControlName& name, const Place& at, const std::string& form) {
    if (!name.exists())
        return;
    const auto [found, isNew] = taken_.emplace(Key(form, name.name, name.index), at);
    if (!isNew)
        problems_.push_back({at,
                             fmt::format("the control {} is there already, by line {}", text(name),
                                         found->second.line),
                             "Give it another name, or another title when it has none."});
}

std::string ControlCensus::nearText(const ControlName& name) const {
    std::vector<std::string> names;
    for (const auto& [key, place] : taken_)
        names.push_back(text(ControlName{std::get<1>(key), std::get<2>(key)}));
    const std::vector<std::string> found = forms::nearNames(text(name), names);
    return found.empty() ? "Name one that the file makes."
                         : fmt::format("Did you mean {}?", fmt::join(found, ", "));
}

} // namespace bitlux::chips
