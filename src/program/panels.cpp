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
constexpr const char* zt72516Chip = "zt72516";

/// Chips of the product, and the names of their forms, which are known before their files are read.
constexpr std::array<std::pair<const char*, const char*>, 4> panelForms{{{zt72518Chip, "ZT72518"},
                                                                         {zt72516Chip, "ZT72516"},
                                                                         {"zt72537", "ZT72537"},
                                                                         {"zt72361", "ZT72361"}}};
/// The forms beside them that their files describe.
constexpr std::array<std::pair<const char*, const char*>, 2> companionForms{
    {{zt72516Chip, "ZT72516ReadFlags"}, {zt72516Chip, "ZT72516TestMode"}}};

} // namespace

Panels::Panels(forms::FormSet& set, PanelSurroundings outside, chips::ChipLibrary& library)
    : set_(set),
      outside_(std::move(outside)),
      library_(library),
      zt72518TestMode_(set, "TestMode", [this] {
          return std::make_unique<zt72518::TestModeForm>(
              set_, zt72518::TestModeForm::Parts{.chip = chips::embeddedChip(zt72518Chip),
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

std::string Panels::usersForm(const std::string& chip) {
    return "Panel_" + chips::identifier(chip);
}

void Panels::keepShape() {
    for (const auto& [chip, slot] : slots_)
        if (PanelForm* panel = slot->find())
            panel->keepShape();
}

std::string Panels::holding() const {
    const Session& session = outside_.session;
    for (const auto& [name, slot] : slots_) {
        const PanelForm* panel = slot->find();
        if (panel == nullptr)
            continue;
        const chips::Chip& chip = panel->chip();
        if (chip.word.bits == session.SPIWordLength &&
            (chip.panel.leavesType || chip.word.type == session.SPIType))
            return fmt::format("the {} panel", chip.title);
    }
    return {};
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
