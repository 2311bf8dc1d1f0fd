#pragma once

#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"

#include <functional>
#include <string>

namespace bitlux {

/// The buttons of the Batch page that edit the commands to send. Each first stops a continuous
/// run.
class CommandEditor {
public:
    CommandEditor(forms::Form& form, CommandLists& commands, RunControls& run);

    /// Shows the dialog that adds a wait. Set by its owner.
    std::function<void()> showAddWait;

    void cmdAddMult_Click();
    void cmdRemoveMult_Click();
    void cmdMoveUpMult_Click();
    void cmdMoveDownMult_Click();

private:
    CommandLists& commands_;
    RunControls& run_;

public:
    forms::Button cmdAddMult;
    forms::Button cmdAddPause;
    forms::Button cmdAddWait;
    forms::Button cmdRemoveMult;
    forms::Button cmdMoveUpMult;
    forms::Button cmdMoveDownMult;
    forms::Button cmdClearMultiple;
};

} // namespace bitlux
