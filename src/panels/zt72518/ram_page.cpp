#include "panels/zt72518/ram_page.h"

#include "platform/conversions.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::zt72518 {

namespace {

constexpr std::size_t digits = 2;
constexpr int ramCount = 4;
constexpr const char* bits = "RAM";
constexpr ControlRef confirm{"Cm_OK_val_hexa"};
constexpr ControlRef readAll{"Cm_RAM_Rl_All"};

/// The digits of a text, as many as fit, in capitals.
std::string digitsOf(const std::string& text) {
    std::string kept;
    for (const char c : text)
        if (hexDigit(c) >= 0 && kept.size() < digits)
            kept += hex(static_cast<std::uint64_t>(hexDigit(c)));
    return kept;
}

} // namespace

RamPage::RamPage(const PanelContext& context)
    : controls_(context.controls),
      filters_(context.outside.desk.boxes, context.outside.desk.sound),
      boxes_(context.outside.desk.boxes),
      Val_Hex_RAM(context.form, "Val_Hex_RAM") {
    controls_.addButton(confirm, "OK");
    std::vector<chips::ControlName> reads;
    for (int i = 0; i < ramCount; ++i)
        reads.push_back({.name = "Cm_Read_RAM", .index = i});
    controls_.addButton(readAll, "Read all").setTooltip(controls_.tooltips(reads));
    for (int bit = 0; bit < controls_.row(bits).size(); ++bit)
        controls_.onClick({bits, bit}, [this] { showHex(); });
    controls_.onClick(confirm, [this] { confirmText(); });
    controls_.onClick(readAll, [this] {
        for (int i = 0; i < ramCount; ++i)
            controls_.run({"Cm_Read_RAM", i});
    });
    forms::Form& form = context.form;
    form.procedure("Val_Hex_RAM_KeyPress", [this](int key) { return filterKey(key); });
    form.procedure("Val_Hex_RAM_Change", [this] { followText(); });
    form.procedure("HEXA_check", [this](int key) { return filters_.HEXA_check(key); });
    form.procedure("NUM_check", [this](int key) { return filters_.NUM_check(key); });
    form.procedure("DECimal_check", [this](int key) { return filters_.DECimal_check(key); });
    form.procedure("BINary_x_check", [this](int key) { return filters_.BINary_x_check(key); });
}

void RamPage::load() {
    controls_.row(bits).show(0);
}

void RamPage::showHex() {
    Val_Hex_RAM.setText(hex(controls_.row(bits).byte()));
}

int RamPage::filterKey(int key) {
    const int passed = filters_.HEXA_check(key);
    const bool isFull = Val_Hex_RAM.text().size() - Val_Hex_RAM.selectionLength() >= digits;
    if (passed >= '0' && isFull)
        Val_Hex_RAM.select(digits - 1, 1); // the next key replaces it
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
