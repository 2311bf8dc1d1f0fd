#include "program/panels.h"

#include "chips/register_reader.h"
#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* zt72518Chip = "zt72518";

/// Chips of the product, and the names of their forms, which are known before their files are read.
constexpr std::array<std::pair<const char*, const char*>, 1> panelForms{{{zt72518Chip, "ZT72518"}}};

} // namespace

Panels::Panels(forms::FormSet& set, const PanelSurroundings& outside, chips::ChipLibrary& library)
    : set_(set), outside_(outside), library_(library), zt72518TestMode_(set, "TestMode", [this] {
          return std::make_unique<zt72518::TestModeForm>(
              set_, zt72518::TestModeForm::Parts{.format = chips::embeddedChip(zt72518Chip)->word,
                                                 .session = outside_.session,
                                                 .engine = outside_.engine,
                                                 .dongle = outside_.dongle,
                                                 .boxes = outside_.desk.boxes});
      }) {
    for (const auto& [chip, form] : panelForms)
        slots_.emplace(chip, std::make_unique<Slot>(set, form, [this, name = chip, title = form] {
                           return std::make_unique<PanelForm>(set_, title,
                                                              chips::embeddedChip(name), outside_);
                       }));
}

Panels::Slot& Panels::slot(std::string_view chip) {
    const auto found = slots_.find(chip);
    if (found == slots_.end())
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no panel of {}", chip));
    return *found->second;
}

std::string Panels::usersForm(const std::string& chip) {
    return "Panel_" + chips::identifier(chip);
}

void Panels::showUsers(const std::string& chip) {
    library_.requireUsers(chip);
    if (slots_.find(chip) == slots_.end()) {
        const std::string form = usersForm(chip);
        requireFree(form);
        slots_.emplace(chip, std::make_unique<Slot>(set_, form, [this, chip, form] {
                           return std::make_unique<PanelForm>(set_, form, library_.refreshed(chip),
                                                              outside_);
                       }));
    }
    show(chip);
}

/// Two names of chips may differ in nothing but what becomes an underscore.
void Panels::requireFree(const std::string& form) const {
    const std::vector<std::string> taken = set_.names();
    if (std::find(taken.begin(), taken.end(), form) != taken.end())
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format("Another panel is called {}: give the chip's file another name", form));
}

void Panels::abandonRuns() {
    for (const auto& [chip, slot] : slots_)
        if (PanelForm* panel = slot->find())
            panel->sequence.player.abandon();
}

} // namespace bitlux
