#include "platform/forms/form.h"

#include "platform/failure.h"
#include "platform/forms/form_set.h"
#include "platform/forms/near_names.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>

#include <fmt/format.h>

namespace bitlux::forms {

namespace {

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        return std::tolower(static_cast<unsigned char>(x)) ==
               std::tolower(static_cast<unsigned char>(y));
    });
}

} // namespace

Form::Form(FormSet& set, std::string name, std::string caption)
    : set_(set), name_(std::move(name)), caption_(std::move(caption)) {}

void Form::setVisible(bool visible) {
    if (visible_ != visible) {
        visible_ = visible;
        set_.formShown.raise(*this);
    }
}

void Form::add(Control& control) {
    std::vector<Control*>& sameName = byName_[control.name()];
    for (const Control* other : sameName)
        if (other->index() == control.index() || !other->index() || !control.index())
            throw std::logic_error(fmt::format("{} exists twice", control.fullName()));
    sameName.push_back(&control);
    controls_.push_back(&control);
}

void Form::remove(Control& control) {
    if (focus_ == &control)
        focus_ = nullptr;
    set_.forget(control);
    std::erase(byName_.find(control.name())->second, &control);
    std::erase(controls_, &control);
}

Control& Form::control(std::string_view localName) const {
    const std::string_view name = localName.substr(0, localName.find('('));
    if (const auto found = byName_.find(name); found != byName_.end())
        for (Control* control : found->second)
            if (control->localName() == localName)
                return *control;
    std::vector<std::string> names;
    for (const Control* control : controls_)
        names.push_back(control->localName());
    throw UnknownName(fmt::format("{}.{}", name_, localName), nearNames(localName, names));
}

std::vector<Control*> Form::served(const std::string& handler, std::string_view event) const {
    std::vector<Control*> result;
    if (!handler.ends_with(event))
        return result;
    const std::string_view base(handler.data(), handler.size() - event.size());
    for (Control* control : controls_)
        if (equalIgnoringCase(control->name(), base))
            result.push_back(control);
    if (result.empty())
        throw std::logic_error(fmt::format("{}.{} has no control", name_, handler));
    return result;
}

void Form::procedure(const std::string& name, std::function<void()> body) {
    for (const char* event : {"_Click", "_Timer"})
        for (Control* control : served(name, event))
            control->setClickHandler(body);
    for (Control* control : served(name, "_DblClick"))
        control->setDoubleClickHandler(body);
    procedures_[name] = std::move(body);
}

void Form::procedure(const std::string& name, std::function<void(int)> body) {
    for (Control* control : served(name, "_Click"))
        control->setClickHandler([body, index = control->index().value()] { body(index); });
    procedures_[name] = std::move(body);
}

void Form::function(const std::string& name, std::function<bool(int)> body) {
    procedures_[name] = std::move(body);
}

void Form::keyProcedure(const std::string& name, std::function<void(KeyCode)> body) {
    for (Control* control : served(name, "_KeyDown"))
        control->setKeyHandler(body);
    procedures_[name] = std::function<void(int)>(
        [body = std::move(body)](int code) { body(static_cast<KeyCode>(code)); });
}

std::vector<std::string> Form::procedures() const {
    std::vector<std::string> names;
    for (const auto& [name, body] : procedures_)
        names.push_back(name);
    return names;
}

bool Form::call(std::string_view procedure, std::optional<int> argument) {
    const auto found = procedures_.find(procedure);
    if (found == procedures_.end())
        throw UnknownName(fmt::format("{}.{}", name_, procedure),
                          nearNames(procedure, procedures()));
    if (const auto* plain = std::get_if<std::function<void()>>(&found->second); plain && !argument)
        (*plain)();
    else if (const auto* indexed = std::get_if<std::function<void(int)>>(&found->second);
             indexed && argument)
        (*indexed)(*argument);
    else if (const auto* asked = std::get_if<std::function<bool(int)>>(&found->second);
             asked && argument)
        return (*asked)(*argument);
    else
        throw Failure(Failure::Kind::Conversion, fmt::format("{}.{} takes {} argument", name_,
                                                             procedure, argument ? "no" : "one"));
    return false;
}

} // namespace bitlux::forms
