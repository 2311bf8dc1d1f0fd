#pragma once

#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "session/session.h"

#include <string>

namespace bitlux {

/// The choice of the SPI type in the configuration dialog: a tab, a picture and three notes for
/// each type. All arrays are indexed by the number of the type.
class TypePage {
public:
    TypePage(forms::Form& form, Session& session);

    /// Shows the picture of the selected tab and stores it as SPITypeTab.
    void TabStripSPItype_Click();
    /// Selects the tab of this caption, or the first.
    void select(const std::string& caption);
    [[nodiscard]] const std::string& selectedCaption() const;

private:
    Session& session_;

public:
    forms::Frame frameSPItype;
    forms::TabStrip TabStripSPItype;
    forms::ControlArray<forms::Frame> frameSPIpicture;
    forms::ControlArray<forms::Label> lblSPINoteRead;
    forms::ControlArray<forms::Label> lblSPINoteToggle;
    forms::ControlArray<forms::Label> lblSPINotePolarity;
    forms::ControlArray<forms::Label> lblNonStandard; ///< 5 to 8
};

} // namespace bitlux
