#include "program/panels.h"

#include "platform/failure.h"

#include <array>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr const char* zt72518Chip = "zt72518";
constexpr const char* zt72516Chip = "zt72516";

/// Chips of the product, and the names of their forms, which are known before their files are read.
constexpr std::array<std::pair<const char*, const char*>, 2> panelForms{
    {{zt72518Chip, "ZT72518"}, {zt72516Chip, "ZT72516"}}};
/// The forms beside them that their files describe.
constexpr std::array<std::pair<const char*, const char*>, 2> companionForms{
    {{zt72516Chip, "ZT72516ReadFlags"}, {zt72516Chip, "ZT72516TestMode"}}};

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
    for (const auto& [chip, form] : companionForms)
        declareCompanion(chip, form);
}

void Panels::declareCompanion(const char* chip, const char* form) {
    companions_.push_back(
        std::make_unique<forms::FormSlot<CompanionForm>>(set_, form, [this, chip, form] {
            return std::make_unique<CompanionForm>(
                set_, form, chips::embeddedChip(chip), outside_,
                [this, chip]() -> PanelForm& { return touch(chip); });
        }));
}

Panels::Slot& Panels::slot(std::string_view chip) {
    const auto found = slots_.find(chip);
    if (found == slots_.end())
        throw Failure(Failure::Kind::OutOfRange, fmt::format("There is no panel of {}", chip));
    return *found->second;
}

void Panels::keepShape() {
    for (const auto& [chip, slot] : slots_)
        if (PanelForm* panel = slot->find())
            panel->keepShape();
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

void Panels::unloadAtEnd() {
    for (const auto& [chip, slot] : slots_) {
        const PanelForm* panel = slot->find();
        if (panel == nullptr || !panel->chip().panel.unloadsAtEnd)
            continue;
        const std::string form = panel->name();
        set_.perform(form + ".Form_Unload", [&] { set_.unload(form); });
    }
}

} // namespace bitlux
