#include "panels/zt72516/ram_pages.h"

#include "platform/conversions.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

namespace bitlux::zt72516 {

namespace {

constexpr std::size_t digits = 6;

/// Ends with the first character that is no digit.
std::uint64_t valueOf(const std::string& text) {
    std::uint64_t value = 0;
    for (const char c : text.substr(0, digits)) {
        if (hexDigit(c) < 0)
            break;
        value = value << 4 | static_cast<unsigned>(hexDigit(c));
    }
    return value;
}

} // namespace

RamPages::RamPages(const PanelContext& context)
    : builder_(context.part<WordBuilder>()),
      HexRAM_A(context.form, "HexRAM_A"),
      HexRAM_B(context.form, "HexRAM_B") {
    add(context, "RAM_A", HexRAM_A, "SetBitsRAM_A");
    add(context, "RAM_B", HexRAM_B, "SetBitsRAM_B");
}

void RamPages::add(const PanelContext& context, const char* rowName, forms::TextBox& box,
                   const char* setBits) {
    const LabelRow& row = context.controls.row(rowName);
    for (int bit = 0; bit < row.size(); ++bit)
        context.controls.onClick({rowName, bit}, [&row, &box] { box.setText(hex(row.value())); });
    context.controls.addButton(setBits, "Set Bits");
    context.controls.onClick(setBits, [&row, &box] { row.show(valueOf(box.text())); });
    context.form.procedure(fmt::format("{}_KeyPress", box.name()),
                           [this, &box](int key) { return filterKey(box, key); });
}

int RamPages::filterKey(forms::TextBox& box, int key) {
    const int passed = builder_.HexCheck(key);
    if (passed >= '0' && box.text().size() >= digits) // what is typed takes the sixth place
        box.setText(box.text().substr(0, digits - 1));
    return passed;
}

} // namespace bitlux::zt72516
