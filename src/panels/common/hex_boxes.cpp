#include "panels/common/hex_boxes.h"

#include "panels/common/hex_value.h"
#include "platform/conversions.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

namespace bitlux {

namespace {

/// Of the first digits of a text; ends with the first character that is none.
std::uint64_t valueOf(const std::string& text, std::size_t digits) {
    std::uint64_t value = 0;
    for (const char c : text.substr(0, digits)) {
        if (hexDigit(c) < 0)
            break;
        value = value << bitsOfDigit | static_cast<unsigned>(hexDigit(c));
    }
    return value;
}

} // namespace

HexBoxes::HexBoxes(forms::Form& form, const chips::Chip& chip, PanelControls& controls,
                   const KeyFilters& filters)
    : filters_(filters) {
    for (const chips::Register& any : chip.registers)
        if (any.hexBox.exists() && any.row.exists() && any.row.form.empty())
            add(form, any, controls);
}

void HexBoxes::add(forms::Form& form, const chips::Register& owner, PanelControls& controls) {
    const auto digits = static_cast<std::size_t>((owner.width() + bitsOfDigit - 1) / bitsOfDigit);
    const LabelRow& row = controls.row(owner.row.first);
    boxes_.push_back(std::make_unique<forms::TextBox>(form, owner.hexBox.name));
    forms::TextBox& box = *boxes_.back();
    for (int bit = 0; bit < row.size(); ++bit)
        controls.onClick(ControlRef(owner.row.first) + bit,
                         [&row, &box] { box.setText(hex(row.value())); });
    controls.addButton(owner.hexButton, "Set Bits");
    controls.onClick(owner.hexButton,
                     [&row, &box, digits] { row.show(valueOf(box.text(), digits)); });
    form.procedure(fmt::format("{}_KeyPress", box.name()),
                   [this, &box, digits](int key) { return filterKey(box, digits, key); });
}

int HexBoxes::filterKey(forms::TextBox& box, std::size_t digits, int key) {
    const int passed = filters_.hexKey(key);
    if (passed >= '0' && box.text().size() >= digits)
        box.setText(box.text().substr(0, digits - 1));
    return passed;
}

} // namespace bitlux
