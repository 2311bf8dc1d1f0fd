#include "platform/forms/form_set.h"

#include "platform/failure.h"
#include "platform/forms/near_names.h"

#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::forms {

UnknownName::UnknownName(const std::string& name, std::vector<std::string> nearOnes)
    : std::runtime_error(nearOnes.empty() ? fmt::format("There is no {}", name)
                                          : fmt::format("There is no {}; there is {}", name,
                                                        fmt::join(nearOnes, ", "))),
      near_(std::move(nearOnes)) {}

void FormSet::declare(const std::string& name, std::function<Form&()> touch) {
    forms_[name] = std::move(touch);
}

std::vector<std::string> FormSet::names() const {
    std::vector<std::string> result;
    for (const auto& [name, touch] : forms_)
        result.push_back(name);
    return result;
}

Form& FormSet::form(std::string_view name) const {
    const auto found = forms_.find(name);
    if (found == forms_.end())
        throw UnknownName(std::string(name), nearNames(name, names()));
    return found->second();
}

Control& FormSet::control(std::string_view fullName) const {
    const std::size_t point = fullName.find('.');
    if (point == std::string_view::npos)
        throw UnknownName(std::string(fullName), {});
    return form(fullName.substr(0, point)).control(fullName.substr(point + 1));
}

void FormSet::perform(std::string_view place, const std::function<void()>& action) const {
    std::string failure;
    try {
        action();
        return;
    } catch (const std::bad_alloc&) {
        failure = "Out of memory";
    } catch (const std::out_of_range&) {
        failure = "Subscript out of range";
    } catch (const std::exception& error) {
        failure = error.what();
    }
    boxes_.show({.text = fmt::format("{}{}{}", failure, lineBreak, place)});
}

std::vector<Control*> FormSet::takeDirty() {
    for (Control* control : dirty_)
        control->dirty_ = false;
    return std::exchange(dirty_, {});
}

void FormSet::noteDirty(Control& control) {
    dirty_.push_back(&control);
    if (dirty_.size() == 1)
        becameDirty.raise();
}

void FormSet::forget(Control& control) {
    if (control.dirty_)
        std::erase(dirty_, &control);
}

} // namespace bitlux::forms
