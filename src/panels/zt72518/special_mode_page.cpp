#include "panels/zt72518/special_mode_page.h"

#include "chips/zt72518/registers.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

using oldchips::zt72518::specialRandomBits;
constexpr int modes = 4;
constexpr oldchips::ControlName readRandom{"Cm_Spe_Mode_Rl"};
constexpr oldchips::ControlName readRandomToo{"Cm_Spe_Mode_Rl_b"};
constexpr oldchips::ControlName appendMode{"Seq_Spe_Mode_W"};
constexpr oldchips::ControlName readAndWrite{"Cm_Spe_Mode_W", 1};
constexpr oldchips::ControlName safePin{"Cm_Spe_Mode_W", 2};

const oldchips::Register& specialMode() {
    return oldchips::zt72518::registers[oldchips::zt72518::specialMode];
}

} // namespace

SpecialModePage::SpecialModePage(PanelControls& controls, RegisterPages& pages,
                                 RegisterWords& words)
    : controls_(controls), pages_(pages), words_(words) {
    for (int bit = 0; bit < specialRandomBits; ++bit)
        controls
            .addLabel({"Spe_Mode_Rl_b", bit},
                      specialMode().writeCaptions[static_cast<std::size_t>(bit)])
            .setBackColor(forms::windowColor);
    const std::string both = fmt::format("{}, {}", words.readText(specialMode(), RegisterView::Low),
                                         words.writeText(specialMode()));
    controls.addButton(readRandomToo, "Read Low")
        .setTooltip(words.readText(specialMode(), RegisterView::Low));
    controls.addButton(readAndWrite, "Read and Write").setTooltip(both);
    controls.addButton(safePin, "Activate SAFE pin (available in INIT mode only)").setTooltip(both);
    controls.addButton(appendMode, ">SEQ").setTooltip(writeLine(specialMode()));

    controls.onClick(readRandom, [this] { showInverse(); });
    controls.onClick(readRandomToo, [this] { controls_.run(readRandom); });
    controls.onClick(readAndWrite, [this] {
        controls_.run(readRandom);
        pages_.write(specialMode());
    });
    controls.onClick(safePin, [this] { activateSafePin(); });
    controls.onClick(appendMode, [this] { appendChoice(); });
}

void SpecialModePage::showInverse() {
    const LabelRow& random = controls_.row("Spe_Mode_Rl");
    const LabelRow& written = controls_.row("Spe_Mode_W");
    for (int bit = 0; bit < specialRandomBits; ++bit) {
        const bool inverse = !random.lit(bit);
        light(controls_.get<forms::Label>({"Spe_Mode_Rl_b", bit}), inverse, litColour);
        written.set(bit, inverse);
    }
}

void SpecialModePage::activateSafePin() {
    controls_.run(readRandom);
    // Told by the last two bits of the random word, which go back as they came.
    constexpr unsigned sameBits = 0x30;
    const std::uint32_t inverse = pages_.value(specialMode()) & 0x3FU;
    words_.write(specialMode(), inverse ^ sameBits);
}

void SpecialModePage::appendChoice() {
    const int choice = controls_.chosen("R_Spe_Mode", 0, modes).value_or(0);
    words_.append(writeLine(specialMode()), std::to_string(choice));
}

} // namespace bitlux::zt72518
