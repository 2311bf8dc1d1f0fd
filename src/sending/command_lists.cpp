#include "sending/command_lists.h"

namespace bitlux {

CommandLists::CommandLists(forms::Form& form, MessageBoxes& boxes)
    : boxes_(boxes),
      cmbMasterQCList(form, "cmbMasterQCList", forms::ComboBox::Style::Editable),
      lstCommandsAvailable(form, "lstCommandsAvailable", available_),
      lstCommandsToSend(form, "lstCommandsToSend", toSend_) {}

bool CommandLists::hasCommands() {
    if (lstCommandsToSend.count() > 0)
        return true;
    boxes_.show({.text = "Nothing to send."});
    return false;
}

void CommandLists::addToSend(const std::string& line) {
    toSend_->add(line);
    lstCommandsToSend.linesChanged();
}

void CommandLists::clear() {
    cmbMasterQCList.clear();
    available_->clear();
    lstCommandsAvailable.linesChanged();
    toSend_->clear();
    lstCommandsToSend.linesChanged();
}

} // namespace bitlux
