#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace bitlux::forms {

class Form;

/// Windows key codes of the keys that handlers look at.
enum class KeyCode : std::int16_t { Enter = 13 };

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
        TabStrip,
        TextBox,
        Timer
    };

    using ClickHandler = std::function<void()>;
    using KeyHandler = std::function<void(KeyCode)>;

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
    void setEnabled(bool enabled) { assign(enabled_, enabled); }
    void enable() { setEnabled(true); }
    void disable() { setEnabled(false); }

    [[nodiscard]] const std::string& tooltip() const { return tooltip_; }
    void setTooltip(std::string tooltip) { assign(tooltip_, std::move(tooltip)); }

    [[nodiscard]] bool hasFocus() const;
    void setFocus();

    [[nodiscard]] bool hasKeyHandler() const { return static_cast<bool>(onKey_); }
    /// A key pressed by hand while the control has the focus.
    void key(KeyCode code);

    // Set by Form::procedure.
    void setClickHandler(ClickHandler handler) { onClick_ = std::move(handler); }
    void setDoubleClickHandler(ClickHandler handler) { onDoubleClick_ = std::move(handler); }
    void setKeyHandler(KeyHandler handler) { onKey_ = std::move(handler); }

protected:
    /// Marks the control for the next refresh of the window.
    void touch();

    /// Takes over a value; true when it differed.
    template <typename T>
    bool assign(T& member, T value) {
        if (member == value)
            return false;
        member = std::move(value);
        touch();
        return true;
    }

    /// Runs the click handler, as a part of what is running now.
    void raiseClick() const {
        if (onClick_)
            onClick_();
    }

    /// A double click by hand; the clicks it is made of are told before.
    void raiseDoubleClick();

    /// Runs what a user's hand started: refused when the control is hidden or disabled, and a
    /// failure inside ends in a box (FormSet::perform).
    void byHand(std::string_view event, const std::function<void()>& action);

private:
    friend class FormSet;

    Form& form_;
    std::string name_;
    std::string tooltip_;
    ClickHandler onClick_;
    ClickHandler onDoubleClick_;
    KeyHandler onKey_;
    std::optional<int> index_;
    Kind kind_;
    bool visible_ = true;
    bool enabled_ = true;
    bool dirty_ = false;
};

} // namespace bitlux::forms
