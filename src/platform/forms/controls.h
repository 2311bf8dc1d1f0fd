#pragma once

#include "platform/forms/control.h"
#include "platform/forms/line_source.h"

#include <memory>
#include <vector>

namespace bitlux::forms {

/// A control with a caption. An ampersand in the caption marks the access key.
class Captioned : public Control {
public:
    [[nodiscard]] const std::string& caption() const { return caption_; }
    void setCaption(std::string_view caption);

protected:
    Captioned(Form& form, Kind kind, std::string name, std::optional<int> index,
              std::string caption)
        : Control(form, kind, std::move(name), index), caption_(std::move(caption)) {}

private:
    std::string caption_;
};

class Label : public Captioned {
public:
    Label(Form& form, std::string name, std::string caption = {}, std::optional<int> index = {})
        : Captioned(form, Kind::Label, std::move(name), index, std::move(caption)) {}
};

class Frame : public Captioned {
public:
    Frame(Form& form, std::string name, std::string caption = {}, std::optional<int> index = {})
        : Captioned(form, Kind::Frame, std::move(name), index, std::move(caption)) {}
};

class Button : public Captioned {
public:
    Button(Form& form, std::string name, std::string caption = {}, std::optional<int> index = {})
        : Captioned(form, Kind::Button, std::move(name), index, std::move(caption)) {}

protected:
    /// Enter and Space press it, unless it handles keys itself.
    void take(KeyCode code, char character) override;
};

class MenuItem : public Captioned {
public:
    MenuItem(Form& form, std::string name, std::string caption)
        : Captioned(form, Kind::MenuItem, std::move(name), {}, std::move(caption)) {}
};

/// Value 1 when checked, else 0.
class CheckBox : public Captioned {
public:
    CheckBox(Form& form, std::string name, std::string caption = {}, std::optional<int> index = {})
        : Captioned(form, Kind::CheckBox, std::move(name), index, std::move(caption)) {}

    [[nodiscard]] std::int16_t value() const { return value_; }
    [[nodiscard]] bool checked() const { return value_ == 1; }
    /// 0 or 1; anything else raises Failure (OutOfRange).
    void setValue(std::int16_t value);

    /// A click by the user inverts the value.
    void click() override;

private:
    std::int16_t value_ = 0;
};

/// One of a group, of which at most one is set. The members register themselves.
class OptionButton;
class OptionGroup {
public:
    /// Clears all; runs no handler.
    void clear();

private:
    friend class OptionButton;
    std::vector<OptionButton*> members_;
};

/// Setting one clears the others of its group; only the one that was assigned runs its handler.
class OptionButton : public Captioned {
public:
    OptionButton(Form& form, OptionGroup& group, std::string name, std::string caption = {},
                 std::optional<int> index = {});

    [[nodiscard]] bool value() const { return value_; }
    void setValue(bool value);

    /// A click by the user sets it.
    void click() override;

private:
    friend class OptionGroup;

    OptionGroup& group_;
    bool value_ = false;
};

class TextBox : public Control {
public:
    TextBox(Form& form, std::string name, std::optional<int> index = {})
        : Control(form, Kind::TextBox, std::move(name), index) {}

    [[nodiscard]] const std::string& text() const { return text_; }
    /// The insertion point goes to the end.
    void setText(std::string text);

    /// User input: the new content of the box.
    void edit(std::string text);

    /// The selected stretch, empty at the insertion point; in bytes, cut to the text.
    [[nodiscard]] std::size_t selectionStart() const { return selectionStart_; }
    [[nodiscard]] std::size_t selectionLength() const { return selectionLength_; }
    void select(std::size_t start, std::size_t length);

protected:
    /// Replaces the selection by typing.
    void take(KeyCode code, char character) override;

private:
    void replaceSelection(std::string_view with);

    std::string text_;
    std::size_t selectionStart_ = 0;
    std::size_t selectionLength_ = 0;
};

/// A scroll bar: a whole number between two limits.
class ScrollBar : public Control {
public:
    ScrollBar(Form& form, std::string name, int min, int max, std::optional<int> index = {})
        : Control(form, Kind::ScrollBar, std::move(name), index),
          min_(min),
          max_(max),
          value_(min) {}

    [[nodiscard]] int min() const { return min_; }
    [[nodiscard]] int max() const { return max_; }
    /// The value is brought between the limits.
    void setRange(int min, int max);

    [[nodiscard]] int value() const { return value_; }
    /// Raises Failure (OutOfRange) outside the limits.
    void setValue(int value);

