#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session_variables.h"

#include <functional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>
#include <vector>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::test {

inline std::string valueOf(const forms::Control& control) {
    if (const auto* check = dynamic_cast<const forms::CheckBox*>(&control))
        return std::to_string(check->value());
    if (const auto* option = dynamic_cast<const forms::OptionButton*>(&control))
        return option->value() ? "on" : "off";
    if (const auto* combo = dynamic_cast<const forms::ComboBox*>(&control))
        return combo->text();
    if (const auto* box = dynamic_cast<const forms::TextBox*>(&control))
        return box->text();
    if (const auto* tabs = dynamic_cast<const forms::TabStrip*>(&control))
        return std::to_string(tabs->selected());
    return "";
}

/// What the controls of a form hold, a line each.
inline std::string controlsOf(const forms::Form& form) {
    std::string text;
    for (const forms::Control* control : form.controls())
        text +=
            fmt::format("{} {}{}{}\n", control->localName(), valueOf(*control),
                        control->visible() ? "" : " hidden", control->enabled() ? "" : " disabled");
    return text;
}

template <typename Value>
std::string valueOf(const Value& value) {
    return fmt::format("{}", value);
}
inline std::string valueOf(const Flag& flag) {
    return std::to_string(flag.value());
}
template <int Bits>
std::string valueOf(const PortPins<Bits>& pins) {
    std::string text = std::to_string(pins.value());
    for (int bit = 0; bit < Bits; ++bit)
        text += " " + pins.name(bit);
    return text;
}
inline std::string valueOf(const std::span<const PartTab>& tabs) {
    std::string text;
    for (const PartTab& tab : tabs)
        text += fmt::format("{} ", tab.PartNumber);
    return text;
}
inline std::string valueOf(const QuickCommandTable& table) {
    std::string text;
    for (std::size_t row = 0; row < table.rows(); ++row)
        text += fmt::format("{}{}\n", table.name(row), table.bits(row));
    return text;
}
inline std::string valueOf(const BatchLists& batches) {
    std::string text;
    for (int n = 1; n <= batches.count(); ++n)
        text += fmt::format("{}\n", batches(n));
    return text;
}

/// The variables of the session, a line each, but these.
inline std::string variablesOf(Session& session, const std::set<std::string_view>& without = {}) {
    std::string text;
    for (const SessionVariable& variable : sessionVariables())
        if (!without.contains(variable.name))
            std::visit(
                [&](const auto& place) {
                    if constexpr (std::is_pointer_v<std::decay_t<decltype(place)>>)
                        text += fmt::format("{} {}\n", variable.name, valueOf(*place));
                    else
                        text += fmt::format("{} {}\n", variable.name, valueOf(place));
                },
                variable.place(session));
    return text;
}

} // namespace bitlux::test
