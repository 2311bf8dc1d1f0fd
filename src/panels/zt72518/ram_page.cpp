#include "panels/zt72518/ram_page.h"

#include "chips/zt72518/registers.h"
#include "platform/conversions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::zt72518 {

namespace {

constexpr std::size_t digits = 2;
constexpr const char* bits = "RAM";
constexpr oldchips::ControlName confirm{"Cm_OK_val_hexa"};
constexpr oldchips::ControlName readAll{"Cm_RAM_Rl_All"};

/// The digits of a text, at most as many as find room, in capitals.
std::string digitsOf(const std::string& text) {
    std::string kept;
    for (const char c : text)
        if (hexDigit(c) >= 0 && kept.size() < digits)
            kept += hex(static_cast<std::uint64_t>(hexDigit(c)));
    return kept;
}

} // namespace

RamPage::RamPage(forms::Form& form, PanelControls& controls, KeyFilters& filters,
                 MessageBoxes& boxes)
    : controls_(controls), filters_(filters), boxes_(boxes), Val_Hex_RAM(form, "Val_Hex_RAM") {
    controls.addButton(confirm, "OK");
    std::vector<oldchips::ControlName> reads;
    for (int i = 0; i < oldchips::zt72518::ramCount; ++i)
        reads.push_back({"Cm_Read_RAM", i});
    controls.addButton(readAll, "Read all").setTooltip(controls.tooltips(reads));
    for (int bit = 0; bit < controls.row(bits).size(); ++bit)
        controls.onClick({bits, bit}, [this] { showHex(); });
    controls.onClick(confirm, [this] { confirmText(); });
    controls.onClick(readAll, [this] {
        for (int i = 0; i < oldchips::zt72518::ramCount; ++i)
            controls_.run({"Cm_Read_RAM", i});
    });
    form.procedure("Val_Hex_RAM_KeyPress", [this](int key) { return filterKey(key); });
    form.procedure("Val_Hex_RAM_Change", [this] { followText(); });
}

void RamPage::showHex() {
    Val_Hex_RAM.setText(hex(controls_.row(bits).byte()));
}

int RamPage::filterKey(int key) {
    const int passed = filters_.HEXA_check(key);
    const bool isFull = Val_Hex_RAM.text().size() - Val_Hex_RAM.selectionLength() >= digits;
    if (passed >= '0' && isFull)
        Val_Hex_RAM.select(digits - 1, 1); // what is typed takes its place
    return passed;
}

void RamPage::followText() {
    const std::string kept = digitsOf(Val_Hex_RAM.text());
    if (kept != Val_Hex_RAM.text()) // pasted
        Val_Hex_RAM.setText(kept);
    else if (!kept.empty())
        controls_.row(bits).show(static_cast<std::uint8_t>(std::stoul(kept, nullptr, 16)));
}

void RamPage::confirmText() {
    if (Val_Hex_RAM.text().empty())
        boxes_.show({.text = "please enter 2 hexa letter"});
    else
        followText();
}

} // namespace bitlux::zt72518
