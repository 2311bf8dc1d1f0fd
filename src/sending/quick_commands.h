#pragma once

#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"
#include "sending/command_lists.h"
#include "sending/run_controls.h"
#include "sending/single_word_page.h"
#include "session/session.h"

#include <cstddef>
#include <optional>
#include <string>

namespace bitlux {

/// Quick Commands on the single-word page: saves the word under the name that was typed, shows
/// and deletes what is stored.
class QuickCommands {
public:
    /// What it works with; all outlive it.
    struct Parts {
        Session& session;
        CommandLists& commands;
        SingleWordPage& singleWord;
        RunControls& run;
        MessageBoxes& boxes;
    };

    QuickCommands(forms::Form& form, const Parts& parts);

private:
    Parts parts_;
    Session& session_;

public:
    forms::Button cmdSaveQC;
    forms::Button cmdDeleteQC;
};

} // namespace bitlux
