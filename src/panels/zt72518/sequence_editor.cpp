#include "panels/zt72518/sequence_editor.h"

#include "panels/zt72518/watchdog.h"
#include "platform/conversions.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace bitlux::zt72518 {

namespace {

constexpr forms::Color red = 255;

} // namespace

SequenceEditor::SequenceEditor(forms::Form& form, const Parts& parts)
    : parts_(parts),
      lists_(parts.lists),
      Cm_Wait(form, "Cm_Wait", "Insert Wait (ms)"),
      Text_Wait(form, "Text_Wait"),
      Cm_Remove_Line(form, "Cm_Remove_Line", "Remove Selected Line"),
      Cm_CLEAR_lists(form, "Cm_CLEAR_lists", "CLEAR lists"),
      Val_loop("Val_loop", 0, 3, [&form](const std::string& name, int index) {
          return std::make_unique<forms::TextBox>(form, name, index);
      }) {
    Text_Wait.setText("Value");
    showNextPick();
    form.procedure("Cm_Wait_Click", [this] { Cm_Wait_Click(); });
    form.procedure("Cm_Remove_Line_Click", [this] { Cm_Remove_Line_Click(); });
    form.procedure("Cm_CLEAR_lists_Click", [this] { Cm_CLEAR_lists_Click(); });
    form.procedure("List_Commands_Click", [this] { List_Commands_Click(); });
    form.procedure("List_Commands_DragDrop", [this](int row) { List_Commands_DragDrop(row); });
    form.procedure("List_Value_Click", [this] { List_Value_Click(); });
    form.procedure("Val_loop_Change", [this] { Val_loop_Change(); });
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
    if (parts_.boxes.show(question) == MessageBox::Answer::Yes)
        lists_.clear();
}

void SequenceEditor::List_Commands_Click() {
    const std::string line = std::to_string(lists_.List_Commands.listIndex());
    bool& picksStart = parts_.variables.NextLoopPick;
    const bool isStart = std::exchange(picksStart, !picksStart);
    showNextPick();
    Val_loop(isStart ? 0 : 1).setText(line);
}

void SequenceEditor::showNextPick() {
    const bool picksStart = parts_.variables.NextLoopPick;
    parts_.startPick.setBackColor(picksStart ? red : forms::buttonFaceColor);
    parts_.stopPick.setBackColor(picksStart ? forms::buttonFaceColor : red);
}

void SequenceEditor::Val_loop_Change() {
    if (val(Val_loop(1).text()) < val(Val_loop(0).text()))
        Val_loop(1).setText(Val_loop(0).text());
}

void SequenceEditor::List_Commands_DragDrop(int row) {
    const int from = lists_.List_Commands.listIndex();
    if (from > 0)
        lists_.move(from, std::clamp(row, 1, lists_.last()));
}

void SequenceEditor::List_Value_Click() {
    if (lists_.List_Value.listIndex() < 0)
        return;
    const std::string value = lists_.value(lists_.List_Value.listIndex());
    const bool isTime = Watchdog::timeNumber(value).has_value();
    parts_.timeOfLine.setVisible(isTime);
    Val_loop(2).setEnabled(!isTime);
    if (isTime)
        parts_.timeOfLine.setText(value);
    else
        Val_loop(2).setText(value);
}

void SequenceEditor::changeValue() {
    const int row = lists_.List_Value.listIndex();
    if (row > 0)
        lists_.setValue(row, parts_.timeOfLine.visible() ? parts_.timeOfLine.text()
                                                         : Val_loop(2).text());
}

} // namespace bitlux::zt72518
