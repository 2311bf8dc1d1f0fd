#include "platform/forms/controls.h"

#include "platform/failure.h"

#include <algorithm>
#include <utility>

#include <fmt/format.h>

namespace bitlux::forms {

namespace {

[[noreturn]] void failOutOfRange(const Control& control, std::string_view what) {
    throw Failure(Failure::Kind::OutOfRange,
                  fmt::format("{} does not exist in {}", what, control.fullName()));
}

} // namespace

void Captioned::setCaption(std::string_view caption) {
    if (caption_ != caption) {
        caption_ = caption;
        touch();
    }
}

void Button::take(KeyCode code, char) {
    if ((code == KeyCode::Enter || code == KeyCode::Space) && !hasKeyHandler())
        raiseClick();
}

void CheckBox::setValue(std::int16_t value) {
    if (value != 0 && value != 1)
        failOutOfRange(*this, fmt::format("The value {}", value));
    if (assign(value_, value))
        raiseClick();
}

void CheckBox::click() {
    performInput("Click", [this] { setValue(checked() ? 0 : 1); });
}

void OptionGroup::clear() {
    for (OptionButton* member : members_)
        member->assign(member->value_, false);
}

OptionButton::OptionButton(Form& form, OptionGroup& group, std::string name, std::string caption,
                           std::optional<int> index)
    : Captioned(form, Kind::OptionButton, std::move(name), index, std::move(caption)),
      group_(group) {
    group_.members_.push_back(this);
}

void OptionButton::setValue(bool value) {
    if (!assign(value_, value))
        return;
    if (value)
        for (OptionButton* member : group_.members_)
            if (member != this)
                member->assign(member->value_, false);
    raiseClick();
}

void OptionButton::click() {
    performInput("Click", [this] { setValue(true); });
}

void TextBox::setText(std::string text) {
    if (!assign(text_, std::move(text)))
        return;
    select(text_.size(), 0);
    raise(ControlEvent::Change);
}

void TextBox::edit(std::string text) {
    performInput("Change", [this, &text] { setText(std::move(text)); });
}

void TextBox::select(std::size_t start, std::size_t length) {
    start = std::min(start, text_.size());
    assign(selectionStart_, start);
    assign(selectionLength_, std::min(length, text_.size() - start));
}

void TextBox::take(KeyCode code, char character) {
    const bool backspace = character == static_cast<char>(KeyCode::Backspace);
    if (backspace && selectionLength_ == 0 && selectionStart_ > 0)
        select(selectionStart_ - 1, 1);
    if (code == KeyCode::Delete && selectionLength_ == 0)
        select(selectionStart_, 1);
    if (backspace || code == KeyCode::Delete)
        replaceSelection({});
    else if (static_cast<unsigned char>(character) >= ' ')
        replaceSelection({&character, 1});
}

void TextBox::replaceSelection(std::string_view with) {
    std::string text = text_;
    text.replace(selectionStart_, selectionLength_, with);
    const std::size_t behind = selectionStart_ + with.size();
    if (assign(text_, std::move(text))) {
        select(behind, 0);
        raise(ControlEvent::Change);
    }
}

void ScrollBar::requireInside(int value) const {
    if (value < min_ || value > max_)
        failOutOfRange(*this, fmt::format("The value {}", value));
}

void ScrollBar::setRange(int min, int max) {
    assign(min_, min);
    assign(max_, max);
    setValue(std::clamp(value_, min, max));
}

void ScrollBar::setValue(int value) {
    requireInside(value);
    if (assign(value_, value))
        raise(ControlEvent::Change);
}

void ScrollBar::move(int value) {
    performInput("Change", [this, value] {
        requireInside(value);
        const bool wasDragged = std::exchange(dragged_, false);
        if (assign(value_, value) || wasDragged)
            raise(ControlEvent::Change);
    });
}

void ScrollBar::drag(int value) {
    performInput("Scroll", [this, value] {
        requireInside(value);
        if (assign(value_, value)) {
            dragged_ = true;
            raise(ControlEvent::Scroll);
        }
    });
}

void ComboBox::addItem(std::string item) {
    items_.push_back(std::move(item));
    touch();
}

void ComboBox::setItems(std::vector<std::string> items) {
    items_ = std::move(items);
    text_.clear();
    listIndex_ = -1;
    touch();
}

void ComboBox::removeItem(int index) {
    if (index < 0 || index >= static_cast<int>(items_.size()))
        failOutOfRange(*this, fmt::format("The entry {}", index));
    items_.erase(items_.begin() + index);
    if (listIndex_ == index) {
        listIndex_ = -1;
        text_.clear();
    } else if (listIndex_ > index) {
        --listIndex_;
    }
    touch();
}

void ComboBox::setListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(items_.size()))
        failOutOfRange(*this, fmt::format("The entry {}", index));
    if (!assign(listIndex_, index))
        return;
    text_ = index < 0 ? std::string{} : items_[static_cast<std::size_t>(index)];
    raiseClick();
}

