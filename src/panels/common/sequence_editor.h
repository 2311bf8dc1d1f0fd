#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux {

/// Works on the lines of a sequence: inserts waits, removes lines, moves one by dragging it.
class SequenceEditor {
public:
    /// All outlive it.
    SequenceEditor(forms::Form& form, SequenceLists& lists, MessageBoxes& boxes);

    void Cm_Wait_Click();
    void Cm_Remove_Line_Click();
    void Cm_CLEAR_lists_Click();

private:
    void List_Commands_DragDrop(int row);

    SequenceLists& lists_;
    MessageBoxes& boxes_;

public:
    forms::Button Cm_Wait;
    forms::TextBox Text_Wait; ///< milliseconds
    forms::Button Cm_Remove_Line;
    forms::Button Cm_CLEAR_lists;
};

} // namespace bitlux
