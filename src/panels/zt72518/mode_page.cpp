#include "panels/zt72518/mode_page.h"

#include "chips/zt72518/diagram.h"
#include "chips/zt72518/registers.h"
#include "platform/conversions.h"

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace chip = oldchips::zt72518;

namespace {

constexpr oldchips::ControlName wakeUp{"Cm_Mode_RM_W", 1};
constexpr oldchips::ControlName appendWakeUp{"Cm_Mode_RM_W", 2};
constexpr const char* lowPower = "s_mode";
constexpr const char* sources = "opt_s_mode";
constexpr const char* names = "Mode_Rm_Rh";
constexpr int boxes = static_cast<int>(chip::lowPowerBoxes.size());
constexpr int modes = static_cast<int>(chip::lowPowerModes.size());

const oldchips::Register& mode() {
    return chip::registers[chip::modeRandom];
}

} // namespace

ModePage::ModePage(PanelControls& controls, RegisterPages& pages, RegisterWords& words,
                   PanelVariables& variables)
    : controls_(controls), pages_(pages), variables_(variables) {
    addLowPowerModes();
    addNames();
    const std::string word = fmt::format("0x5C{:02X}", 1 << chip::wakeUpBit);
    controls.addButton(wakeUp, "Wake up by CSb").setTooltip(word);
    controls.addButton(appendWakeUp, ">SEQ WU CSb").setTooltip(word);
    controls.onClick(wakeUp, [this] { wakeUpByChipSelect(); });
    controls.onClick(appendWakeUp,
                     [&words] { words.append(writeLine(mode()), hex(1U << chip::wakeUpBit)); });
}

void ModePage::addLowPowerModes() {
    std::array<std::string_view, chip::lowPowerModes.size()> captions;
    for (std::size_t i = 0; i < captions.size(); ++i)
        captions[i] = chip::lowPowerModes[i].caption;
    controls_.addOptions(lowPower, 0, captions);
    for (int i = 0; i < modes; ++i)
        controls_.onClick({lowPower, i}, [this] { showChosen(); });
    for (int i = 0; i < boxes; ++i) {
        controls_.addBox({sources, i}, chip::lowPowerBoxes[static_cast<std::size_t>(i)]);
        controls_.onClick({sources, i}, [this] { showChosen(); });
    }
}

void ModePage::addNames() {
    int label = chip::firstModeLabel;
    for (const std::string_view name : chip::modeNames)
        controls_.addLabel({names, label++}, name).hide();
    controls_.addLabel({names, label++}, chip::lowPowerName).hide();
    controls_.addLabel({names, label}, chip::otherModeName).hide();
    controls_.addLabel({names, chip::identityLabel}, "");
    controls_.onClick({"Cm_Mode_Rm_Rh"}, [this] { showModeName(); });
    controls_.onClick({"Cm_Interrupts_Rh"}, [this] {
        controls_.get<forms::Label>({names, chip::identityLabel})
            .setCaption(identityText(controls_.row("interrupts_Rh").byte()));
    });
}

void ModePage::showChosen() {
    const std::optional<int> chosen = controls_.chosen(lowPower, 0, modes);
    if (!chosen)
        return;
    const chip::LowPowerMode& shown = chip::lowPowerModes.at(static_cast<std::size_t>(*chosen));
    constexpr unsigned randomBits = (1U << chip::modeShift) - 1;
    unsigned bits = (pages_.value(mode()) & randomBits) | shown.bits;
    for (int i = 0; i < boxes; ++i) {
        const int bit = shown.boxBits.at(static_cast<std::size_t>(i));
        if (bit >= 0 && controls_.get<forms::CheckBox>({sources, i}).checked())
            bits |= 1U << bit;
    }
    controls_.row("Mode_Rm_W").show(bits);
}

void ModePage::wakeUpByChipSelect() {
    controls_.clearOptions(lowPower, 0);
    for (int i = 0; i < boxes; ++i)
        controls_.get<forms::CheckBox>({sources, i}).setValue(0);
    controls_.row("Mode_Rm_W").show(1U << chip::wakeUpBit);
    pages_.write(mode());
}

void ModePage::showModeName() {
    const std::uint8_t bits = controls_.row(names).byte();
    variables_.ModeCode = static_cast<std::int16_t>(bits >> chip::modeShift);
    constexpr int named = static_cast<int>(chip::modeNames.size());
    constexpr int highestBit = 0x80;
    const int otherName = (bits & highestBit) != 0 ? named : named + 1;
    const int name = variables_.ModeCode < named ? variables_.ModeCode : otherName;
    for (int i = 0; i <= named + 1; ++i)
        controls_.find({names, chip::firstModeLabel + i})->setVisible(i == name);
}

std::string ModePage::identityText(std::uint8_t identity) {
    if (identity == 0)
        return "Make sure set up is correct";
    const bool is5V = (identity & 0x80) != 0;
    // The revision counts from -1.
    return fmt::format("{}{}{}{}", is5V ? "5V - " : "3.3V - ",
                       chip::deviceNames.at(identity >> 5 & 3),
                       chip::versionNames.at(identity >> 3 & 3), (identity & 7) - 1);
}

} // namespace bitlux::zt72518
