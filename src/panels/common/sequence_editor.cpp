#include "panels/common/sequence_editor.h"

#include <algorithm>

namespace bitlux {

SequenceEditor::SequenceEditor(forms::Form& form, SequenceLists& lists, MessageBoxes& boxes)
    : lists_(lists),
      boxes_(boxes),
      Cm_Wait(form, "Cm_Wait", "Insert Wait (ms)"),
      Text_Wait(form, "Text_Wait"),
      Cm_Remove_Line(form, "Cm_Remove_Line", "Remove Selected Line"),
      Cm_CLEAR_lists(form, "Cm_CLEAR_lists", "CLEAR lists") {
    Text_Wait.setText("Value");
    form.procedure("Cm_Wait_Click", [this] { Cm_Wait_Click(); });
    form.procedure("Cm_Remove_Line_Click", [this] { Cm_Remove_Line_Click(); });
    form.procedure("Cm_CLEAR_lists_Click", [this] { Cm_CLEAR_lists_Click(); });
    form.procedure("List_Commands_DragDrop", [this](int row) { List_Commands_DragDrop(row); });
}

void SequenceEditor::Cm_Wait_Click() {
    if (Text_Wait.text().empty() || Text_Wait.text() == "Value")
        Text_Wait.setText("10");
    const int selected = lists_.List_Commands.listIndex();
    // The headers stay where they are.
    lists_.insert(selected < 0 ? lists_.last() + 1 : std::max(selected, 1), "Wait",
                  Text_Wait.text());
}

void SequenceEditor::Cm_Remove_Line_Click() {
    if (lists_.List_Commands.listIndex() > 0)
        lists_.remove(lists_.List_Commands.listIndex());
}

void SequenceEditor::Cm_CLEAR_lists_Click() {
    const MessageBox question{.text = "Clear the sequence?", .buttons = MessageBox::Buttons::YesNo};
    if (boxes_.show(question) == MessageBox::Answer::Yes)
        lists_.clear();
}

void SequenceEditor::List_Commands_DragDrop(int row) {
    const int from = lists_.List_Commands.listIndex();
    if (from > 0)
        lists_.move(from, std::clamp(row, 1, lists_.last()));
}

} // namespace bitlux
