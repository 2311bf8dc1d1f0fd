#include "platform/forms/control.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <fmt/format.h>

namespace bitlux::forms {

Control::Control(Form& form, Kind kind, std::string name, std::optional<int> index)
    : form_(form), name_(std::move(name)), index_(index), kind_(kind) {
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

void Control::key(KeyCode code) {
    byHand("KeyDown", [this, code] {
        if (onKey_)
            onKey_(code);
    });
}

void Control::raiseDoubleClick() {
    byHand("DblClick", [this] {
        if (onDoubleClick_)
            onDoubleClick_();
    });
}

void Control::touch() {
    if (!dirty_) {
        dirty_ = true;
        form_.set().noteDirty(*this);
    }
}

void Control::byHand(std::string_view event, const std::function<void()>& action) {
    if (!visible_ || !enabled_)
        throw Unreachable(fmt::format("{} is {}", fullName(), visible_ ? "disabled" : "hidden"));
    form_.set().perform(fmt::format("{}_{}", fullName(), event), action);
}

} // namespace bitlux::forms
