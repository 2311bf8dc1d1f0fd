#include "panels/common/panel_controls.h"

#include "platform/failure.h"

#include <algorithm>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

std::optional<int> elementOf(const ControlRef& name) {
    return name.index < 0 ? std::nullopt : std::optional(name.index);
}

} // namespace

std::string PanelControls::text(const Name& name) {
    return name.index < 0 ? std::string(name.name) : fmt::format("{}({})", name.name, name.index);
}

template <typename T, typename... Args>
T& PanelControls::make(const Name& name, Args&&... args) {
    auto made = std::make_unique<T>(form_, std::forward<Args>(args)..., elementOf(name));
    T& control = *made;
    controls_.emplace(keyOf(name), std::move(made));
    return control;
}

forms::Label& PanelControls::addLabel(const Name& name, std::string_view caption) {
    return make<forms::Label>(name, std::string(name.name), std::string(caption));
}

forms::Button& PanelControls::addButton(const Name& name, std::string_view caption) {
    return make<forms::Button>(name, std::string(name.name), std::string(caption));
}

forms::CheckBox& PanelControls::addBox(const Name& name, std::string_view caption) {
    return make<forms::CheckBox>(name, std::string(name.name), std::string(caption));
}

forms::TextBox& PanelControls::addEntry(const Name& name) {
    return make<forms::TextBox>(name, std::string(name.name));
}

forms::ScrollBar& PanelControls::addBar(const Name& name, int least, int most) {
    return make<forms::ScrollBar>(name, std::string(name.name), least, most);
}

forms::Frame& PanelControls::addFrame(const Name& name, std::string_view caption) {
    return make<forms::Frame>(name, std::string(name.name), std::string(caption));
}

forms::ComboBox& PanelControls::addCombo(const Name& name, forms::ComboBox::Style style,
                                         Texts items) {
    return make<forms::ComboBox>(name, std::string(name.name), style, std::move(items));
}

void PanelControls::addOptions(const Name& first, const Texts& captions) {
    forms::OptionGroup& group = groups_[keyOf(first)];
    for (int index = first.index; const std::string& caption : captions)
        make<forms::OptionButton>({first.name, index++}, group, std::string(first.name), caption);
}

void PanelControls::add(const chips::OwnControl& described) {
    using Kind = chips::OwnControl::Kind;
    const std::string caption = described.texts.empty() ? std::string() : described.texts.front();
    switch (described.kind) {
    case Kind::Label:
        addLabel(described.name, caption);
        break;
    case Kind::Button:
        addButton(described.name, caption);
        break;
    case Kind::Box:
        addBox(described.name, caption);
        break;
    case Kind::Frame:
        addFrame(described.name, caption);
        break;
    case Kind::Entry:
        addEntry(described.name);
        break;
    case Kind::Options:
        addOptions(described.name, described.texts);
        if (described.selected >= 0)
            get<forms::OptionButton>(ControlRef(described.name) + described.selected)
                .setValue(true);
        return;
    case Kind::List:
        addCombo(described.name, forms::ComboBox::Style::List, described.texts)
            .setEditText(described.prompt);
        break;
    case Kind::Bar:
        addBar(described.name, described.least, described.most);
        break;
    }
    forms::Control& made = *find(described.name);
    made.setVisible(!described.hidden);
    made.setEnabled(!described.disabled);
    if (described.colour)
        get<forms::Label>(described.name).setBackColor(*described.colour);
}

const LabelRow& PanelControls::addRow(const chips::Row& row) {
    const Key key = keyOf(row.first);
    if (const auto there = rows_.find(key); there != rows_.end())
        return there->second;
    LabelRow::Labels labels;
    for (int index = row.first.index; const std::string& caption : row.captions) {
        labels.push_back(&addLabel({row.first.name, index++}, caption));
        light(*labels.back(), false, row.colours);
    }
    return rows_.emplace(key, LabelRow(std::move(labels), row.colours)).first->second;
}

forms::Control* PanelControls::find(const Name& name) const {
    const auto found = controls_.find(keyOf(name));
    return found == controls_.end() ? nullptr : found->second.get();
}

const LabelRow& PanelControls::row(const Name& first) const {
    const auto found = rows_.find({std::string(first.name), std::max(first.index, 0)});
    if (found == rows_.end())
        throw forms::UnknownName(std::string(first.name), {});
    return found->second;
}

std::string PanelControls::tooltips(const std::vector<chips::ControlName>& names) const {
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (const chips::ControlName& name : names)
        texts.push_back(find(name)->tooltip());
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::optional<int> PanelControls::chosen(const Name& first, int count) const {
    for (int i = 0; i < count; ++i)
        if (get<forms::OptionButton>(first + i).value())
            return i;
    return {};
}

void PanelControls::clearOptions(const Name& first) {
    groups_.at(keyOf(first)).clear();
}

void PanelControls::onClick(const Name& name, Action action) {
    handlers_[std::string(name.name)][name.index].push_back(std::move(action));
}

void PanelControls::onType(const Name& name, Action action) {
    typing_[std::string(name.name)] = std::move(action);
}

void PanelControls::run(const Name& name) const {
    if (find(name) == nullptr)
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no {}", text(name)));
    const auto elements = handlers_.find(name.name);
    if (elements == handlers_.end())
        return;
    const auto actions = elements->second.find(name.index);
    if (actions != elements->second.end())
        for (const Action& action : actions->second)
            action();
}

void PanelControls::registerHandlers() {
    for (const auto& [name, elements] : handlers_) {
        const std::string procedure = fmt::format("{}_Click", name);
        if (elements.begin()->first >= 0)
            form_.procedure(procedure, [this, called = name](int index) { run({called, index}); });
        else
            form_.procedure(procedure, [this, called = name] { run({called}); });
    }
    for (const auto& [name, action] : typing_)
        form_.procedure(fmt::format("{}_Change", name), action);
}

} // namespace bitlux
