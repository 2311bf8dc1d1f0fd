#pragma once

#include "platform/forms/control.h"

#include <functional>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux::forms {

class FormSet;

/// A form: its controls, its named procedures and its named variables. A form to the user and to a
/// script; in the code its controls may be members of several parts, each of which receives the
/// form.
///
/// Controls register themselves when they are made. Procedures are registered by name; one named
/// CONTROL_Click, CONTROL_KeyPress and so on (ControlEvent; case does not matter in CONTROL)
/// becomes the handler of that control, or of every element of that control array. A handler of an
/// array may have the index as its first parameter, before those of the event. Form_Load,
/// Form_Activate, Form_Deactivate, Form_QueryUnload and Form_Unload run when the form is made,
/// comes to the front, leaves the front and is unloaded (FormSet).
class Form {
public:
    Form(FormSet& set, std::string name, std::string caption);
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    [[nodiscard]] FormSet& set() const { return set_; }
    [[nodiscard]] const std::string& name() const { return name_; }

    [[nodiscard]] const std::string& caption() const { return caption_; }
    [[nodiscard]] bool visible() const { return visible_; }
    /// A form that is shown comes to the front; hiding the one in front brings back the one before.
    void setVisible(bool visible);

    [[nodiscard]] Control* focus() const { return focus_; }
    /// Runs LostFocus and GotFocus when the focus moves.
    void setFocus(Control& control);

    /// In the order in which they were made.
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    /// By its local name, as "cmdSendOnce" or "cmdSI_single(7)"; raises UnknownName.
    [[nodiscard]] Control& control(std::string_view localName) const;

    /// `body` takes values (numbers, truth values, texts) and returns one or nothing.
    template <typename Body>
    void procedure(const std::string& name, Body&& body) {
        addProcedure(name, makeProcedure(std::forward<Body>(body)));
    }
    void keyProcedure(const std::string& name, std::function<void(KeyCode)> body) {
        procedure(name, std::move(body));
    }

    [[nodiscard]] std::vector<std::string> procedures() const;
    [[nodiscard]] bool hasProcedure(std::string_view name) const {
        return procedures_.find(name) != procedures_.end();
    }
    /// Calls a procedure by name, or the handler of what a control of this name mainly does: a
    /// button's Click, a timer's Timer. Raises UnknownName, and Failure when an argument is
    /// missing, surplus or of the wrong kind. A failure of the procedure itself passes through.
    template <typename... Args>
    Value call(std::string_view procedure, const Args&... arguments) {
        return callWith(procedure, Values{toValue(arguments)...});
    }
    Value callWith(std::string_view procedure, std::span<const Value> arguments);

    /// Registers a variable that outlives the form or is a member of it.
    template <typename T>
    void variable(const std::string& name, T& place) {
        variable(
            name, [&place] { return toValue(place); },
            [&place](const Value& value) { place = valueAs<T>(value); });
    }
    /// One that is read and written through functions; without `write` it can only be read.
    void variable(const std::string& name, std::function<Value()> read,
                  std::function<void(const Value&)> write);

    [[nodiscard]] std::vector<std::string> variables() const;
    /// Both raise UnknownName; writing raises Failure for a value of the wrong kind, and for a
    /// variable that can only be read.
    [[nodiscard]] Value readVariable(std::string_view name) const;
    void writeVariable(std::string_view name, const Value& value);

private:
    friend class Control;
    friend class FormSet;

    struct Variable {
        std::function<Value()> read;
        std::function<void(const Value&)> write;
    };

    void addProcedure(const std::string& name, Procedure procedure);
    void callIfThere(std::string_view procedure);
    [[nodiscard]] const Variable& findVariable(std::string_view name) const;
    void add(Control& control);
    void remove(Control& control);
    /// The control of a name, or the elements of its array; case is ignored when no name matches
    /// exactly.
    [[nodiscard]] std::vector<Control*> namedAlike(std::string_view name) const;
    /// If the name is that of a control's event, makes the procedure its handler.
    void serve(std::string_view name, const std::shared_ptr<const Procedure>& procedure);

    FormSet& set_;
    std::string name_;
    std::string caption_;
    std::vector<Control*> controls_;
    std::map<std::string, std::vector<Control*>, std::less<>>
        byName_; ///< elements of an array together
    std::map<std::string, std::shared_ptr<const Procedure>, std::less<>> procedures_;
    std::map<std::string, Variable, std::less<>> variables_;
    Control* focus_ = nullptr;
    bool visible_ = false;
};

} // namespace bitlux::forms
