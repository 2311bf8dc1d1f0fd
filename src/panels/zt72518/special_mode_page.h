#pragma once

#include "panels/common/panel_part.h"

namespace bitlux::zt72518 {

/// What the page of Special Mode has in addition to a register's page: a mode is entered by a word
/// that contains the inverted random word of the chip.
class SpecialModePage : public PanelPart {
public:
    static constexpr const char* registerTitle = "Special Mode";
    static constexpr int randomBits = 6; ///< below the select bits

    explicit SpecialModePage(const PanelContext& context);

private:
    void showInverse();
    void activateSafePin();
    void appendChoice();

    PanelControls& controls_;
    RegisterPages& pages_;
    PanelWords& words_;
    const chips::Register& register_;
};

} // namespace bitlux::zt72518
