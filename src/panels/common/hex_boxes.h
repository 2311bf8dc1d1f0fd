#pragma once

#include "panels/common/key_filters.h"
#include "panels/common/panel_controls.h"
#include "platform/forms/form.h"

#include <memory>
#include <vector>

namespace bitlux {

/// The boxes that show write rows in hexadecimal, and the buttons that set rows from them. A box
/// accepts as many digits as the register has; one more replaces the last.
class HexBoxes {
public:
    /// All outlive it.
    HexBoxes(forms::Form& form, const chips::Chip& chip, PanelControls& controls,
             const KeyFilters& filters);

private:
    void add(forms::Form& form, const chips::Register& owner, PanelControls& controls);
    int filterKey(forms::TextBox& box, std::size_t digits, int key);

    KeyFilters filters_;
    std::vector<std::unique_ptr<forms::TextBox>> boxes_;
};

} // namespace bitlux
