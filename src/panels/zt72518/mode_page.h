#pragma once

#include "panels/common/panel_controls.h"
#include "panels/common/register_pages.h"
#include "panels/zt72518/panel_variables.h"

#include <cstdint>
#include <string>

namespace bitlux::zt72518 {

/// What the page of the mode register has beside a register's page: the low-power modes with their
/// wake-up sources, waking up by chip select, and the names of the mode and of the device.
class ModePage {
public:
    /// All outlive it; the registers' own controls are there.
    ModePage(PanelControls& controls, RegisterPages& pages, RegisterWords& words,
             PanelVariables& variables);

    /// What the identity byte says of the device.
    static std::string identityText(std::uint8_t identity);

private:
    void addLowPowerModes();
    void addNames();
    void showChosen();
    void wakeUpByChipSelect();
    void showModeName();

    PanelControls& controls_;
    RegisterPages& pages_;
    PanelVariables& variables_;
};

} // namespace bitlux::zt72518
