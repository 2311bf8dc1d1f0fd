#include "sending/add_wait_form.h"

#include "sending/command_line.h"

#include <fmt/format.h>

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
    procedure("cmdOK_Click", [this] { cmdOK_Click(); });
    procedure("cmdCancel_Click", [this] { setVisible(false); });
    keyProcedure("txtWaitTime_KeyDown", [this](forms::KeyCode code) {
        if (code == forms::KeyCode::Enter)
            cmdOK_Click();
    });
}

void AddWaitForm::cmdOK_Click() {
    const std::optional<std::int32_t> factor = millisecondsOf(cmbUnits.text());
    if (!factor) {
        boxes_.show({.text = "There was a problem converting the units."});
        return;
    }
    constexpr std::int32_t longest = 2'000'000'000; // milliseconds
    if (waitMilliseconds(txtWaitTime.text(), *factor) > longest) {
        boxes_.show(
            {.text = fmt::format("Wait time cannot be greater than 2 billion milliseconds,{}"
                                 "2 million seconds, 33333 minutes, 555 hours, or 23 days.",
                                 lineBreak)});
        return;
    }
    commands_.addToSend(waitLine(txtWaitTime.text(), cmbUnits.text()));
    setVisible(false);
}

} // namespace bitlux
