#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux::zt72518 {

/// Edits the value of the selected line: as a text, or as one of the times of the watchdog.
class ValueEditor {
public:
    /// All outlive it.
    ValueEditor(forms::Form& form, SequenceLists& lists, forms::TextBox& text,
                forms::ComboBox& time);

    /// "Change Value": what was edited becomes the value of the selected line.
    void changeValue();

private:
    void List_Value_Click();

    SequenceLists& lists_;
    forms::TextBox& text_;
    forms::ComboBox& time_; ///< visible while the line has a time
};

} // namespace bitlux::zt72518
