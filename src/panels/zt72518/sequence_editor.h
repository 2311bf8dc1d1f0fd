#pragma once

#include "panels/zt72518/panel_variables.h"
#include "panels/zt72518/sequence_lists.h"
#include "platform/desk.h"
#include "platform/forms/control_array.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

namespace bitlux::zt72518 {

/// Works on the lines of the sequence, and picks the lines that a run repeats or triggers at.
class SequenceEditor {
public:
    /// What it works with; all outlive it.
    struct Parts {
        PanelVariables& variables;
        SequenceLists& lists;
        forms::ComboBox& timeOfLine; ///< edits the value of a watchdog's line
        forms::Label& startPick;     ///< red while the next click picks the start of the loop
        forms::Label& stopPick;
        MessageBoxes& boxes;
    };

    SequenceEditor(forms::Form& form, const Parts& parts);

    void Cm_Wait_Click();
    void Cm_Remove_Line_Click();
    void Cm_CLEAR_lists_Click();
    /// "Change Value": the edited text becomes the value of the selected line.
    void changeValue();

private:
    void List_Commands_Click();
    void List_Commands_DragDrop(int row);
    void List_Value_Click();
    void Val_loop_Change();
    /// Start or Stop is red, where the next click goes.
    void showNextPick();

    Parts parts_;
    SequenceLists& lists_;

public:
    forms::Button Cm_Wait;
    forms::TextBox Text_Wait; ///< milliseconds
    forms::Button Cm_Remove_Line;
    forms::Button Cm_CLEAR_lists;
    forms::ControlArray<forms::TextBox> Val_loop; ///< start, stop, edited value, trigger line
};

} // namespace bitlux::zt72518
