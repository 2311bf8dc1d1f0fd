#include "gui/widgets/bindings.h"

#include "gui/widgets/text.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

#include <algorithm>

#include <QApplication>
#include <QSignalBlocker>

namespace bitlux::gui {

namespace {

QColor colorOf(forms::Color color) {
    const QPalette palette = QApplication::palette();
    if (color == forms::windowColor)
        return palette.color(QPalette::Base);
    if (color == forms::buttonFaceColor)
        return palette.color(QPalette::Button);
    if (color == forms::desktopColor)
        return palette.color(QPalette::Highlight);
    return {static_cast<int>(color & 0xFFU), static_cast<int>((color >> 8U) & 0xFFU),
            static_cast<int>((color >> 16U) & 0xFFU)};
}

} // namespace

Binding::Binding(forms::Control& control, QObject& object) : control_(control), object_(object) {
    object_.setObjectName(textOf(control.fullName()));
}

void Binding::leave() {
    gone_ = true;
    object_.blockSignals(true);
}

void Binding::performInput(const std::function<void()>& action) {
    if (gone_)
        return;
    try {
        action();
    } catch (const forms::Unreachable&) {
        refresh();
    }
}

WidgetBinding::WidgetBinding(forms::Control& control, QWidget& widget)
    : Binding(control, widget),
      widget_(widget),
      color_(forms::ownColor(control.kind())),
      ownColor_(color_) {}

void WidgetBinding::refreshColor() {
    color_ = control().backColor();
    theme_ = QApplication::palette().cacheKey();
    if (color_ == ownColor_) {
        widget_.setPalette({});
        widget_.setAutoFillBackground(false);
        return;
    }
    QPalette palette = widget_.palette();
    const QColor color = colorOf(color_);
    const QColor ink = qGray(color.rgb()) > 110 ? Qt::black : Qt::white;
    for (const QPalette::ColorRole role : {QPalette::Window, QPalette::Button, QPalette::Base})
        palette.setColor(role, color);
    for (const QPalette::ColorRole role :
         {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(role, ink);
    widget_.setPalette(palette);
    widget_.setAutoFillBackground(true);
}

void WidgetBinding::bringUpToDate() {
    const QSignalBlocker blocker(widget_);
    refreshContent();
    // A layout would show a new widget that was never hidden explicitly.
    const bool mayBeShown = !widget_.testAttribute(Qt::WA_WState_ExplicitShowHide);
    if (widget_.isVisibleTo(widget_.parentWidget()) != control().visible() ||
        (mayBeShown && !control().visible()))
        widget_.setVisible(control().visible());
    widget_.setEnabled(control().enabled());
    const QString tooltip = textOf(control().tooltip());
    if (widget_.toolTip() != tooltip)
        widget_.setToolTip(tooltip);
    const bool isThemed = color_ != ownColor_ && theme_ != QApplication::palette().cacheKey();
    if (color_ != control().backColor() || isThemed)
        refreshColor();
}

ButtonBinding::ButtonBinding(forms::Button& control, QPushButton& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QPushButton::clicked, &widget,
                     [this] { performInput([this] { control_.click(); }); });
}

void ButtonBinding::refreshContent() {
    widget_.setText(textOf(control_.caption()));
}

ConfirmBinding::ConfirmBinding(forms::Button& control, ConfirmButton& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QPushButton::clicked, &widget, [this] {
        if (widget_.pressedAgain())
            performInput([this] { control_.click(); });
    });
}
void ConfirmBinding::refreshContent() {
    widget_.setCaption(textOf(control_.caption()));
}

CheckBoxBinding::CheckBoxBinding(forms::CheckBox& control, QCheckBox& widget)
    : WidgetBinding(control, widget),
      control_(control),
      widget_(widget),
      hasOwnText_(!widget.text().isEmpty()) {
    QObject::connect(&widget, &QCheckBox::clicked, &widget,
                     [this] { performInput([this] { control_.click(); }); });
}

void CheckBoxBinding::refreshContent() {
    if (!hasOwnText_)
        widget_.setText(textOf(control_.caption()));
    widget_.setChecked(control_.checked());
}

OptionButtonBinding::OptionButtonBinding(forms::OptionButton& control, QRadioButton& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    widget_.setAutoExclusive(false); // the control knows its group
    QObject::connect(&widget, &QRadioButton::clicked, &widget, [this] {
        performInput([this] { control_.click(); });
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
        // setEditable would also make the drop-down list, long before it is needed.
        widget_.setLineEdit(new QLineEdit(&widget_));
        // The text is exactly what was typed, and typing selects no item.
        widget_.setCompleter(nullptr);
        QObject::disconnect(widget_.lineEdit(), &QLineEdit::editingFinished, &widget_, nullptr);
    }
    widget_.setInsertPolicy(QComboBox::NoInsert);
    QObject::connect(&widget, &QComboBox::activated, &widget, [this](int index) {
        performInput([this, index] { control_.select(index); });
    });
    QObject::connect(&widget, &QComboBox::editTextChanged, &widget, [this](const QString& text) {
        performInput([this, &text] { control_.edit(text.toStdString()); });
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
    : WidgetBinding(control, widget),
      control_(control),
      widget_(widget),
      behaviour_(*new LabelBehaviour(widget)) {
    widget_.setTextFormat(Qt::PlainText);
    QObject::connect(&behaviour_, &LabelBehaviour::clicked, &widget,
                     [this] { performInput([this] { control_.click(); }); });
    QObject::connect(&behaviour_, &LabelBehaviour::doubleClicked, &widget,
                     [this] { performInput([this] { control_.doubleClick(); }); });
}

void LabelBinding::refreshContent() {
    const QString text = textOf(control_.caption());
    if (widget_.text() != text)
        widget_.setText(text);
    behaviour_.setPressable(control_.handles(forms::ControlEvent::Click));
    if (behaviour_.isBitOfRow())
        return;
    const forms::Color color = control_.backColor();
    const bool lit = color != forms::windowColor && color != forms::buttonFaceColor;
    if (lit || color == forms::windowColor || behaviour_.isLamp())
        behaviour_.light(lit);
}

ListBoxBinding::ListBoxBinding(forms::ListBox& control, LogView& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &LogView::selected, &widget, [this](int index) {
        performInput([this, index] { control_.select(index); });
    });
    QObject::connect(&widget, &LogView::doubleClicked, &widget,
                     [this] { performInput([this] { control_.doubleClick(); }); });
    if (control.handles(forms::ControlEvent::DragDrop))
        widget.setDraggable();
    QObject::connect(&widget, &LogView::dragged, &widget, [this](int from, int to) {
        performInput([this, from, to] { control_.dragLine(from, to); });
    });
}

void ListBoxBinding::refreshContent() {
    widget_.showLines(control_.lines(), static_cast<int>(control_.count()), control_.listIndex());
}

ScrollBarBinding::ScrollBarBinding(forms::ScrollBar& control, QAbstractSlider& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    widget_.setTracking(false); // the value changes when the thumb is released
    QObject::connect(&widget, &QAbstractSlider::sliderMoved, &widget,
                     [this](int value) { performInput([this, value] { control_.drag(value); }); });
    QObject::connect(&widget, &QAbstractSlider::valueChanged, &widget,
                     [this](int value) { performInput([this, value] { control_.move(value); }); });
}

void ScrollBarBinding::refreshContent() {
    widget_.setRange(control_.min(), control_.max());
    if (!widget_.isSliderDown())
        widget_.setValue(control_.value());
}

TabStripBinding::TabStripBinding(forms::TabStrip& control, QTabBar& widget)
    : WidgetBinding(control, widget), control_(control), widget_(widget) {
    QObject::connect(&widget, &QTabBar::currentChanged, &widget, [this](int index) {
        performInput([this, index] { control_.click(index + 1); });
    });
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
        performInput([this, &text] { control_.edit(text.toStdString()); });
    });
}

void TextBoxBinding::refreshContent() {
    const QString text = textOf(control_.text());
    if (widget_.text() != text)
        widget_.setText(text);
}

TimerBinding::TimerBinding(forms::Timer& control, QTimer& timer)
    : Binding(control, timer), control_(control), timer_(timer) {
    timer.setTimerType(Qt::PreciseTimer); // a coarse timer may come early
    QObject::connect(&timer, &QTimer::timeout, &timer, [this] { control_.fire(); });
}

void TimerBinding::bringUpToDate() {
    if (!control_.runs())
        timer_.stop();
    else if (!timer_.isActive() || timer_.interval() != control_.interval())
        timer_.start(control_.interval());
}

MenuItemBinding::MenuItemBinding(forms::MenuItem& control, QAction& action)
    : Binding(control, action), control_(control), action_(action) {
    QObject::connect(&action, &QAction::triggered, &action,
                     [this] { performInput([this] { control_.click(); }); });
}

void MenuItemBinding::bringUpToDate() {
    action_.setText(textOf(control_.caption()));
    action_.setVisible(control_.visible());
    action_.setEnabled(control_.enabled());
}

} // namespace bitlux::gui
