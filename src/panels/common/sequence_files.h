#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux {

inline constexpr const char* sequenceFilter = "Sequence file (*.txt)|*.txt";

/// Saves and loads the sequence. A file that is damaged or cannot be read changes nothing.
class SequenceFiles {
public:
    /// All outlive it.
    SequenceFiles(forms::Form& form, SequenceLists& lists, FileDialogs& dialogs);

    void Cm_SAVE_Seq_Click();
    void Cm_LOAD_Seq_Click();

private:
    SequenceLists& lists_;
    FileDialogs& dialogs_;

public:
    forms::Button Cm_SAVE_Seq;
    forms::Button Cm_LOAD_Seq;
};

} // namespace bitlux
