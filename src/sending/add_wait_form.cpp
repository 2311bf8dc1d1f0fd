#include "sending/add_wait_form.h"

namespace bitlux {

AddWaitForm::AddWaitForm(forms::FormSet& set, CommandLists& commands, MessageBoxes& boxes)
    : Form(set, "frmAddWait", "Add Wait"),
      commands_(commands),
      boxes_(boxes),
      txtWaitTime(*this, "txtWaitTime"),
      cmbUnits(*this, "cmbUnits", forms::ComboBox::Style::List, {"ms", "s", "min", "hrs", "days"}),
      cmdOK(*this, "cmdOK", "OK"),
      cmdCancel(*this, "cmdCancel", "Cancel") {
    procedure("Form_Load", [this] {
        txtWaitTime.setText("");
        cmbUnits.setText("s");
    });
}

} // namespace bitlux
