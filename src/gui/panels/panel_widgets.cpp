#include "gui/panels/panel_widgets.h"

#include "gui/desktop/theme.h"

namespace bitlux::gui {

RowButton* PanelWidgets::rowButton(const ControlRef& name, QWidget* parent,
                                   const QString& about) const {
    auto* made = make<RowButton, forms::Button>(name, parent);
    const bool appends = made->text().startsWith('>');
    const QString description = appends && !made->toolTip().isEmpty() ? made->toolTip() : about;
    if (!description.isEmpty())
        made->setAccessibleName(made->text() + " " + description);
    return made;
}

QLineEdit* PanelWidgets::entry(forms::TextBox& control, const QString& prompt, const QString& name,
                               QWidget* parent) const {
    constexpr int characters = 8;
    auto* edit = binder.make<QLineEdit>(control, parent);
    edit->setAccessibleName(name);
    edit->setPlaceholderText(prompt);
    edit->setMinimumWidth(edit->fontMetrics().averageCharWidth() * characters);
    return edit;
}

QLabel* PanelWidgets::heading(const QString& text, qreal scale, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont bold = scaled(label->font(), scale);
    bold.setBold(true);
    label->setFont(bold);
    return label;
}

QLabel* PanelWidgets::note(const std::string& text, QWidget* parent) {
    auto* label = new QLabel(textOf(text), parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

void PanelWidgets::setLines(QVBoxLayout& group) {
    group.setContentsMargins(9, 6, 9, 6);
    group.setSpacing(1);
}

void PanelWidgets::keepRoom(QWidget& widget) {
    QSizePolicy policy = widget.sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget.setSizePolicy(policy);
}

} // namespace bitlux::gui
