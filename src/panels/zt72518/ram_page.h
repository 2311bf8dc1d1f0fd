#pragma once

#include "panels/common/key_filters.h"
#include "panels/common/panel_controls.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux::zt72518 {

/// What the page of the four RAM bytes has beside a register's page: the byte of the write row as
/// hexadecimal text, and reading all four.
class RamPage {
public:
    /// All outlive it; the registers' own controls are there.
    RamPage(forms::Form& form, PanelControls& controls, KeyFilters& filters, MessageBoxes& boxes);

private:
    void showHex();
    int filterKey(int key);
    void followText();
    void confirmText();

    PanelControls& controls_;
    KeyFilters& filters_;
    MessageBoxes& boxes_;

public:
    forms::TextBox Val_Hex_RAM; ///< at most two capital digits
};

} // namespace bitlux::zt72518
