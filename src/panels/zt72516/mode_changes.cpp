#include "panels/zt72516/mode_changes.h"

#include <array>
#include <utility>

namespace bitlux::zt72516 {

namespace {

constexpr std::uint64_t randomBits = 0xFF;
constexpr int selectShift = 8;
constexpr const char* refresh = "Btn_Write_WD_Refresh";

/// By what Sel_MOD is with each.
constexpr std::array buttons{"Btn_GotoResetMode", "Btn_GotoInitMode", "Btn_GotoFlashMode",
                             "Btn_ResetSgInputs"};

std::uint64_t refreshWord(const chips::Chip& chip) {
    for (const chips::Command& any : chip.commands)
        if (any.button.name == refresh)
            return any.word;
    PanelContext::missingPart();
}

} // namespace

ModeChanges::ModeChanges(const PanelContext& context)
    : controls_(context.controls), row_(controls_.row("SPE_MODE_Reg")) {
    for (std::uint64_t mode = 0; mode < buttons.size(); ++mode)
        controls_.onClick(buttons.at(mode), [this, mode] { select(mode); });
    controls_.onClick("Btn_GotoInitModeWithWD",
                      [this, &words = context.words, word = refreshWord(context.chip)] {
                          words.send(word); // the change of mode is what shows
                          controls_.run("Btn_GotoInitMode");
                      });
}

void ModeChanges::select(std::uint64_t mode) {
    controls_.run("Btn_Read_SPE_MODE");
    row_.show((~row_.value() & randomBits) | mode << selectShift);
    controls_.run("Btn_Write_SPE_MODE");
}

} // namespace bitlux::zt72516
