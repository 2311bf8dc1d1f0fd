#include "panels/common/register_pages.h"

#include "panels/common/described_register.h"
#include "platform/conversions.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

RegisterPages::RegisterPages(const chips::Chip& chip, PanelControls& controls, PanelWords& words,
                             Append append, std::string form)
    : chip_(chip),
      controls_(controls),
      words_(words),
      append_(std::move(append)),
      form_(std::move(form)),
      choices_(controls) {
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
        choices_.add(added, field);
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
            choices_.follow(added, row, bit);
        });
}

// Values

void RegisterPages::showMarked() const {
    for (const chips::Register& any : chip_.registers)
        if (any.row.form == form_)
            for (const chips::Field& field : any.fields)
                choices_.showMarked(field);
}

std::uint64_t RegisterPages::value(const chips::Register& of) const {
    if (of.row.exists())
        return controls_.row(of.row.first).value();
    return choices_.value(of);
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
    choices_.follow(target, value);
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
              [this, &command] { execute(command); });
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

void RegisterPages::execute(const chips::Command& command) {
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
