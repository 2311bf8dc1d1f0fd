#include "panels/zt72518/mode_page.h"

#include "panels/common/described_register.h"
#include "panels/zt72518/mode_words.h"
#include "platform/conversions.h"

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr ControlRef wakeUp{"Cm_Mode_RM_W", 1};
constexpr ControlRef appendWakeUp{"Cm_Mode_RM_W", 2};
constexpr const char* lowPower = "s_mode";
constexpr const char* sources = "opt_s_mode";
constexpr const char* nameLabels = "Mode_Rm_Rh";
constexpr int boxCount = static_cast<int>(lowPowerBoxes.size());
constexpr int modeCount = static_cast<int>(lowPowerModes.size());

} // namespace

ModePage::ModePage(const PanelContext& context)
    : controls_(context.controls),
      pages_(context.pages),
      register_(describedRegister(context.chip, "Mode")) {
    context.form.variable("ModeCode", ModeCode);
    addLowPowerModes();
    addNames();
    const std::string word = fmt::format("0x5C{:02X}", 1 << wakeUpBit);
    controls_.addButton(wakeUp, "Wake up by CSb").setTooltip(word);
    controls_.addButton(appendWakeUp, ">SEQ WU CSb").setTooltip(word);
    controls_.onClick(wakeUp, [this] { wakeUpByChipSelect(); });
    controls_.onClick(appendWakeUp,
                      [this] { pages_.append(register_.writeLine.name, hex(1U << wakeUpBit)); });
}

void ModePage::addLowPowerModes() {
    PanelControls::Texts captions;
    for (const LowPowerMode& any : lowPowerModes)
        captions.emplace_back(any.caption);
    controls_.addOptions({lowPower, 0}, captions);
    for (int i = 0; i < modeCount; ++i)
        controls_.onClick({lowPower, i}, [this] { showChosen(); });
    for (int i = 0; i < boxCount; ++i) {
        controls_.addBox({sources, i}, lowPowerBoxes[static_cast<std::size_t>(i)]);
        controls_.onClick({sources, i}, [this] { showChosen(); });
    }
}

void ModePage::addNames() {
    int label = firstModeLabel;
    for (const std::string_view name : modeNames)
        controls_.addLabel({nameLabels, label++}, name).hide();
    controls_.addLabel({nameLabels, label++}, lowPowerName).hide();
    controls_.addLabel({nameLabels, label}, otherModeName).hide();
    controls_.addLabel({nameLabels, identityLabel}, "");
    controls_.onClick({"Cm_Mode_Rm_Rh"}, [this] { showModeName(); });
    controls_.onClick({"Cm_Interrupts_Rh"}, [this] {
        controls_.get<forms::Label>({nameLabels, identityLabel})
            .setCaption(identityText(controls_.row("interrupts_Rh").byte()));
    });
}

void ModePage::showChosen() {
    const std::optional<int> chosen = controls_.chosen({lowPower, 0}, modeCount);
    if (!chosen)
        return;
    const LowPowerMode& shown = lowPowerModes.at(static_cast<std::size_t>(*chosen));
    constexpr unsigned randomBits = (1U << modeShift) - 1;
    std::uint64_t bits = (pages_.value(register_) & randomBits) | shown.bits;
    for (int i = 0; i < boxCount; ++i) {
        const int bit = shown.boxBits.at(static_cast<std::size_t>(i));
        if (bit >= 0 && controls_.get<forms::CheckBox>({sources, i}).checked())
            bits |= 1U << bit;
    }
    controls_.row("Mode_Rm_W").show(bits);
}

void ModePage::wakeUpByChipSelect() {
    controls_.clearOptions({lowPower, 0});
    for (int i = 0; i < boxCount; ++i)
        controls_.get<forms::CheckBox>({sources, i}).setValue(0);
    controls_.row("Mode_Rm_W").show(1U << wakeUpBit);
    pages_.write(register_);
}

void ModePage::showModeName() {
    const std::uint8_t bits = controls_.row(nameLabels).byte();
    ModeCode = static_cast<std::int16_t>(bits >> modeShift);
    constexpr int named = static_cast<int>(modeNames.size());
    constexpr int highestBit = 0x80;
    const int otherName = (bits & highestBit) != 0 ? named : named + 1;
    const int name = ModeCode < named ? ModeCode : otherName;
    for (int i = 0; i <= named + 1; ++i)
        controls_.find({nameLabels, firstModeLabel + i})->setVisible(i == name);
}

std::string ModePage::identityText(std::uint8_t identity) {
    if (identity == 0)
        return "Make sure set up is correct";
    const bool is5V = (identity & 0x80) != 0;
    // The revision counts from -1.
    return fmt::format("{}{}{}{}", is5V ? "5V - " : "3.3V - ", deviceNames.at(identity >> 5 & 3),
                       versionNames.at(identity >> 3 & 3), (identity & 7) - 1);
}

} // namespace bitlux::zt72518
