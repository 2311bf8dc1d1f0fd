#pragma once

#include "panels/common/panel_part.h"
#include "panels/zt72518/chip_words.h"
#include "panels/zt72518/mode_words.h"
#include "platform/forms/timer.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// The page with the picture of the chip's modes: buttons that change the mode, and the present
/// mode highlighted, on request read four times a second.
class DiagramPage : public PanelPart {
public:
    static constexpr forms::Color presentModeColour = 0xC0C000;

    explicit DiagramPage(const PanelContext& context);

    void unload() override { leave(); }

    void Send_pre_prog_Click(int index);
    void timer_auto_pre_Timer();
    /// The page is left: reading stops.
    void leave();

private:
    void addControls();
    [[nodiscard]] forms::CheckBox& box(int index) const;
    // Each sends its words in order; false when the link failed.
    bool enterMode(std::uint8_t select);
    bool sendStep(const ModeWord& step);
    void showMode(int lowByte);
    void showNoMode();

    PanelControls& controls_;
    ChipWords& link_;

public:
    forms::Timer timer_auto_pre;
};

} // namespace bitlux::zt72518
