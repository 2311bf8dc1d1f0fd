#pragma once

#include "panels/common/sequence_lists.h"
#include "platform/desk.h"
#include "platform/forms/controls.h"
#include "platform/forms/form.h"

#include <optional>
#include <string>

namespace bitlux {

/// Edits the lines of a sequence: inserts waits, removes lines, moves a line by dragging it, or by
/// buttons if the chip's file has them.
class SequenceEditor {
public:
    /// All outlive it.
    SequenceEditor(forms::Form& form, const chips::SequenceStyle& style, SequenceLists& lists,
                   MessageBoxes& boxes);

    void Cm_Wait_Click();
    void Cm_Remove_Line_Click();
    void Cm_CLEAR_lists_Click();

private:
    void List_Commands_DragDrop(int row);
    /// The text of Text_Wait, or none when it is refused.
    [[nodiscard]] std::optional<std::string> waitText();
    void addMoves(forms::Form& form);
    void move(int by);

    const chips::SequenceStyle& style_;
    SequenceLists& lists_;
    MessageBoxes& boxes_;

public:
    forms::Button Cm_Wait;
    forms::TextBox Text_Wait; ///< milliseconds
    forms::Button Cm_Remove_Line;
    forms::Button Cm_CLEAR_lists;
    std::optional<forms::Button> cm_MoveUp; ///< if the chip's file has them
    std::optional<forms::Button> cm_MoveDown;
};

} // namespace bitlux
