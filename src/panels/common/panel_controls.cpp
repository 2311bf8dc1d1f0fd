#include "panels/common/panel_controls.h"

#include "platform/failure.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux {

namespace {

std::optional<int> elementOf(const oldchips::ControlName& name) {
    return name.index < 0 ? std::nullopt : std::optional(name.index);
}

} // namespace

std::string PanelControls::text(const Name& name) {
    return name.index < 0 ? std::string(name.name) : fmt::format("{}({})", name.name, name.index);
}

template <typename T, typename... Args>
T& PanelControls::add(const Name& name, Args&&... args) {
    auto made = std::make_unique<T>(form_, std::forward<Args>(args)..., elementOf(name));
    T& control = *made;
    controls_.emplace(keyOf(name), std::move(made));
    return control;
}

forms::Label& PanelControls::addLabel(const Name& name, std::string_view caption) {
    return add<forms::Label>(name, std::string(name.name), std::string(caption));
}

forms::Button& PanelControls::addButton(const Name& name, std::string_view caption) {
    return add<forms::Button>(name, std::string(name.name), std::string(caption));
}

forms::CheckBox& PanelControls::addBox(const Name& name, std::string_view caption) {
    return add<forms::CheckBox>(name, std::string(name.name), std::string(caption));
}

forms::Frame& PanelControls::addFrame(const Name& name, std::string_view caption) {
    return add<forms::Frame>(name, std::string(name.name), std::string(caption));
}

forms::ComboBox& PanelControls::addCombo(const oldchips::ComboField& field) {
    auto& combo =
        add<forms::ComboBox>({field.combo}, std::string(field.combo), forms::ComboBox::Style::List,
                             std::vector<std::string>(field.items.begin(), field.items.end()));
    combo.setEditText(std::string(field.prompt));
    return combo;
}

void PanelControls::addOptions(std::string_view name, int first,
                               std::span<const std::string_view> captions) {
    forms::OptionGroup& group = groups_[{std::string(name), first}];
    for (int index = first; const std::string_view caption : captions) {
        add<forms::OptionButton>({name, index}, group, std::string(name), std::string(caption));
        ++index;
    }
}

const LabelRow& PanelControls::addRow(std::string_view name, oldchips::BitCaptions captions,
                                      int first) {
    LabelRow::Labels labels;
    for (int index = first; const std::string_view caption : captions) {
        labels.push_back(&addLabel({name, index++}, caption));
        labels.back()->setBackColor(forms::windowColor);
    }
    return rows_.emplace(keyOf({name, first}), std::move(labels)).first->second;
}

forms::Control* PanelControls::find(const Name& name) const {
    const auto found = controls_.find(keyOf(name));
    return found == controls_.end() ? nullptr : found->second.get();
}

const LabelRow& PanelControls::row(std::string_view name, int first) const {
    const auto found = rows_.find(keyOf({name, first}));
    if (found == rows_.end())
        throw forms::UnknownName(std::string(name), {});
    return found->second;
}

std::string PanelControls::tooltips(std::span<const Name> names) const {
    std::vector<std::string> texts;
    texts.reserve(names.size());
    for (const Name& name : names)
        texts.push_back(find(name)->tooltip());
    return fmt::format("{}", fmt::join(texts, ", "));
}

std::optional<int> PanelControls::chosen(std::string_view options, int first, int count) const {
    for (int value = 0; value < count; ++value)
        if (get<forms::OptionButton>({options, first + value}).value())
            return value;
    return {};
}

void PanelControls::clearOptions(std::string_view options, int first) {
    groups_.at({std::string(options), first}).clear();
}

void PanelControls::onClick(const Name& name, Action action) {
    handlers_[std::string(name.name)][name.index].push_back(std::move(action));
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
}

} // namespace bitlux
