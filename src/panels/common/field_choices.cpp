#include "panels/common/field_choices.h"

#include "panels/common/field_text.h"

#include <algorithm>
#include <utility>

namespace bitlux {

namespace {

/// Index of the choice for a value, -1 when there is none.
int choiceOf(const chips::Field& field, std::uint64_t value) {
    const auto found =
        std::find_if(field.choices.begin(), field.choices.end(),
                     [value](const chips::Choice& choice) { return choice.code == value; });
    return found == field.choices.end() ? -1 : static_cast<int>(found - field.choices.begin());
}

PanelControls::Texts textsOf(const chips::Field& field) {
    PanelControls::Texts texts;
    for (const chips::Choice& choice : field.choices)
        texts.push_back(choice.text);
    return texts;
}

} // namespace

void FieldChoices::add(const chips::Register& owner, const chips::Field& field) {
    switch (field.kind) {
    case chips::Field::Kind::Options:
        addOptions(owner, field);
        break;
    case chips::Field::Kind::Box:
        addBox(owner, field);
        break;
    case chips::Field::Kind::List:
        addList(owner, field);
        break;
    }
}

void FieldChoices::addOptions(const chips::Register& owner, const chips::Field& field) {
    controls_.addOptions(field.control, textsOf(field));
    if (field.frame.exists())
        controls_.addFrame(field.frame, fieldTitle(field));
    for (std::size_t i = 0; i < field.choices.size(); ++i) {
        const auto index = static_cast<int>(i);
        const ControlRef option = ControlRef(field.control) + index;
        controls_.find(option)->setTooltip(choiceText(field, i));
        controls_.onClick(option, [this, &owner, &field, index] {
            choose(owner, field, field.choices[static_cast<std::size_t>(index)].code);
            if (field.mirror.exists())
                controls_.get<forms::OptionButton>(ControlRef(field.mirror) + index).setValue(true);
            if (field.gate.exists())
                controls_.get<forms::CheckBox>(field.gate).setValue(1);
        });
    }
    if (field.selected >= 0)
        controls_.get<forms::OptionButton>(ControlRef(field.control) + field.selected)
            .setValue(true);
    if (field.gate.exists())
        addGate(field);
}

void FieldChoices::addGate(const chips::Field& field) {
    controls_.onClick(field.gate, [this, &field] {
        const bool shown = controls_.get<forms::CheckBox>(field.gate).checked();
        for (std::size_t i = 0; i < field.choices.size(); ++i)
            controls_.find(ControlRef(field.control) + static_cast<int>(i))->setVisible(shown);
    });
}

void FieldChoices::addBox(const chips::Register& owner, const chips::Field& field) {
    const chips::Choice& ticked = field.choices.front();
    forms::CheckBox& box = controls_.addBox(field.control, ticked.text);
    box.setTooltip(choiceText(field, 0));
    controls_.onClick(field.control, [this, &owner, &field, &box, &ticked] {
        choose(owner, field, box.checked() ? ticked.code : 0);
    });
    if (field.selected == 0)
        box.setValue(1);
}

void FieldChoices::addList(const chips::Register& owner, const chips::Field& field) {
    using Style = forms::ComboBox::Style;
    PanelControls::Texts texts = textsOf(field);
    if (field.markedFrom >= 0)
        texts.resize(std::min(texts.size(), static_cast<std::size_t>(field.markedFrom)));
    forms::ComboBox& list = controls_.addCombo(
        field.control, field.typed ? Style::Editable : Style::List, std::move(texts));
    const auto takeText = [this, &owner, &field, &list] {
        chooseByText(owner, field, list.text());
    };
    controls_.onClick(field.control, [this, &owner, &field, &list, takeText] {
        if (list.listIndex() >= 0)
            choose(owner, field, field.choices.at(static_cast<std::size_t>(list.listIndex())).code);
        else if (field.typed)
            takeText();
    });
    if (field.typed)
        controls_.onType(field.control, takeText);
    if (field.selected >= 0)
        list.setListIndex(field.selected);
    else
        list.setEditText(field.prompt);
}

void FieldChoices::showMarked(const chips::Field& field) const {
    if (field.markedFrom < 0)
        return;
    auto& list = controls_.get<forms::ComboBox>(field.control);
    for (std::size_t i = list.items().size(); i < field.choices.size(); ++i)
        list.addItem(field.choices[i].text);
}

/// A text that is no choice changes nothing.
void FieldChoices::chooseByText(const chips::Register& owner, const chips::Field& field,
                                const std::string& text) const {
    const auto found =
        std::find_if(field.choices.begin(), field.choices.end(),
                     [&text](const chips::Choice& choice) { return choice.text == text; });
    if (found != field.choices.end())
        choose(owner, field, found->code);
}

void FieldChoices::choose(const chips::Register& owner, const chips::Field& field,
                          std::uint64_t code) const {
    if (!owner.row.exists())
        return;
    const LabelRow& row = controls_.row(owner.row.first);
    for (int k = 0; k < field.bits.size(); ++k)
        row.set(field.bits.at(k), (code >> k & 1) != 0);
}

void FieldChoices::follow(const chips::Register& changed, std::uint64_t value) const {
    for (const chips::Field& field : changed.fields)
        if (field.follows)
            select(field, field.bits.taken(value));
}

void FieldChoices::follow(const chips::Register& changed, const LabelRow& row, int bit) const {
    for (const chips::Field& field : changed.fields)
        if (field.follows && field.bits.has(bit))
            select(field, field.bits.taken(row.value()));
}

void FieldChoices::select(const chips::Field& field, std::uint64_t value) const {
    const int choice = choiceOf(field, value);
    if (field.kind == chips::Field::Kind::Box)
        controls_.get<forms::CheckBox>(field.control).setValue(choice == 0 ? 1 : 0);
    else if (field.kind == chips::Field::Kind::List)
        controls_.get<forms::ComboBox>(field.control).setListIndex(choice);
    else if (choice >= 0)
        controls_.get<forms::OptionButton>(ControlRef(field.control) + choice).setValue(true);
    else
        controls_.clearOptions(field.control);
}

bool FieldChoices::counts(const chips::Field& field) const {
    if (!field.when.exists())
        return true;
    const forms::Control* control = controls_.find(field.when.control);
    if (const auto* option = dynamic_cast<const forms::OptionButton*>(control))
        return option->value();
    const auto* box = dynamic_cast<const forms::CheckBox*>(control);
    return box != nullptr && box->checked();
}

std::uint64_t FieldChoices::codeOf(const chips::Field& field) const {
    int choice = -1;
    if (field.kind == chips::Field::Kind::Box)
        choice = controls_.get<forms::CheckBox>(field.control).checked() ? 0 : -1;
    else if (field.kind == chips::Field::Kind::List)
        choice = controls_.get<forms::ComboBox>(field.control).listIndex();
    else
        choice =
            controls_.chosen(field.control, static_cast<int>(field.choices.size())).value_or(-1);
    return choice < 0 ? 0 : field.choices.at(static_cast<std::size_t>(choice)).code;
}

std::uint64_t FieldChoices::value(const chips::Register& of) const {
    std::uint64_t sum = 0;
    for (const chips::Field& field : of.fields)
        if (counts(field))
            sum |= field.bits.placed(codeOf(field));
    return sum;
}

} // namespace bitlux
