#pragma once

#include "panels/common/sequence_player.h"
#include "panels/zt72518/panel_variables.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux::zt72518 {

/// Picks the start and the stop of the loop by clicks on lines, by turns.
class LoopPick {
public:
    /// What it works with; all outlive it.
    struct Parts {
        PanelVariables& variables;
        SequenceLists& lists;
        SequencePlayer& player;
        forms::TextBox& start; ///< lines of the loop
        forms::TextBox& stop;
        forms::Label& startCaption; ///< red while the next click picks it
        forms::Label& stopCaption;
    };

    LoopPick(forms::Form& form, const Parts& parts);

private:
    void List_Commands_Click();
    void Val_loop_Change();
    void showNext();
    void show(bool on);

    Parts parts_;
};

} // namespace bitlux::zt72518
