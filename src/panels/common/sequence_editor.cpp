#include "panels/common/sequence_editor.h"

#include "platform/conversions.h"
#include "platform/failure.h"

#include <algorithm>
#include <string_view>

namespace bitlux {

namespace {

bool isNumber(const std::string& text) {
    const std::size_t first = text.find_first_not_of(' ');
    const std::size_t last = text.find_last_not_of(' ');
    if (first == std::string::npos)
        return false;
    try {
        toNumber(std::string_view(text).substr(first, last + 1 - first));
        return true;
    } catch (const Failure&) {
        return false;
    }
}

} // namespace

SequenceEditor::SequenceEditor(forms::Form& form, const chips::SequenceStyle& style,
                               SequenceLists& lists, MessageBoxes& boxes)
    : style_(style),
      lists_(lists),
      boxes_(boxes),
      Cm_Wait(form, "Cm_Wait", "Insert Wait (ms)"),
      Text_Wait(form, "Text_Wait"),
      Cm_Remove_Line(form, "Cm_Remove_Line", "Remove Selected Line"),
      Cm_CLEAR_lists(form, "Cm_CLEAR_lists", "CLEAR lists") {
    Text_Wait.setText(style.wait.text);
    if (style.moves)
        addMoves(form);
    form.procedure("Cm_Wait_Click", [this] { Cm_Wait_Click(); });
    form.procedure("Cm_Remove_Line_Click", [this] { Cm_Remove_Line_Click(); });
    form.procedure("Cm_CLEAR_lists_Click", [this] { Cm_CLEAR_lists_Click(); });
    form.procedure("List_Commands_DragDrop", [this](int row) { List_Commands_DragDrop(row); });
}

void SequenceEditor::addMoves(forms::Form& form) {
    cm_MoveUp.emplace(form, "cm_MoveUp", "Move Up");
    cm_MoveDown.emplace(form, "cm_MoveDown", "Move Down");
    form.procedure("cm_MoveUp_Click", [this] { move(-1); });
    form.procedure("cm_MoveDown_Click", [this] { move(1); });
}

void SequenceEditor::move(int by) {
    const int from = lists_.List_Commands.listIndex();
    const int to = from + by;
    if (from < 1 || to < 1 || to > lists_.last())
        boxes_.show({.text = "Please select a valid command to move."});
    else
        lists_.move(from, to);
}

std::optional<std::string> SequenceEditor::waitText() {
    if (!style_.wait.asksNumber && (Text_Wait.text().empty() || Text_Wait.text() == "Value"))
        Text_Wait.setText("10");
    if (style_.wait.asksNumber && !isNumber(Text_Wait.text())) {
        boxes_.show({.text = "Enter a numeric value for the wait time."});
        return std::nullopt;
    }
    return Text_Wait.text();
}

void SequenceEditor::Cm_Wait_Click() {
    const std::optional<std::string> text = waitText();
    if (!text)
        return;
    const int selected = lists_.List_Commands.listIndex();
    const int first = style_.headersMove ? 0 : 1;
    lists_.insert(selected < 0 ? lists_.last() + 1 : std::max(selected, first), "Wait", *text);
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
