#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"

namespace bitlux {

/// frmAddWait: adds a wait to the commands to send.
class AddWaitForm : public forms::Form {
public:
    AddWaitForm(forms::FormSet& set, CommandLists& commands, MessageBoxes& boxes);

    void cmdOK_Click();

private:
    CommandLists& commands_;
    MessageBoxes& boxes_;

public:
    forms::TextBox txtWaitTime;
    forms::ComboBox cmbUnits;
    forms::Button cmdOK;
    forms::Button cmdCancel;
};

} // namespace bitlux
