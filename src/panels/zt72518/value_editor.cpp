#include "panels/zt72518/value_editor.h"

#include "panels/zt72518/watchdog.h"

#include <string>

namespace bitlux::zt72518 {

namespace {

constexpr int editedValue = 2; ///< element of Val_loop
constexpr int timeOfLine = 3;  ///< list of wd_config

} // namespace

ValueEditor::ValueEditor(const PanelContext& context)
    : lists_(context.sequence.lists),
      text_(context.sequence.Val_loop(editedValue)),
      time_(context.part<Watchdog>().wd_config(timeOfLine)) {
    context.part<Watchdog>().changeValue = [this] { changeValue(); };
    context.form.procedure("List_Value_Click", [this] { List_Value_Click(); });
}

void ValueEditor::List_Value_Click() {
    if (lists_.List_Value.listIndex() < 0)
        return;
    const std::string value = lists_.value(lists_.List_Value.listIndex());
    const bool isTime = Watchdog::timeNumber(value).has_value();
    time_.setVisible(isTime);
    text_.setEnabled(!isTime);
    if (isTime)
        time_.setText(value);
    else
        text_.setText(value);
}

void ValueEditor::changeValue() {
    const int row = lists_.List_Value.listIndex();
    if (row > 0)
        lists_.setValue(row, time_.visible() ? time_.text() : text_.text());
}

} // namespace bitlux::zt72518