    /// The same by the user; also at the end of a drag.
    void move(int value);
    /// The user drags the thumb to here: Scroll runs, Change waits until the end of the drag.
    void drag(int value);

private:
    void requireInside(int value) const;

    int min_;
    int max_;
    int value_;
    bool dragged_ = false;
};

/// Items with at most one selected; index -1 when none is.
class ComboBox : public Control {
public:
    enum class Style {
        List,    ///< only items can be chosen
        Editable ///< any text can be typed
    };

    ComboBox(Form& form, std::string name, Style style, std::vector<std::string> items = {},
             std::optional<int> index = {})
        : Control(form, Kind::ComboBox, std::move(name), index),
          items_(std::move(items)),
          style_(style) {}

    [[nodiscard]] Style style() const { return style_; }
    [[nodiscard]] const std::vector<std::string>& items() const { return items_; }
    void addItem(std::string item);
    /// Replaces the items; nothing is selected, and the text is empty.
    void setItems(std::vector<std::string> items);
    /// Raises Failure (OutOfRange) beyond the last. The text goes with a selected item; no handler
    /// runs.
    void removeItem(int index);
    /// As setText, and an empty text selects nothing.
    void choose(const std::string& text);
    /// Removes all items and the selection.
    void clear() { setItems({}); }

    [[nodiscard]] int listIndex() const { return listIndex_; }
    /// -1 to the last item; anything else raises Failure (OutOfRange). The text follows a
    /// selection that changes; text that is typed stays while nothing is selected.
    void setListIndex(int index);

    [[nodiscard]] const std::string& text() const { return text_; }
    /// Selects the item of this text. An editable box takes any other text as typed, a list
    /// raises Failure (OutOfRange).
    void setText(const std::string& text);

    /// Text in the edit field, which selects nothing and runs no handler.
    void setEditText(const std::string& text);

    /// User input: a text typed into an editable box, or an item of a list chosen by its text.
    void edit(const std::string& text);
    /// The user chooses an item. The handler also runs for the selected one.
    void select(int index);

private:
    std::vector<std::string> items_;
    std::string text_;
    int listIndex_ = -1;
    Style style_;
};

/// Lines with at most one selected; index -1 when none is.
class ListBox : public Control {
public:
    /// `lines` is what the list shows, and may serve several lists.
    ListBox(Form& form, std::string name, std::shared_ptr<const LineSource> lines)
        : Control(form, Kind::ListBox, std::move(name), {}), lines_(std::move(lines)) {}

    [[nodiscard]] const LineSource& lines() const { return *lines_; }
    [[nodiscard]] std::size_t count() const { return lines_->size(); }
    /// Raises Failure (OutOfRange) beyond the last line.
    [[nodiscard]] std::string line(std::size_t index) const;

    [[nodiscard]] int listIndex() const { return listIndex_; }
    /// -1 to the last line; anything else raises Failure (OutOfRange).
    void setListIndex(int index);

    /// The same by the user. The handler also runs for the selected line.
    void select(int index);

    /// The user drags a line to the place of another: it is selected, and DragDrop runs.
    void dragLine(int from, int to);

    /// To be called after a change of the lines.
    void linesChanged();
    /// The same; the selection moved with its line, and no handler runs.
    void linesChanged(int listIndex);

private:
    std::shared_ptr<const LineSource> lines_;
    int listIndex_ = -1;
};

/// Tabs counted from 1, of which one is selected.
class TabStrip : public Control {
public:
    struct Tab {
        std::string caption;
        std::string tooltip;
        bool operator==(const Tab&) const = default;
    };

    TabStrip(Form& form, std::string name, std::vector<Tab> tabs, std::optional<int> index = {})
        : Control(form, Kind::TabStrip, std::move(name), index), tabs_(std::move(tabs)) {}

    [[nodiscard]] const std::vector<Tab>& tabs() const { return tabs_; }
    [[nodiscard]] int count() const { return static_cast<int>(tabs_.size()); }
    /// Adds a tab after the last one.
    void addTab(Tab tab);
    /// Adds a tab that gets this index, 1 to one more than there are; the selection stays with its
    /// tab, and no handler runs.
    void insertTab(int index, Tab tab);
    /// Removing the selected tab selects the one before it, without running the handler.
    void removeTab(int index);

    [[nodiscard]] int selected() const { return selected_; }
    /// 1 to the last tab; anything else raises Failure (OutOfRange).
    void setSelected(int index);

    /// The user clicks on a tab. The handler also runs for the current tab.
    void click(int index);
    void click() override { click(selected_); }

private:
    void requireTab(int index) const;

    std::vector<Tab> tabs_;
    int selected_ = 1;
};

} // namespace bitlux::forms
