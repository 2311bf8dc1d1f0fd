#include "program/panels.h"

#include "platform/failure.h"

#include <array>
#include <utility>

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
        slots_.emplace(chip, std::make_unique<Slot>(set, form, [this, chip, form] {
                           return std::make_unique<PanelForm>(set_, form, chips::embeddedChip(chip),
                                                              outside_);
                       }));
}

Panels::Slot& Panels::slot(std::string_view chip) {
    const auto found = slots_.find(chip);
    if (found == slots_.end())
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no panel of {}", chip));
    return *found->second;
}

void Panels::showUsers(const std::string& chip) {
    library_.requireUsers(chip);
    std::unique_ptr<Slot>& users = slots_[chip];
    if (!users)
        users = std::make_unique<Slot>(set_, usersForm(chip), [this, chip] {
            return std::make_unique<PanelForm>(set_, usersForm(chip), library_.refreshed(chip),
                                               outside_);
        });
    users->touch().setVisible(true);
}

void Panels::abandonRuns() {
    for (const auto& [chip, slot] : slots_)
        if (PanelForm* panel = slot->find())
            panel->sequence.player.abandon();
}

} // namespace bitlux
