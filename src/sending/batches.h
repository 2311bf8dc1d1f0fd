#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "session/session.h"

#include <functional>
#include <string>

namespace bitlux {

/// The Batches on the Batch page: copies of the commands to send, kept under names
/// (Session::Batches).
class Batches {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        RunControls& run;
        MessageBoxes& boxes;
    };

    Batches(forms::Form& form, const Parts& parts);

    /// Shows the dialog that asks for a name. Set by whoever owns it.
    std::function<void()> showSaveBatch;

private:
    Parts parts_;
    Session& session_;

public:
    forms::Button cmdSaveBatch;
    forms::Button cmdDeleteBatch;
    forms::ComboBox cmbBatches;
};

} // namespace bitlux
