#pragma once

#include "panels/common/panel_part.h"
#include "platform/forms/control_array.h"

namespace bitlux {

/// Two points at which a run stops until the chip resets or interrupts, or the user lets it pass;
/// or only the controls of such points, depending on the chip's file.
class SequenceStops : public PanelPart {
public:
    explicit SequenceStops(const PanelContext& context);

    // Variables of the form
    bool Pass1 = false;
    bool Pass2 = false;
    bool Condition1Seen = false;
    bool Condition2Seen = false;

private:
    struct Condition {
        const forms::ControlArray<forms::OptionButton>& lines; ///< 0 reset, 1 interrupt
        bool& seen;
        const bool& pass;
    };

    void act(forms::Form& form);
    /// Plays the lines 1 to `last` in their stretches.
    void play(int last);
    /// Samples the lines; false when the link failed.
    [[nodiscard]] bool sample() const;
    void await(const Condition& condition);
    void Ch_FirstCondition_Click();
    void Ch_SecondCondition_Click();

    const Session& session_;
    DongleLink& dongle_;
    EventLoop& loop_;
    PanelSequence& sequence_;

public:
    forms::ControlArray<forms::Frame> frame_Condition;
    forms::CheckBox Ch_FirstCondition;
    forms::CheckBox Ch_SecondCondition;
    forms::TextBox Text_FirstCondition; ///< the last line before the run stops
    forms::TextBox Text_SecondCondition;
    forms::OptionGroup firstLines;
    forms::OptionGroup secondLines;
    forms::ControlArray<forms::OptionButton> R_Condition1; ///< 0 reset, 1 interrupt
    forms::ControlArray<forms::OptionButton> R_Condition2;
    forms::Button Cm_PassCondition1;
    forms::Button Cm_PassCondition2;
};

} // namespace bitlux
