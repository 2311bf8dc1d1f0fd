#include "panels/zt72518/special_mode_page.h"

#include "panels/common/described_register.h"

#include <cstdint>
#include <string>

#include <fmt/format.h>

namespace bitlux::zt72518 {

namespace {

constexpr int specialModes = 4;
constexpr ControlRef readRandom{"Cm_Spe_Mode_Rl"};
constexpr ControlRef readRandomToo{"Cm_Spe_Mode_Rl_b"};
constexpr ControlRef appendMode{"Seq_Spe_Mode_W"};
constexpr ControlRef readAndWrite{"Cm_Spe_Mode_W", 1};
constexpr ControlRef safePin{"Cm_Spe_Mode_W", 2};

} // namespace

SpecialModePage::SpecialModePage(const PanelContext& context)
    : controls_(context.controls),
      pages_(context.pages),
      words_(context.words),
      register_(describedRegister(context.chip, registerTitle)) {
    for (int bit = 0; bit < randomBits; ++bit)
        light(controls_.addLabel({"Spe_Mode_Rl_b", bit},
                                 register_.row.captions.at(static_cast<std::size_t>(bit))),
              false);
    const std::string both =
        fmt::format("{}, {}", words_.text(register_.views.front()), words_.text(register_));
    controls_.addButton(readRandomToo, "Read Low").setTooltip(words_.text(register_.views.front()));
    controls_.addButton(readAndWrite, "Read and Write").setTooltip(both);
    controls_.addButton(safePin, "Activate SAFE pin (available in INIT mode only)")
        .setTooltip(both);
    controls_.addButton(appendMode, ">SEQ").setTooltip(register_.writeLine.name);

    controls_.onClick(readRandom, [this] { showInverse(); });
    controls_.onClick(readRandomToo, [this] { controls_.run(readRandom); });
    controls_.onClick(readAndWrite, [this] {
        controls_.run(readRandom);
        pages_.write(register_);
    });
    controls_.onClick(safePin, [this] { activateSafePin(); });
    controls_.onClick(appendMode, [this] { appendChoice(); });
}

void SpecialModePage::showInverse() {
    const LabelRow& random = controls_.row("Spe_Mode_Rl");
    const LabelRow& written = controls_.row("Spe_Mode_W");
    for (int bit = 0; bit < randomBits; ++bit) {
        const bool inverse = !random.lit(bit);
        light(controls_.get<forms::Label>({"Spe_Mode_Rl_b", bit}), inverse);
        written.set(bit, inverse);
    }
}

void SpecialModePage::activateSafePin() {
    controls_.run(readRandom);
    // Shown by the last two bits of the random word, which are returned unchanged.
    constexpr unsigned sameBits = 0x30;
    const std::uint64_t inverse = pages_.value(register_) & 0x3FU;
    words_.write(register_, inverse ^ sameBits);
}

void SpecialModePage::appendChoice() {
    const int choice = controls_.chosen({"R_Spe_Mode", 0}, specialModes).value_or(0);
    pages_.append(register_.writeLine.name, std::to_string(choice));
}

} // namespace bitlux::zt72518
