#include "panels/common/register_pages.h"

#include "panels/common/described_register.h"
#include "panels/common/field_text.h"
#include "platform/conversions.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

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

RegisterPages::RegisterPages(const chips::Chip& chip, PanelControls& controls, PanelWords& words,
                             Append append, std::string form)
    : chip_(chip),
      controls_(controls),
      words_(words),
      append_(std::move(append)),
      form_(std::move(form)) {
    for (const chips::Register& any : chip.registers)
        add(any);
    for (const chips::Command& any : chip.commands)
        if (any.form == form_)
            addCommand(any);
}

void RegisterPages::add(const chips::Register& added) {
    if (added.row.form == form_)
        addRegister(added);
    for (const chips::View& view : added.views)
        if (view.row.form == form_)
            addView(view);
}

void RegisterPages::addRegister(const chips::Register& added) {
    if (added.row.exists() && controls_.find(added.row.first) == nullptr)
        addWriteRow(added);
    for (const chips::Field& field : added.fields)
        addField(added, field);
    if (added.writable())
        addButton(added.writeButton, added.writeTitle, words_.text(added),
                  [this, &added] { write(added); });
    if (added.alarm.exists())
        controls_.addLabel(added.alarm, added.alarmText).hide();
    addAppend(added.writeLine, [this, &added] { append_(added.writeLine.name, lineValue(added)); });
}

/// A line has all bits of the row, also those that Write leaves out.
std::string RegisterPages::lineValue(const chips::Register& of) const {
    return hex(chip_.sequence.wholeWords
                   ? words_.format().word(chips::Operation::Write, of.address, value(of))
                   : value(of));
}

void RegisterPages::addWriteRow(const chips::Register& added) {
    const LabelRow& row = controls_.addRow(added.row);
    for (int bit = 0; bit < row.size(); ++bit)
        controls_.onClick(ControlRef(added.row.first) + bit, [this, &added, &row, bit] {
            row.set(bit, !row.lit(bit));
            follow(added, bit);
        });
}

// The second view of the bits

