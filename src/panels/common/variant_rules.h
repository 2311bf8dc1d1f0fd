#pragma once

#include "chips/description.h"
#include "panels/common/panel_controls.h"
#include "platform/forms/form.h"

#include <string>

namespace bitlux {

/// The choice of a chip's variant, and what each of them lacks on the form.
class VariantRules {
public:
    /// All outlive it. The variant that the file tells is chosen; from the first one nothing is
    /// taken.
    VariantRules(const chips::Chip& chip, forms::Form& form, PanelControls& controls);

    /// Ticks the boxes that a variant may clear, and takes from a variant that is not the first
    /// what it lacks; to be called once all controls are there.
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
