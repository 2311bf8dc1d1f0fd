#include "platform/forms/form_set.h"

#include "platform/failure.h"
#include "platform/forms/near_names.h"
#include "platform/forms/timer.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>
#include <fmt/ranges.h>

namespace bitlux::forms {

namespace {

std::string textOf(const std::exception& error) {
    if (dynamic_cast<const std::bad_alloc*>(&error) != nullptr)
        return "Out of memory";
    if (dynamic_cast<const std::out_of_range*>(&error) != nullptr)
        return "Subscript out of range";
    return error.what();
}

} // namespace

UnknownName::UnknownName(const std::string& name, std::vector<std::string> nearOnes)
    : std::runtime_error(nearOnes.empty() ? fmt::format("There is no {}", name)
                                          : fmt::format("There is no {}; there is {}", name,
                                                        fmt::join(nearOnes, ", "))),
      near_(std::move(nearOnes)) {}

FormSet::Running::~Running() {
    if (--set_.running_ == 0)
        std::exchange(set_.gone_, {}).clear();
}

void FormSet::declare(const std::string& name, Home home) {
    forms_[name] = {.home = std::move(home), .unload = {}};
}

void FormSet::unloadThrough(const std::string& name, std::function<void()> action) {
    forms_.at(name).unload = std::move(action);
}

std::vector<std::string> FormSet::names() const {
    std::vector<std::string> result;
    for (const auto& [name, declared] : forms_)
        result.push_back(name);
    return result;
}

const FormSet::Declared& FormSet::find(std::string_view name) const {
    const auto found = forms_.find(name);
    if (found == forms_.end())
        throw UnknownName(std::string(name), nearNames(name, names()));
    return found->second;
}

Form& FormSet::form(std::string_view name) const {
    return find(name).home.touch();
}

void FormSet::activate(std::string_view name) {
    moveToFront(form(name));
}

void FormSet::activate(Form& form) {
    if (front_ != &form)
        moveToFront(form);
}

bool FormSet::isVisible(std::string_view name) const {
    const Form* form = find(name).home.find();
    return form != nullptr && form->visible();
}

void FormSet::moveToFront(Form& form) {
    std::erase(order_, &form);
    order_.push_back(&form);
    Form* before = std::exchange(front_, &form);
    if (before != nullptr && before != &form)
        before->callIfThere("Form_Deactivate");
    if (front_ == &form) // the handler may have brought another one to the front
        form.callIfThere("Form_Activate");
}

void FormSet::deactivate(std::string_view name) {
    if (Form* form = find(name).home.find(); form != nullptr && form == front_) {
        front_ = nullptr;
        form->callIfThere("Form_Deactivate");
    }
}

void FormSet::leave(Form& form) {
    std::erase(order_, &form);
    if (front_ != &form)
        return;
    front_ = nullptr;
    form.callIfThere("Form_Deactivate");
    if (front_ == nullptr && !order_.empty())
        moveToFront(*order_.back());
}

void FormSet::unload(std::string_view name) {
    const Declared& declared = find(name);
    if (declared.unload) {
        declared.unload();
        return;
    }
    Form* form = declared.home.find();
    if (form == nullptr)
        return;
    const Running running(*this);
    form->callIfThere("Form_QueryUnload");
    form->callIfThere("Form_Unload");
    if (declared.home.find() != form) // a handler unloaded it too
        return;
    detach(*form);
    gone_.push_back(declared.home.moveOut());
}

void FormSet::detach(Form& form) {
    if (form.visible())
        form.setVisible(false);
    leave(form);
    for (Control* control : form.controls()) {
        if (control->kind() == Control::Kind::Timer)
            control->disable();
        forget(*control);
        control->dirty_ = true; // changes by a running handler are not shown
    }
    formGoing.raise(form);
}

Control& FormSet::control(std::string_view fullName) const {
    const std::size_t point = fullName.find('.');
    if (point == std::string_view::npos)
        throw UnknownName(std::string(fullName), {});
    return form(fullName.substr(0, point)).control(fullName.substr(point + 1));
}

void FormSet::perform(std::string_view place, const std::function<void()>& action) {
    const Running running(*this);
    std::string failure;
    std::exception_ptr thrown;
    try {
        action();
        return;
    } catch (const std::exception& error) {
        failure = textOf(error);
        thrown = std::current_exception();
    }
    boxes_.show({.text = failure, .place = std::string(place)});
    handlerFailed.raise(thrown);
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
