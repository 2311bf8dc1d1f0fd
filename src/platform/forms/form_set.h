#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/form.h"

#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::forms {

/// A name that no form, control or procedure bears.
class UnknownName : public std::runtime_error {
public:
    UnknownName(const std::string& name, std::vector<std::string> nearOnes);
    [[nodiscard]] const std::vector<std::string>& nearOnes() const { return near_; }

private:
    std::vector<std::string> near_;
};

/// A hand reached for a control that is hidden or disabled.
class Unreachable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The forms of a program: finds them and their controls by name, catches the failures of
/// handlers, and remembers which controls changed since the window was last refreshed.
class FormSet {
public:
    explicit FormSet(MessageBoxes& boxes) : boxes_(boxes) {}

    /// Makes a form known; `touch` makes it when it does not exist yet.
    void declare(const std::string& name, std::function<Form&()> touch);
    [[nodiscard]] std::vector<std::string> names() const;

    /// A form by name, made when it is touched for the first time; raises UnknownName.
    Form& form(std::string_view name) const;
    /// A control by its full name, as "frmMain.cmdSI_single(7)"; raises UnknownName.
    Control& control(std::string_view fullName) const;
    /// The same as the kind that the caller knows it to be; raises UnknownName for another kind.
    template <typename T>
    T& get(std::string_view fullName) const {
        auto* typed = dynamic_cast<T*>(&control(fullName));
        if (typed == nullptr)
            throw UnknownName(std::string(fullName) + " of this kind", {});
        return *typed;
    }

    /// Runs what the user started. A failure ends it with a plain box that names the failure and
    /// the place; whatever was done before the failure stays done.
    void perform(std::string_view place, const std::function<void()>& action) const;

    /// The controls that changed since the last call, each once.
    std::vector<Control*> takeDirty();

    /// The first control changed since takeDirty; a window refreshes itself soon.
    Event<> becameDirty;
    /// A form became visible or hidden.
    Event<Form&> formShown;

private:
    friend class Control;
    friend class Form;

    void noteDirty(Control& control);
    void forget(Control& control);

    MessageBoxes& boxes_;
    std::map<std::string, std::function<Form&()>, std::less<>> forms_;
    std::vector<Control*> dirty_;
};

/// The place of one form, which is made when it is first touched.
template <typename T>
class FormSlot {
public:
    /// `load` runs once the form exists, so that it may touch the form in turn.
    FormSlot(FormSet& set, const std::string& name, std::function<std::unique_ptr<T>()> make,
             std::function<void(T&)> load)
        : make_(std::move(make)), load_(std::move(load)) {
        set.declare(name, [this]() -> Form& { return touch(); });
    }
    FormSlot(const FormSlot&) = delete;
    FormSlot& operator=(const FormSlot&) = delete;

    T& touch() {
        if (!form_) {
            form_ = make_();
            load_(*form_);
        }
        return *form_;
    }
    T* operator->() { return &touch(); }
    T& operator*() { return touch(); }

private:
    std::function<std::unique_ptr<T>()> make_;
    std::function<void(T&)> load_;
    std::unique_ptr<T> form_;
};

} // namespace bitlux::forms
