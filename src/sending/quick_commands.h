#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/emptied_commands.h"
#include "sending/run_controls.h"
#include "sending/single_word_page.h"
#include "session/session.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace bitlux {

/// Quick Commands on the single-word page: saves the word under the name that was typed, shows
/// and deletes what is stored.
class QuickCommands {
public:
    /// The dependencies; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        EmptiedCommands& emptied;
        SingleWordPage& singleWord;
        RunControls& run;
        MessageBoxes& boxes;
    };

    QuickCommands(forms::Form& form, const Parts& parts);

    void cmdSaveQC_Click();
    void cmdDeleteQC_Click();
    /// Restores the words that Apply has emptied, and returns how many names have one again. When
    /// there are none, a message says so.
    int RestoreQuickCommands();
    /// Loads the selected Quick Command into the single-word page.
    void cmbMasterQCList_Click();
    void cmbMasterQCList_DblClick();
    void cmbMasterQCList_KeyDown(forms::KeyCode code);

    /// Fills both lists from the table.
    void rebuildLists();

private:
    bool acceptName(const std::string& name);
    bool chooseRow(const std::string& name, std::optional<std::size_t>& row);
    void store(const std::string& name, std::optional<std::size_t> row);
    void removeRow(std::size_t row);
    [[nodiscard]] std::vector<std::int16_t> wordOf(std::size_t row) const;
    void showBits(const std::vector<std::int16_t>& bits);

    Parts parts_;
    Session& session_;

public:
    forms::Button cmdSaveQC;
    forms::Button cmdDeleteQC;
    forms::MenuItem itemRestoreCommands;
};

} // namespace bitlux