void RegisterPages::addField(const chips::Register& owner, const chips::Field& field) {
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

void RegisterPages::addOptions(const chips::Register& owner, const chips::Field& field) {
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

void RegisterPages::addGate(const chips::Field& field) {
    controls_.onClick(field.gate, [this, &field] {
        const bool shown = controls_.get<forms::CheckBox>(field.gate).checked();
        for (std::size_t i = 0; i < field.choices.size(); ++i)
            controls_.find(ControlRef(field.control) + static_cast<int>(i))->setVisible(shown);
    });
}

void RegisterPages::addBox(const chips::Register& owner, const chips::Field& field) {
    const chips::Choice& ticked = field.choices.front();
    forms::CheckBox& box = controls_.addBox(field.control, ticked.text);
    box.setTooltip(choiceText(field, 0));
    controls_.onClick(field.control, [this, &owner, &field, &box, &ticked] {
        choose(owner, field, box.checked() ? ticked.code : 0);
    });
    if (field.selected == 0)
        box.setValue(1);
}

void RegisterPages::addList(const chips::Register& owner, const chips::Field& field) {
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

void RegisterPages::showMarked() const {
    for (const chips::Register& any : chip_.registers)
        for (const chips::Field& field : any.fields) {
            if (field.markedFrom < 0 || any.row.form != form_)
                continue;
            auto& list = controls_.get<forms::ComboBox>(field.control);
            for (std::size_t i = list.items().size(); i < field.choices.size(); ++i)
                list.addItem(field.choices[i].text);
        }
}

/// A text that is no choice changes nothing.
void RegisterPages::chooseByText(const chips::Register& owner, const chips::Field& field,
                                 const std::string& text) const {
    const auto found =
        std::find_if(field.choices.begin(), field.choices.end(),
                     [&text](const chips::Choice& choice) { return choice.text == text; });
    if (found != field.choices.end())
        choose(owner, field, found->code);
}

void RegisterPages::choose(const chips::Register& owner, const chips::Field& field,
                           std::uint64_t code) const {
    if (!owner.row.exists())
        return;
    const LabelRow& row = controls_.row(owner.row.first);
    for (int k = 0; k < field.bits.size(); ++k)
        row.set(field.bits.at(k), (code >> k & 1) != 0);
}

void RegisterPages::follow(const chips::Register& changed, int bit) const {
    for (const chips::Field& field : changed.fields)
        if (field.follows && field.bits.has(bit))
            follow(field, field.bits.taken(value(changed)));
}

void RegisterPages::follow(const chips::Field& field, std::uint64_t value) const {
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

// Values

bool RegisterPages::counts(const chips::Field& field) const {
    if (!field.when.exists())
        return true;
    const forms::Control* control = controls_.find(field.when.control);
    if (const auto* option = dynamic_cast<const forms::OptionButton*>(control))
        return option->value();
    const auto* box = dynamic_cast<const forms::CheckBox*>(control);
    return box != nullptr && box->checked();
}

std::uint64_t RegisterPages::codeOf(const chips::Field& field) const {
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

std::uint64_t RegisterPages::value(const chips::Register& of) const {
    if (of.row.exists())
        return controls_.row(of.row.first).value();
    std::uint64_t sum = 0;
    for (const chips::Field& field : of.fields)
        if (counts(field))
            sum |= field.bits.placed(codeOf(field));
    return sum;
}

void RegisterPages::write(const chips::Register& target) {
    const std::uint64_t sent = value(target);
    send(target, sent);
    written(target, sent);
}

void RegisterPages::send(const chips::Register& target, std::uint64_t value) {
    words_.write(target, value);
    const std::uint64_t reply = words_.format().data.taken(words_.answer());
    if (const chips::View* shown = replyOf(target))
        controls_.row(shown->row.first).show(reply);
    if (target.alarm.exists())
        controls_.find(target.alarm)->setVisible(reply == target.mask());
}

const chips::View* RegisterPages::replyOf(const chips::Register& of) const {
    if (of.reply.empty())
        return nullptr;
    for (const chips::Register& any : chip_.registers)
        if (any.title == of.reply && !any.views.empty())
            return &any.views.front();
    return nullptr;
}

bool RegisterPages::isThere(const chips::View& view) const {
    const chips::Variants& variants = chip_.variants;
    const auto chosen =
        controls_.chosen(variants.options, static_cast<int>(variants.titles.size()));
    return !chosen ||
           std::find(view.on.begin(), view.on.end(),
                     variants.titles[static_cast<std::size_t>(*chosen)]) != view.on.end();
}

void RegisterPages::read(const chips::View& view) {
    if (!view.on.empty() && !isThere(view))
        return;
    show(view, words_.read(view));
}

void RegisterPages::show(const chips::View& view, std::uint64_t value) const {
    controls_.row(view.row.first).show(value);
    if (view.textLabel.exists())
        showText(view);
}

void RegisterPages::adopt(const chips::Register& target, std::uint64_t value) const {
    if (target.row.exists())
        controls_.row(target.row.first).show(value);
    for (const chips::Field& field : target.fields)
        if (field.follows)
            follow(field, field.bits.taken(value));
}

void RegisterPages::showText(const chips::View& view) const {
    const std::uint64_t value = controls_.row(view.row.first).value();
    controls_.get<forms::Label>(view.textLabel.label)
        .setCaption(value < view.textLabel.texts.size() ? view.textLabel.texts[value]
                                                        : view.textLabel.otherwise);
}

// Buttons

void RegisterPages::addView(const chips::View& view) {
    controls_.addRow(view.row);
    addButton(view.button, view.title, words_.text(view), [this, &view] { read(view); });
    addAppend(view.line, [this, &view] { append_(view.line.name, view.line.value); });
    if (view.frame.exists())
        controls_.addFrame(view.frame, view.group);
    if (view.textLabel.exists())
        addTextLabel(view);
}

void RegisterPages::addTextLabel(const chips::View& view) {
    controls_.addLabel(view.textLabel.label, view.textLabel.texts.front());
    if (!view.textLabel.procedure.empty())
        controls_.onCall(view.textLabel.procedure, [this, &view] { showText(view); });
}

void RegisterPages::addCommand(const chips::Command& command) {
    addButton(command.button, command.title, tooltip(command),
              [this, &command] { carryOut(command); });
    addAppend(command.line, [this, &command] { append_(command.line.name, command.line.value); });
}

std::string RegisterPages::tooltip(const chips::Command& command) const {
    std::vector<std::string> words;
    if (command.word)
        words.push_back(words_.text(*command.word));
    if (command.givenBack.exists()) {
        const chips::Register& owner = describedRegister(chip_, command.givenBack.owner);
        words.push_back(words_.text(owner.views.front()));
        words.push_back(words_.text(owner));
    }
    return fmt::format("{}", fmt::join(words, ", "));
}

void RegisterPages::carryOut(const chips::Command& command) {
    const chips::GivenBack& code = command.givenBack;
    if (!code.exists())
        return words_.command(command);
    if (command.word)
        words_.send(*command.word); // what follows is what shows
    const chips::Register& owner = describedRegister(chip_, code.owner);
    const chips::View& view = owner.views.front();
    const std::uint64_t inverted = code.inverted.mask();
    read(view);
    controls_.row(owner.row.first)
        .show((~controls_.row(view.row.first).value() & inverted) | (code.value & ~inverted));
    send(owner, value(owner));
}

void RegisterPages::addButton(const ControlRef& name, const std::string& caption,
                              const std::string& tooltip, PanelControls::Action action) {
    if (name.name.empty())
        return;
    controls_.addButton(name, caption).setTooltip(tooltip);
    controls_.onClick(name, std::move(action));
}

void RegisterPages::addAppend(const chips::Line& line, PanelControls::Action action) {
    addButton(line.button, chip_.sequence.appendTitle, line.name, std::move(action));
}

} // namespace bitlux
