#pragma once

#include "panels/common/panel_part.h"

namespace bitlux {

/// Picks the start and the stop of the loop by clicks on lines, alternately.
class LoopPick : public PanelPart {
public:
    explicit LoopPick(const PanelContext& context);

    bool NextLoopPick = true; ///< the next click on a command picks the loop's start, else its stop

private:
    void List_Commands_Click();
    void Val_loop_Change();
    /// Shows in red the caption of the box that the next click fills.
    void showNext();

    PanelSequence& sequence_;
};

} // namespace bitlux
