#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/batches.h"

namespace bitlux {

/// frmSaveBatch: asks for the name under which the commands to send are saved as a Batch.
class SaveBatchForm : public forms::Form {
public:
    SaveBatchForm(forms::FormSet& set, Batches& batches, MessageBoxes& boxes);

    void cmdSave_Click();

private:
    Batches& batches_;
    MessageBoxes& boxes_;

public:
    forms::TextBox txtBatchName;
    forms::Button cmdSave;
    forms::Button cmdCancel;
};

} // namespace bitlux