void ComboBox::setText(const std::string& text) {
    const auto found = std::find(items_.begin(), items_.end(), text);
    if (found != items_.end()) {
        setListIndex(static_cast<int>(found - items_.begin()));
        return;
    }
    if (style_ == Style::List)
        failOutOfRange(*this, fmt::format("The entry \"{}\"", text));
    setEditText(text);
}

void ComboBox::choose(const std::string& text) {
    if (text.empty())
        setListIndex(-1);
    else
        setText(text);
}

void ComboBox::setEditText(const std::string& text) {
    assign(listIndex_, -1);
    assign(text_, text);
}

void ComboBox::edit(const std::string& text) {
    performInput("Change", [this, &text] {
        if (style_ != Style::Editable) {
            setText(text);
        } else if (text_ != text) {
            setEditText(text);
            raise(ControlEvent::Change);
        } else {
            setEditText(text);
        }
    });
}

void ComboBox::select(int index) {
    performInput("Click", [this, index] {
        if (index == listIndex_)
            raiseClick();
        else
            setListIndex(index);
    });
}

std::string ListBox::line(std::size_t index) const {
    if (index >= count())
        failOutOfRange(*this, fmt::format("The line {}", index));
    return lines_->line(index);
}

void ListBox::setListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(count()))
        failOutOfRange(*this, fmt::format("The line {}", index));
    if (assign(listIndex_, index))
        raiseClick();
}

void ListBox::select(int index) {
    performInput("Click", [this, index] {
        if (index == listIndex_)
            raiseClick();
        else
            setListIndex(index);
    });
}

void ListBox::dragLine(int from, int to) {
    performInput("DragDrop", [this, from, to] {
        setListIndex(from);
        raise(ControlEvent::DragDrop, toValue(to));
    });
}

void ListBox::linesChanged() {
    linesChanged(listIndex_);
}

void ListBox::linesChanged(int listIndex) {
    listIndex_ = std::min(listIndex, static_cast<int>(count()) - 1);
    touch();
}

void TabStrip::addTab(Tab tab) {
    tabs_.push_back(std::move(tab));
    touch();
}

void TabStrip::insertTab(int index, Tab tab) {
    if (index != count() + 1)
        requireTab(index);
    tabs_.insert(tabs_.begin() + (index - 1), std::move(tab));
    if (selected_ >= index && count() > 1)
        ++selected_;
    touch();
}

void TabStrip::removeTab(int index) {
    requireTab(index);
    tabs_.erase(tabs_.begin() + (index - 1));
    if (selected_ >= index && selected_ > 1)
        --selected_;
    touch();
}

void TabStrip::setSelected(int index) {
    requireTab(index);
    if (assign(selected_, index))
        raiseClick();
}

void TabStrip::click(int index) {
    performInput("Click", [this, index] {
        requireTab(index);
        assign(selected_, index);
        raiseClick();
    });
}

void TabStrip::requireTab(int index) const {
    if (index < 1 || index > count())
        failOutOfRange(*this, fmt::format("The tab {}", index));
}

} // namespace bitlux::forms
