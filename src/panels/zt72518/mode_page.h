#pragma once

#include "panels/common/panel_part.h"

#include <cstdint>
#include <string>

namespace bitlux::zt72518 {

/// What the page of the mode register has in addition to a register's page: the low-power modes
/// with their wake-up sources, waking up by chip select, and the names of the mode and of the
/// device.
class ModePage : public PanelPart {
public:
    explicit ModePage(const PanelContext& context);

    /// The description of the device by the identity byte.
    static std::string identityText(std::uint8_t identity);

private:
    void addLowPowerModes();
    void addNames();
    void showChosen();
    void wakeUpByChipSelect();
    void showModeName();

    PanelControls& controls_;
    RegisterPages& pages_;
    const chips::Register& register_;
    std::int16_t ModeCode = 0; ///< of the mode register, as last read
};

} // namespace bitlux::zt72518
