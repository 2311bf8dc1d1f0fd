#pragma once

#include "platform/forms/control.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace bitlux::forms {

class FormSet;

/// A form: its controls and its named procedures. A form to the user and to a script; in the
/// code its controls may be members of several parts, each of which is handed the form.
///
/// Controls register themselves when they are made. Procedures are registered by name; one named
/// CONTROL_Click, CONTROL_DblClick, CONTROL_Timer or CONTROL_KeyDown (case does not matter)
/// becomes the handler of that control, or of every element of that control array.
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
    void setVisible(bool visible);

    [[nodiscard]] Control* focus() const { return focus_; }
    void setFocus(Control& control) { focus_ = &control; }

    /// In the order in which they were made.
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    /// By its local name, as "cmdSendOnce" or "cmdSI_single(7)"; raises UnknownName.
    [[nodiscard]] Control& control(std::string_view localName) const;

    void procedure(const std::string& name, std::function<void()> body);
    /// For handlers of control arrays, which are told the index.
    void procedure(const std::string& name, std::function<void(int)> body);
    /// A procedure with an answer, as IsTabActive of a number.
    void function(const std::string& name, std::function<bool(int)> body);
    void keyProcedure(const std::string& name, std::function<void(KeyCode)> body);

    [[nodiscard]] std::vector<std::string> procedures() const;
    /// Calls a procedure by name; the result is the answer of a function, else false. Raises
    /// UnknownName, and Failure (Conversion) when an argument is missing or surplus. A failure of
    /// the procedure itself passes through.
    bool call(std::string_view procedure, std::optional<int> argument = {});

private:
    friend class Control;
    using Procedure =
        std::variant<std::function<void()>, std::function<void(int)>, std::function<bool(int)>>;

    void add(Control& control);
    void remove(Control& control);
    /// The controls that a handler of this name serves.
    [[nodiscard]] std::vector<Control*> served(const std::string& handler,
                                               std::string_view event) const;

    FormSet& set_;
    std::string name_;
    std::string caption_;
    std::vector<Control*> controls_;
    std::map<std::string, std::vector<Control*>, std::less<>>
        byName_; ///< elements of an array together
    std::map<std::string, Procedure, std::less<>> procedures_;
    Control* focus_ = nullptr;
    bool visible_ = false;
};

} // namespace bitlux::forms
