#include "chips/control_census.h"

#include "platform/forms/near_names.h"

#include <array>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::chips {

namespace {

using Kind = ControlCensus::Kind;

/// Of the sequence that every panel has.
constexpr std::array<std::pair<const char*, Kind>, 12> sequenceControls{
    {{"Ch_Loop", Kind::Box},
     {"Cm_CLEAR_lists", Kind::Button},
     {"Cm_LOAD_Seq", Kind::Button},
     {"Cm_Remove_Line", Kind::Button},
     {"Cm_Run_Seq", Kind::Button},
     {"Cm_SAVE_Seq", Kind::Button},
     {"Cm_Stop_Loop", Kind::Button},
     {"Cm_Wait", Kind::Button},
     {"List1", Kind::Other},
     {"List_Commands", Kind::Other},
     {"List_Value", Kind::Other},
     {"Text_Wait", Kind::Other}}};

std::string lowerCase(std::string text) {
    for (char& c : text)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return text;
}

} // namespace

std::vector<std::string> controlsOfEveryPanel() {
    std::vector<std::string> names{"Val_loop", "PanelTabs", "RegisterTabs"};
    for (const auto& [name, kind] : sequenceControls)
        names.emplace_back(name);
    return names;
}

ControlCensus::ControlCensus(const Chip& chip, Problems& problems) : problems_(problems) {
    addSequence(chip);
    add(chip.panel.outerTabs, Kind::Other, chip.panel.at);
    add(chip.panel.registerTabs, Kind::Other, chip.panel.at);
    addRow(chip.word.status, chip.word.at);
    for (const Register& any : chip.registers)
        addRegister(any);
    for (const Command& any : chip.commands) {
        add(any.button, Kind::Button, any.at, any.form);
        add(any.line.button, Kind::Button, any.at, any.form);
    }
    for (const ReadAll& any : chip.readAlls)
        add(any.button, Kind::Button, any.at, any.form);
    for (const Companion& any : chip.panel.described)
        add(any.button, Kind::Button, chip.panel.at);
    if (chip.automaticReads.exists()) {
        add({.name = chip.automaticReads.timer}, Kind::Other, chip.automaticReads.at);
        for (int box = 0; box <= chip.automaticReads.last(); ++box)
            add({.name = chip.automaticReads.array, .index = box}, Kind::Box,
                chip.automaticReads.at);
    }
    for (const OwnControl& any : chip.controls)
        addOwn(any);
    for (std::size_t i = 0; i < chip.variants.titles.size(); ++i)
        add({chip.variants.options.name, chip.variants.options.index + static_cast<int>(i)},
            Kind::Option, chip.variants.at);
}

void ControlCensus::addSequence(const Chip& chip) {
    for (const auto& [name, kind] : sequenceControls)
        add({.name = name}, kind, {});
    for (int box = 0; box < chip.sequence.boxes; ++box)
        add({.name = "Val_loop", .index = box}, Kind::Other, {});
    if (chip.sequence.editor.exists() && !chip.sequence.editor.button.exists())
        add({.name = std::string(changeButton)}, Kind::Button, {});
    if (chip.sequence.moves)
        for (const char* button : {"cm_MoveUp", "cm_MoveDown"})
            add({.name = button}, Kind::Button, {});
    for (const ControlName* label : {&chip.sequence.loop.startLabel, &chip.sequence.loop.stopLabel})
        add(*label, Kind::Label, chip.sequence.at);
    if (chip.sequence.stops.exists())
        addStops(chip.sequence.at);
    for (const SequenceStyle::Column& column : chip.sequence.answers)
        add({.name = column.list}, Kind::Other, chip.sequence.at);
}

void ControlCensus::addOwn(const OwnControl& any) {
    using Own = OwnControl::Kind;
    if (any.kind == Own::Options)
        for (std::size_t i = 0; i < any.texts.size(); ++i)
            add({any.name.name, any.name.index + static_cast<int>(i)}, Kind::Option, any.at);
    else
        add(any.name,
            any.kind == Own::Label    ? Kind::Label
            : any.kind == Own::Button ? Kind::Button
            : any.kind == Own::Box    ? Kind::Box
                                      : Kind::Other,
            any.at);
}

