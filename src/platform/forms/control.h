#pragma once

#include "platform/forms/keystroke.h"
#include "platform/forms/procedure.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux::forms {

class Form;

/// A back colour as the low bytes blue, green and red, or one of the system's colours.
using Color = std::uint32_t;
inline constexpr Color desktopColor = 0x80000001; ///< of lit lamps
inline constexpr Color windowColor = 0x80000005;
inline constexpr Color buttonFaceColor = 0x8000000F;

/// The events of a control; CONTROL_Click and so on are the names of their handlers.
enum class ControlEvent : std::uint8_t {
    Click,
    DblClick,
    Change,   ///< the text of a text box or an editable combo, the value of a scroll bar
    Scroll,   ///< the thumb of a scroll bar while the user drags it
    KeyDown,  ///< argument: the key code
    KeyPress, ///< argument: the character's code; a returned number replaces it, 0 drops it
    GotFocus,
    LostFocus,
    DragDrop, ///< a line of a list was dropped; argument: the index under the pointer
    Timer,
};

/// What every control of a form has. A control belongs to the form it is made with, is a member
/// of it (or of one of its parts) and lives as long; it is reached by its name everywhere.
///
/// Assigning from code runs the control's handler when the value really changes; nothing runs
/// when it stays equal. A change marks the control dirty and draws nothing (FormSet::takeDirty).
///
/// `visible` and `enabled` are the control's own flags, whatever the page or the frame around it.
class Control {
public:
    enum class Kind {
        Button,
        CheckBox,
        ComboBox,
        Frame,
        Label,
        ListBox,
        MenuItem,
        OptionButton,
        ScrollBar,
        TabStrip,
        TextBox,
        Timer
    };

    /// `index` is the place of an element of a control array.
    Control(Form& form, Kind kind, std::string name, std::optional<int> index);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    [[nodiscard]] Form& form() const { return form_; }
    [[nodiscard]] Kind kind() const { return kind_; }
    /// The name without the index.
    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] std::optional<int> index() const { return index_; }
    /// As "cmdSI_single(7)".
    [[nodiscard]] std::string localName() const;
    /// As "frmMain.cmdSI_single(7)".
    [[nodiscard]] std::string fullName() const;

    [[nodiscard]] bool visible() const { return visible_; }
    void setVisible(bool visible) { assign(visible_, visible); }
    void show() { setVisible(true); }
    void hide() { setVisible(false); }

    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled) {
        if (assign(enabled_, enabled))
            enabledChanged();
    }
    void enable() { setEnabled(true); }
    void disable() { setEnabled(false); }

    [[nodiscard]] const std::string& tooltip() const { return tooltip_; }
    void setTooltip(std::string tooltip) { assign(tooltip_, std::move(tooltip)); }

    /// As it was set; the window shows it when it differs from the default of the kind.
    [[nodiscard]] Color backColor() const { return backColor_; }
    void setBackColor(Color color) { assign(backColor_, color); }

    /// A mark for the user, such as one on a bit that differs; not one by colour alone.
    [[nodiscard]] bool marked() const { return marked_; }
    void setMarked(bool marked) { assign(marked_, marked); }

    [[nodiscard]] bool hasFocus() const;
    /// Runs LostFocus of the control that had it and GotFocus, when it is another one.
    void setFocus();
    /// The user has moved the focus here, so the window need not.
    void focus();

    /// A click by the user.
    virtual void click();
    /// A double click by the user; its single clicks come before.
    void doubleClick();

    [[nodiscard]] bool handles(ControlEvent event) const { return handlerOf(event) != nullptr; }
    [[nodiscard]] bool hasKeyHandler() const { return handles(ControlEvent::KeyDown); }
    /// A key pressed by the user while the control has the focus: KeyDown, then KeyPress when it
    /// types a character, then what the control itself does with it.
    void key(Keystroke stroke);
    void key(KeyCode code) { key(keystrokeOf(code)); }
    /// The keys of a text, one after the other.
    void type(std::string_view text);

    /// Set by Form::procedure; null removes the handler.
    void setHandler(ControlEvent event, std::shared_ptr<const Procedure> handler);

protected:
    /// Marks the control for the next refresh of the window.
    void touch();

    /// Assigns a value; true when it differed.
    template <typename T>
    bool assign(T& member, T value) {
        if (member == value)
            return false;
        member = std::move(value);
        touch();
        return true;
    }

    /// Runs the handler of an event within the running action. The result is the handler's, nothing
    /// when there is none.
    Value raise(ControlEvent event, const Value& argument = {}) const;
    void raiseClick() const { raise(ControlEvent::Click); }

    /// What the control itself does with a key that its handlers let through; `character` may have
    /// been replaced, and is 0 when no character was typed.
    virtual void take(KeyCode, char /*character*/) {}
    virtual void enabledChanged() {}

    /// Runs an action of the user: refused when the control is hidden or disabled; a failure inside
    /// is shown in a box (FormSet::perform).
    void performInput(std::string_view event, const std::function<void()>& action);

private:
    friend class Form;
    friend class FormSet;

    struct Handler {
        ControlEvent event;
        std::shared_ptr<const Procedure> procedure;
    };

    [[nodiscard]] const Handler* handlerOf(ControlEvent event) const;
    void strike(Keystroke stroke);

    Form& form_;
    std::string name_;
    std::string tooltip_;
    std::vector<Handler> handlers_;
    std::optional<int> index_;
    Color backColor_;
    Kind kind_;
    bool visible_ = true;
    bool enabled_ = true;
    bool marked_ = false;
    bool dirty_ = false;
};

/// The default colour of a kind.
Color ownColor(Control::Kind kind);

} // namespace bitlux::forms
