#include "gui/bindings.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <algorithm>

#include <QSignalBlocker>

namespace bitlux::gui {

namespace {

QString textOf(const std::string& text) {
    return QString::fromStdString(text);
}

} // namespace

Binding::Binding(forms::Control& control, QObject& object) : control_(control), object_(object) {
    object_.setObjectName(textOf(control.fullName()));
}

void Binding::byHand(const std::function<void()>& action) {
    try {
        action();
    } catch (const forms::Unreachable&) {
        refresh();
    }
}

WidgetBinding::WidgetBinding(forms::Control& control, QWidget& widget)
    : Binding(control, widget), widget_(widget) {}

void WidgetBinding::refresh() {
    const QSignalBlocker blocker(widget_);
    refreshContent();
    // A layout would show a new widget that nobody has hidden in so many words.
    const bool mayBeShown = !widget_.testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (widget_.isVisibleTo(widget_.parentWidget()) != control().visible() ||
        (mayBeShown && !control().visible()))
        widget_.setVisible(control().visible());
    widget_.setEnabled(control().enabled());
    const QString tooltip = textOf(control().tooltip());
    if (widget_.toolTip() != tooltip)
        widget_.setToolTip(tooltip);
    if (control().hasFocus() && widget_.window()->focusWidget() != &widget_)
        widget_.setFocus();
}

ButtonBinding::ButtonBinding(forms::Button& control, QPushButton& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QPushButton::clicked, &widget,
                     [this] { byHand([this] { control_.click(); }); });
}

void ButtonBinding::refreshContent() {
    widget_.setText(textOf(control_.caption()));
}

CheckBoxBinding::CheckBoxBinding(forms::CheckBox& control, QCheckBox& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QCheckBox::clicked, &widget,
                     [this] { byHand([this] { control_.click(); }); });
}

void CheckBoxBinding::refreshContent() {
    widget_.setText(textOf(control_.caption()));
    widget_.setChecked(control_.checked());
}

OptionButtonBinding::OptionButtonBinding(forms::OptionButton& control, QRadioButton& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    widget_.setAutoExclusive(false); // the control knows its group
    QObject::connect(&widget, &QRadioButton::clicked, &widget, [this] {
        byHand([this] { control_.click(); });
        refresh();
    });
}

void OptionButtonBinding::refreshContent() {
    widget_.setText(textOf(control_.caption()));
    widget_.setChecked(control_.value());
}

ComboBoxBinding::ComboBoxBinding(forms::ComboBox& control, QComboBox& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    if (control.style() == forms::ComboBox::Style::Editable) {
        // setEditable would make the list that drops down, too, long before it does.
        widget_.setLineEdit(new QLineEdit(&widget_));
        // The text is what was typed and no more, and typing it chooses nothing.
        widget_.setCompleter(nullptr);
        QObject::disconnect(widget_.lineEdit(), &QLineEdit::editingFinished, &widget_, nullptr);
    }
    widget_.setInsertPolicy(QComboBox::NoInsert);
    QObject::connect(&widget, &QComboBox::activated, &widget,
                     [this](int index) { byHand([this, index] { control_.select(index); }); });
    QObject::connect(&widget, &QComboBox::editTextChanged, &widget, [this](const QString& text) {
        byHand([this, &text] { control_.edit(text.toStdString()); });
    });
}

void ComboBoxBinding::refreshContent() {
    if (shown_ != control_.items()) {
        shown_ = control_.items();
        QStringList items;
        for (const std::string& item : shown_)
            items << textOf(item);
        widget_.clear();
        widget_.addItems(items);
    }
    const int cursor = widget_.isEditable() ? widget_.lineEdit()->cursorPosition() : 0;
    widget_.setCurrentIndex(control_.listIndex());
    if (widget_.isEditable() && widget_.currentText() != textOf(control_.text())) {
        widget_.setEditText(textOf(control_.text()));
        widget_.lineEdit()->setCursorPosition(cursor);
    }
}

FrameBinding::FrameBinding(forms::Frame& control, QGroupBox& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {}

void FrameBinding::refreshContent() {
    widget_.setTitle(textOf(control_.caption()));
}

LabelBinding::LabelBinding(forms::Label& control, QLabel& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    widget_.setTextFormat(Qt::PlainText);
}

void LabelBinding::refreshContent() {
    const QString text = textOf(control_.caption());
    if (widget_.text() != text)
        widget_.setText(text);
}

ListBoxBinding::ListBoxBinding(forms::ListBox& control, LogView& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &LogView::selected, &widget,
                     [this](int index) { byHand([this, index] { control_.select(index); }); });
    QObject::connect(&widget, &LogView::doubleClicked, &widget,
                     [this] { byHand([this] { control_.doubleClick(); }); });
}

void ListBoxBinding::refreshContent() {
    widget_.showLines(control_.lines(), static_cast<int>(control_.count()), control_.listIndex());
}

TabStripBinding::TabStripBinding(forms::TabStrip& control, QTabBar& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QTabBar::currentChanged, &widget,
                     [this](int index) { byHand([this, index] { control_.click(index + 1); }); });
}

void TabStripBinding::refreshContent() {
    if (shown_ != control_.tabs()) {
        shown_ = control_.tabs();
        while (widget_.count() > 0)
            widget_.removeTab(0);
        for (const forms::TabStrip::Tab& tab : shown_)
            widget_.setTabToolTip(widget_.addTab(textOf(tab.caption)), textOf(tab.tooltip));
    }
    widget_.setCurrentIndex(control_.selected() - 1);
}

TextBoxBinding::TextBoxBinding(forms::TextBox& control, QLineEdit& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QLineEdit::textChanged, &widget, [this](const QString& text) {
        byHand([this, &text] { control_.edit(text.toStdString()); });
    });
}

void TextBoxBinding::refreshContent() {
    const QString text = textOf(control_.text());
    if (widget_.text() != text)
        widget_.setText(text);
}

TimerBinding::TimerBinding(forms::Timer& control, QTimer& timer)
    : Binding(control, timer), control_(control), timer_(timer) {
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { control_.fire(); });
}

void TimerBinding::refresh() {
    if (!control_.runs())
        timer_.stop();
    else if (!timer_.isActive() || timer_.interval() != control_.interval())
        timer_.start(control_.interval());
}

MenuItemBinding::MenuItemBinding(forms::MenuItem& control, QAction& action)
    : Binding(control, action), control_(control), action_(action) {
    QObject::connect(&action, &QAction::triggered, &action,
                     [this] { byHand([this] { control_.click(); }); });
}

void MenuItemBinding::refresh() {
    action_.setText(textOf(control_.caption()));
    action_.setVisible(control_.visible());
    action_.setEnabled(control_.enabled());
}

} // namespace bitlux::gui
