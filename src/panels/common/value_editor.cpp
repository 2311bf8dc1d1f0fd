#include "panels/common/value_editor.h"

#include <algorithm>
#include <string>

namespace bitlux {

ValueEditor::ValueEditor(const PanelContext& context)
    : lists_(context.sequence.lists),
      text_(context.sequence.Val_loop(context.chip.sequence.editor.box)) {
    const chips::SequenceStyle::Editor& style = context.chip.sequence.editor;
    forms::Form& form = context.form;
    if (style.list.exists())
        choice_ = &dynamic_cast<forms::ComboBox&>(form.control(chips::text(style.list)));
    if (!style.button.exists()) {
        context.controls.addButton(chips::changeButton, "Change Value");
        context.controls.onClick(chips::changeButton, [this] { ChangeValue(); });
    }
    form.procedure("ChangeValue", [this] { ChangeValue(); });
    form.procedure("List_Value_Click", [this] { List_Value_Click(); });
}

bool ValueEditor::isChosen(const std::string& value) const {
    if (choice_ == nullptr)
        return false;
    const std::vector<std::string>& values = choice_->items();
    return std::find(values.begin(), values.end(), value) != values.end();
}

void ValueEditor::List_Value_Click() {
    if (lists_.List_Value.listIndex() < 0)
        return;
    const std::string value = lists_.value(lists_.List_Value.listIndex());
    const bool chosen = isChosen(value);
    if (choice_ != nullptr)
        choice_->setVisible(chosen);
    text_.setEnabled(!chosen);
    if (chosen)
        choice_->setText(value);
    else
        text_.setText(value);
}

void ValueEditor::ChangeValue() {
    const int row = lists_.List_Value.listIndex();
    if (row > 0)
        lists_.setValue(row,
                        choice_ != nullptr && choice_->visible() ? choice_->text() : text_.text());
}

} // namespace bitlux
