#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "platform/forms/text_lines.h"

#include <memory>
#include <string>
#include <vector>

namespace bitlux {

/// The lists of the main form that hold named words: the names of the Quick Commands on both
/// pages, and the commands to send of the Batch page.
class CommandLists {
public:
    CommandLists(forms::Form& form, MessageBoxes& boxes);

    /// False, after a message, when there is nothing in the commands to send.
    bool hasCommands();
    /// Adds a line to the end of the commands to send.
    void addToSend(const std::string& line);
    /// Replaces the commands to send; none is selected.
    void setToSend(std::vector<std::string> lines);
    /// Removes a line, or all lines with a text, from the commands to send.
    void removeToSend(std::size_t index);
    void removeAllToSend(const std::string& text);
    /// Swaps the selected line with another one; the selection moves with it.
    void moveSelectedToSend(int to);
    [[nodiscard]] const std::vector<std::string>& toSend() const { return toSend_->all(); }

    /// Replaces the names of the Quick Commands in both lists; none is selected.
    void setNames(std::vector<std::string> names);
    /// One more name, at the end of both.
    void addName(std::string name);
    /// Empties all three.
    void clear();
    /// The word on the single-word page is no longer a stored command.
    void deselectQuickCommand() { cmbMasterQCList.setListIndex(-1); }

private:
    MessageBoxes& boxes_;
    std::shared_ptr<forms::TextLines> toSend_ = std::make_shared<forms::TextLines>();

public:
    forms::ComboBox cmbMasterQCList;
    forms::ListBox lstCommandsAvailable; ///< the same names
    forms::ListBox lstCommandsToSend;
};

} // namespace bitlux
