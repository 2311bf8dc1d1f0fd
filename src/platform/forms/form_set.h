#pragma once

#include "platform/desk.h"
#include "platform/event.h"
#include "platform/forms/form.h"
#include "platform/forms/unknown_name.h"

#include <exception>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::forms {

class Timer;

/// User input to a control that is hidden or disabled.
class Unreachable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The forms of a program: finds them and their controls by name, loads and unloads them, catches
/// the failures of handlers, and records which controls changed since the last refresh of the
/// window.
///
/// One form at most is in front. Form_Activate runs when a form comes to the front and
/// Form_Deactivate of the one that was there before; being shown brings a form to the front.
class FormSet {
public:
    explicit FormSet(MessageBoxes& boxes) : boxes_(boxes) {}

    /// Where a form lives.
    struct Home {
        std::function<Form&()> touch;                   ///< makes and loads it if necessary
        std::function<Form*()> find;                    ///< null when it does not exist
        std::function<std::unique_ptr<Form>()> moveOut; ///< when it exists
    };

    /// Registers a form.
    void declare(const std::string& name, Home home);
    /// What unload does for a form that cannot be unloaded by itself.
    void unloadThrough(const std::string& name, std::function<void()> action);
    [[nodiscard]] std::vector<std::string> names() const;

    /// A form by name, made on first access; raises UnknownName, as do all others with a name.
    Form& form(std::string_view name) const;
    void show(std::string_view name) { form(name).setVisible(true); }
    /// Does not make the form.
    [[nodiscard]] bool isVisible(std::string_view name) const;
    /// Brings a form to the front; Form_Activate runs also when it exists already.
    void activate(std::string_view name);
    /// Brings it to the front, as a window does; nothing happens when it exists already.
    void activate(Form& form);
    /// Takes a form from the front; nothing happens when another one is there.
    void deactivate(std::string_view name);
    [[nodiscard]] Form* inFront() const { return front_; }
    /// Runs Form_QueryUnload and Form_Unload and unloads the form; the next access makes a new one.
    /// It is destroyed when no handler is running. Nothing happens when it does not exist.
    void unload(std::string_view name);

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

    /// Runs what the user started. A failure ends it with a plain box that shows the failure, with
    /// the handler's name in its details; whatever was done before the failure stays done.
    void perform(std::string_view place, const std::function<void()>& action);

    /// The controls that changed since the last call, each once.
    std::vector<Control*> takeDirty();

    /// The first control changed since takeDirty; a window refreshes itself soon.
    Event<> becameDirty;
    /// A form became visible or hidden.
    Event<Form&> formShown;
    /// A form was unloaded and is about to be destroyed: it and its controls must not be used
    /// later.
    Event<Form&> formGoing;
    /// A timer restarts, or stops.
    Event<Timer&> timerChanged;
    /// An action of the user failed with this exception; its box has been shown.
    Event<const std::exception_ptr&> handlerFailed;

private:
    friend class Control;
    friend class Form;

    /// While one exists, unloaded forms are not destroyed.
    class Running {
    public:
        explicit Running(FormSet& set) : set_(set) { ++set_.running_; }
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        FormSet& set_;
    };

    struct Declared {
        Home home;
        std::function<void()> unload;
    };

    [[nodiscard]] const Declared& find(std::string_view name) const;
    void moveToFront(Form& form);
    /// A form is hidden or unloaded.
    void leave(Form& form);
    void noteDirty(Control& control);
    void forget(Control& control);
    void detach(Form& form);

    MessageBoxes& boxes_;
    std::map<std::string, Declared, std::less<>> forms_;
    std::vector<Control*> dirty_;
    std::vector<Form*> order_; ///< that were in front, the last one most recently
    Form* front_ = nullptr;
    int running_ = 0; ///< handlers and procedures that run inside each other
    std::vector<std::unique_ptr<Form>> gone_;
};

/// Holds one form, which is made on first access.
template <typename T>
class FormSlot {
public:
    FormSlot(FormSet& set, const std::string& name, std::function<std::unique_ptr<T>()> make,
             std::function<void(T&)> prepare = {})
        : make_(std::move(make)), prepare_(std::move(prepare)) {
        set.declare(name,
                    {.touch = [this]() -> Form& { return touch(); },
                     .find = [this]() -> Form* { return form_.get(); },
                     .moveOut = [this]() -> std::unique_ptr<Form> { return std::move(form_); }});
    }
    FormSlot(const FormSlot&) = delete;
    FormSlot& operator=(const FormSlot&) = delete;

    /// Once the form exists it is prepared, and then its Form_Load runs; both may access it.
    T& touch() {
        if (!form_) {
            form_ = make_();
            T& form = *form_;
            if (prepare_)
                prepare_(form);
            if (form.hasProcedure("Form_Load"))
                form.call("Form_Load");
        }
        return *form_;
    }
    /// Null when it is not there.
    [[nodiscard]] T* find() const { return form_.get(); }
    T* operator->() { return &touch(); }
    T& operator*() { return touch(); }

private:
    std::function<std::unique_ptr<T>()> make_;
    std::function<void(T&)> prepare_;
    std::unique_ptr<T> form_;
};

} // namespace bitlux::forms
