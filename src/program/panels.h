#pragma once

#include "chips/chip_library.h"
#include "panels/common/companion_form.h"
#include "panels/common/panel_form.h"
#include "panels/zt72518/test_mode_form.h"
#include "platform/forms/form_set.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// The control panels of chips, each made on first access. No chip file is read before.
class Panels {
public:
    /// All outlive it.
    Panels(forms::FormSet& set, PanelSurroundings outside, chips::ChipLibrary& library);

    /// The panel of a chip of the product.
    [[nodiscard]] PanelForm& touch(std::string_view chip) { return slot(chip).touch(); }
    /// Null when it does not exist.
    [[nodiscard]] PanelForm* find(std::string_view chip) { return slot(chip).find(); }
    /// Shows the panel of a chip.
    void show(std::string_view chip) { touch(chip).setVisible(true); }
    /// Settings were applied: the panel in front keeps its word shape.
    void keepShape();
    /// An open panel whose words have the shape that is in force, as "the ZT72516 panel"; empty for
    /// none.
    [[nodiscard]] std::string holding() const;
    /// Shows the panel of a user's chip, whose file is read each time its panel is opened. Raises
    /// Failure when there is no such chip or its file is damaged.
    void showUsers(const std::string& chip);
    /// Name of the form of a user's chip.
    [[nodiscard]] static std::string usersForm(const std::string& chip);
    /// The remaining lines of sequences pass without sending anything.
    void abandonRuns();
    /// The program ends: unloads the panels that require it.
    void unloadAtEnd();

    [[nodiscard]] zt72518::TestModeForm& zt72518TestMode() { return *zt72518TestMode_; }

private:
    using Slot = forms::FormSlot<PanelForm>;

    [[nodiscard]] Slot& slot(std::string_view chip);
    void requireFree(const std::string& form) const;

    void declareCompanion(const char* chip, const char* form);

    forms::FormSet& set_;
    const PanelSurroundings outside_;
    chips::ChipLibrary& library_;
    std::map<std::string, std::unique_ptr<Slot>, std::less<>> slots_;
    std::vector<std::unique_ptr<forms::FormSlot<CompanionForm>>> companions_;
    forms::FormSlot<zt72518::TestModeForm> zt72518TestMode_;
};

} // namespace bitlux
