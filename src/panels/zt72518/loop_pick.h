#pragma once

#include "panels/common/panel_part.h"

namespace bitlux::zt72518 {

/// Picks the start and the stop of the loop by clicks on lines, by turns.
class LoopPick : public PanelPart {
public:
    explicit LoopPick(const PanelContext& context);

    bool NextLoopPick = true; ///< the next click on a command picks the loop's start, else its stop

private:
    void List_Commands_Click();
    void Val_loop_Change();
    void showNext();
    void show(bool on);

    PanelSequence& sequence_;
    forms::Label& startCaption_; ///< red while the next click picks it
    forms::Label& stopCaption_;
};

} // namespace bitlux::zt72518