void ControlCensus::addStops(const Place& at) {
    for (const char* box : {"Ch_FirstCondition", "Ch_SecondCondition"})
        add({.name = box}, Kind::Box, at);
    for (const char* text : {"Text_FirstCondition", "Text_SecondCondition"})
        add({.name = text}, Kind::Other, at);
    for (const char* button : {"Cm_PassCondition1", "Cm_PassCondition2"})
        add({.name = button}, Kind::Button, at);
    for (const int place : {0, 1}) {
        add({.name = "frame_Condition", .index = place}, Kind::Other, at);
        for (const char* options : {"R_Condition1", "R_Condition2"})
            add({.name = options, .index = place}, Kind::Option, at);
    }
}

void ControlCensus::addRegister(const Register& any) {
    const std::string& form = any.row.form;
    addRow(any.row, any.at);
    add(any.hexBox, Kind::Other, any.at, form);
    add(any.hexButton, Kind::Button, any.at, form);
    add(any.writeButton, Kind::Button, any.at, form);
    add(any.writeLine.button, Kind::Button, any.at, form);
    add(any.alarm, Kind::Label, any.at, form);
    for (const Field& field : any.fields)
        addField(field, form);
    for (const View& view : any.views) {
        addRow(view.row, view.at);
        add(view.button, Kind::Button, view.at, view.row.form);
        add(view.line.button, Kind::Button, view.at, view.row.form);
        add(view.frame, Kind::Other, view.at, view.row.form);
        add(view.textLabel.label, Kind::Label, view.at, view.row.form);
    }
}

void ControlCensus::addField(const Field& field, const std::string& form) {
    add(field.frame, Kind::Other, field.at, form);
    if (field.kind == Field::Kind::Options)
        for (std::size_t i = 0; i < field.choices.size(); ++i)
            add({field.control.name, field.control.index + static_cast<int>(i)}, Kind::Option,
                field.at, form);
    else
        add(field.control, field.kind == Field::Kind::Box ? Kind::Box : Kind::Other, field.at,
            form);
}

void ControlCensus::addRow(const Row& row, const Place& at) {
    if (!row.exists())
        return;
    const auto [known, isNew] =
        rows_.emplace(Key(row.form, row.first.name, row.first.index), row.width());
    if (!isNew && known->second == row.width())
        return;
    for (int bit = 0; bit < row.width(); ++bit)
        add({row.first.name, row.first.index + bit}, Kind::Label, at, row.form);
}

void ControlCensus::add(const ControlName& name, Kind kind, const Place& at,
                        const std::string& form) {
    if (!name.exists())
        return;
    const bool isElement = name.index >= 0;
    const Name& known =
        names_.emplace(std::pair(form, lowerCase(name.name)), Name{name.name, isElement, at})
            .first->second;
    const auto [found, isNew] =
        taken_.emplace(Key(form, name.name, name.index), Taken{.kind = kind, .at = at});
    if (!isNew)
        reportDuplicate(name, at, {.spelling = name.name, .at = found->second.at});
    else if (known.isArray != isElement || known.spelling != name.name)
        reportDuplicate(name, at, known);
}

void ControlCensus::reportDuplicate(const ControlName& name, const Place& at, const Name& before) {
    if (!reported_.emplace(name.name, at.line).second)
        return;
    std::string what = fmt::format("the control {} is there", text(name));
    if (before.spelling != name.name)
        what += fmt::format(" as {}", before.spelling);
    what += before.at.line > 0 ? fmt::format(" already, by line {}", before.at.line)
                               : " in every panel";
    problems_.push_back(
        {at, std::move(what), "Give it another name, or another title when it has none."});
}

std::optional<ControlCensus::Kind> ControlCensus::kindOf(const ControlName& name,
                                                         const std::string& form) const {
    const auto found = taken_.find({form, name.name, name.index});
    return found != taken_.end() ? std::optional(found->second.kind) : std::nullopt;
}

bool ControlCensus::hasAny(const std::string& name, int first, int last) const {
    const auto found = taken_.lower_bound({std::string(), name, first});
    if (found == taken_.end())
        return false;
    const auto& [form, control, index] = found->first;
    return form.empty() && control == name && (first < 0 || index <= last);
}

std::string ControlCensus::nearText(const ControlName& name) const {
    constexpr int most = 20;
    std::vector<std::string> found;
    if (++asked_ <= most) {
        std::vector<std::string> names;
        for (const auto& [key, taken] : taken_)
            names.push_back(text(ControlName{std::get<1>(key), std::get<2>(key)}));
        found = forms::nearNames(text(name), names);
    }
    return found.empty() ? "Name one that the file makes."
                         : fmt::format("Did you mean {}?", fmt::join(found, ", "));
}

} // namespace bitlux::chips
