#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"
#include "platform/forms/form.h"

#include <string>

namespace bitlux {

/// The choice of a chip's variant, and what the form hides or disables for each.
class VariantRules {
public:
    /// All outlive it. Selects the variant that the file names; nothing is removed from the first
    /// one.
    VariantRules(const chips::Chip& chip, forms::Form& form, PanelControls& controls);

    /// Ticks the boxes that a variant may clear, and removes from a variant other than the first
    /// what it lacks; to be called once all controls exist.
    void start() const;
    /// Title of the variant that is chosen; empty when the chip has no variants.
    [[nodiscard]] std::string chosen() const;

private:
    void choose(const std::string& variant) const;
    void apply(const chips::Variants::Rule& rule, bool on) const;
    static void applyTo(forms::Control& control, chips::Variants::Effect effect, bool on);

    const chips::Variants& variants_;
    forms::Form& form_;
    PanelControls& controls_;
};

} // namespace bitlux
