#include "platform/forms/control.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <algorithm>
#include <array>

#include <fmt/format.h>

namespace bitlux::forms {

Color ownColor(Control::Kind kind) {
    switch (kind) {
    case Control::Kind::ComboBox:
    case Control::Kind::ListBox:
    case Control::Kind::TextBox:
        return windowColor;
    default:
        return buttonFaceColor;
    }
}

Control::Control(Form& form, Kind kind, std::string name, std::optional<int> index)
    : form_(form), name_(std::move(name)), index_(index), backColor_(ownColor(kind)), kind_(kind) {
    form_.add(*this);
}

Control::~Control() {
    form_.remove(*this);
}

std::string Control::localName() const {
    return index_ ? fmt::format("{}({})", name_, *index_) : name_;
}

std::string Control::fullName() const {
    return fmt::format("{}.{}", form_.name(), localName());
}

bool Control::hasFocus() const {
    return form_.focus() == this;
}

void Control::setFocus() {
    form_.setFocus(*this);
    touch();
}

void Control::focus() {
    performInput("GotFocus", [this] { form_.setFocus(*this); });
}

void Control::click() {
    performInput("Click", [this] { raiseClick(); });
}

void Control::doubleClick() {
    performInput("DblClick", [this] { raise(ControlEvent::DblClick); });
}

void Control::key(Keystroke stroke) {
    performInput("KeyDown", [this, stroke] { strike(stroke); });
}

void Control::type(std::string_view text) {
    for (const char character : text)
        key(keystrokeOf(character));
}

void Control::strike(Keystroke stroke) {
    raise(ControlEvent::KeyDown, toValue(stroke.code));
    if (!visible_ || !enabled_) // the handler hid or disabled the control
        return;
    char character = stroke.character;
    if (character != 0) {
        const auto code = static_cast<std::int64_t>(static_cast<unsigned char>(character));
        const Value replaced = raise(ControlEvent::KeyPress, code);
        if (const auto* other = std::get_if<std::int64_t>(&replaced))
            character = static_cast<char>(*other);
        if (character == 0)
            return;
    }
    take(stroke.code, character);
}

void Control::setHandler(ControlEvent event, std::shared_ptr<const Procedure> handler) {
    std::erase_if(handlers_, [event](const Handler& old) { return old.event == event; });
    if (handler)
        handlers_.push_back({event, std::move(handler)});
}

const Control::Handler* Control::handlerOf(ControlEvent event) const {
    const auto found = std::find_if(handlers_.begin(), handlers_.end(),
                                    [event](const Handler& one) { return one.event == event; });
    return found == handlers_.end() ? nullptr : &*found;
}

Value Control::raise(ControlEvent event, const Value& argument) const {
    const Handler* handler = handlerOf(event);
    if (handler == nullptr)
        return {};
    const std::shared_ptr<const Procedure> procedure = handler->procedure; // may be replaced
    const std::size_t own = argument.index() == 0 ? 0 : 1;
    const bool wantsIndex = procedure->arity > own;
    const std::array<Value, 2> arguments{wantsIndex ? toValue(index_.value()) : argument, argument};
    return procedure->run(std::span(arguments).first(procedure->arity));
}

void Control::touch() {
    if (!dirty_) {
        dirty_ = true;
        form_.set().noteDirty(*this);
    }
}

void Control::performInput(std::string_view event, const std::function<void()>& action) {
    if (!visible_ || !enabled_)
        throw Unreachable(fmt::format("{} is {}", fullName(), visible_ ? "disabled" : "hidden"));
    form_.set().perform(fmt::format("{}_{}", fullName(), event), [this, &action] {
        if (form_.visible())
            form_.set().activate(form_);
        action();
    });
}

} // namespace bitlux::forms
