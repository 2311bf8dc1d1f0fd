#pragma once

#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"

namespace bitlux::zt72518 {

/// What the page of Special Mode has beside a register's page: a mode is entered by a word that
/// repeats the random word of the chip, inverted.
class SpecialModePage {
public:
    /// All outlive it; the register's own controls are there.
    SpecialModePage(PanelControls& controls, RegisterPages& pages, RegisterWords& words);

private:
    void showInverse();
    void activateSafePin();
    void appendChoice();

    PanelControls& controls_;
    RegisterPages& pages_;
    RegisterWords& words_;
};

} // namespace bitlux::zt72518
