#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <string>

namespace bitlux {

inline constexpr const char* sequenceFilter = "Sequence file (*.txt)|*.txt";

/// Saves and loads the sequence. The style of the chip's file defines the reaction to errors.
class SequenceFiles {
public:
    /// All outlive it.
    SequenceFiles(forms::Form& form, const chips::SequenceStyle& style, SequenceLists& lists,
                  FileDialogs& dialogs);

    void Cm_SAVE_Seq_Click();
    void Cm_LOAD_Seq_Click();

private:
    void save(const std::string& fileName) const;
    void load(const std::string& fileName);

    const bool quiet_; ///< field by field, and silent of errors
    SequenceLists& lists_;
    FileDialogs& dialogs_;

public:
    forms::Button Cm_SAVE_Seq;
    forms::Button Cm_LOAD_Seq;
};

} // namespace bitlux
