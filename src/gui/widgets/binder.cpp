#include "gui/widgets/binder.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>

namespace bitlux::gui {

Binder::Binder(forms::FormSet& forms) : forms_(forms) {
    timer_.setSingleShot(true);
    timer_.setInterval(frame);
    connect(&timer_, &QTimer::timeout, this, [this] { flush(); });
    timer_.start(); // for changes before anybody listened
    becameDirty_ = forms_.becameDirty.follow([this] { timer_.start(); });
    formGoing_ = forms_.formGoing.follow([this](forms::Form& form) { forget(form); });
}

template <typename B, typename Control, typename Widget>
void Binder::add(Control& control, Widget& widget) {
    auto binding = std::make_unique<B>(control, widget);
    refresh(*binding);
    bindings_[&control] = std::move(binding);
    controls_[&widget] = &control;
    widget.installEventFilter(this);
}

void Binder::bind(forms::Button& control, QPushButton& widget) {
    add<ButtonBinding>(control, widget);
}
void Binder::bind(forms::Button& control, ConfirmButton& widget) {
    add<ConfirmBinding>(control, widget);
}
void Binder::bind(forms::CheckBox& control, QCheckBox& widget) {
    add<CheckBoxBinding>(control, widget);
}
void Binder::bind(forms::ComboBox& control, QComboBox& widget) {
    add<ComboBoxBinding>(control, widget);
    if (QLineEdit* edit = widget.lineEdit()) { // it receives the mouse, the box the keyboard
        controls_[edit] = &control;
        edit->installEventFilter(this);
    }
}
void Binder::bind(forms::Frame& control, QGroupBox& widget) {
    add<FrameBinding>(control, widget);
}
void Binder::bind(forms::Frame& control, QWidget& page) {
    add<PageBinding>(control, page);
}
void Binder::bind(forms::Label& control, QLabel& widget) {
    add<LabelBinding>(control, widget);
}
void Binder::bind(forms::ListBox& control, LogView& widget) {
    add<ListBoxBinding>(control, widget);
}
void Binder::bind(forms::MenuItem& control, QAction& action) {
    add<MenuItemBinding>(control, action);
}
void Binder::bind(forms::OptionButton& control, QRadioButton& widget) {
    add<OptionButtonBinding>(control, widget);
}
void Binder::bind(forms::ScrollBar& control, QAbstractSlider& widget) {
    add<ScrollBarBinding>(control, widget);
}
void Binder::bind(forms::TabStrip& control, QTabBar& widget) {
    add<TabStripBinding>(control, widget);
}
void Binder::bind(forms::TextBox& control, QLineEdit& widget) {
    add<TextBoxBinding>(control, widget);
}
void Binder::bind(forms::Timer& control, QTimer& timer) {
    add<TimerBinding>(control, timer);
}

void Binder::flushSoon() {
    if (!timer_.isActive())
        timer_.start();
}

void Binder::flush() {
    for (forms::Control* control : forms_.takeDirty())
        if (const auto found = bindings_.find(control); found != bindings_.end())
            refresh(*found->second);
    flushed.raise();
}

void Binder::refresh(Binding& binding) {
    binding.refresh();
    followFocus(binding);
}

void Binder::followFocus(const Binding& binding) {
    const forms::Control& control = binding.control();
    auto* widget = qobject_cast<QWidget*>(&binding.object());
    if (widget == nullptr || !control.hasFocus())
        return;
    const forms::Control*& focused = focused_[&control.form()];
    if (focused == &control)
        return;
    widget->setFocus();
    if (widget->window()->focusWidget() == widget) // else disabled; tried again later
        focused = &control;
}

void Binder::refreshAll() {
    for (const auto& [control, binding] : bindings_)
        refresh(*binding);
    flushed.raise();
}

void Binder::forget(const forms::Form& form) {
    for (const forms::Control* control : form.controls()) {
        leftOut_.erase(control);
        const auto found = bindings_.find(control);
        if (found == bindings_.end())
            continue;
        found->second->leave();
        // One of its slots may be running; the binding is destroyed with the widget.
        const std::shared_ptr<Binding> binding = std::move(found->second);
        connect(&binding->object(), &QObject::destroyed, this, [binding] {});
        bindings_.erase(found);
    }
    focused_.erase(&form);
    std::erase_if(controls_, [&form](const auto& entry) { return &entry.second->form() == &form; });
}

bool Binder::eventFilter(QObject* watched, QEvent* event) {
    const auto found = controls_.find(watched);
    if (found == controls_.end())
        return false;
    forms::Control& control = *found->second;
    switch (event->type()) {
    case QEvent::FocusIn:
        focused_[&control.form()] = &control;
        performInput([&control] { control.focus(); });
        break;
    case QEvent::MouseButtonDblClick:
        if (control.kind() == forms::Control::Kind::ComboBox &&
            static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton)
            performInput([&control] { control.doubleClick(); });
        break;
    case QEvent::DragEnter:
        // The window opens dropped files; a field does not take them as text.
        if (static_cast<QDragEnterEvent*>(event)->mimeData()->hasUrls()) {
            event->ignore();
            return true;
        }
        break;
    case QEvent::KeyPress:
        return keyPressed(control, watched, *static_cast<QKeyEvent*>(event));
    default:
        break;
    }
    return false;
}

bool Binder::keyPressed(forms::Control& control, QObject* widget, const QKeyEvent& event) {
    const bool enter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    if (enter && control.hasKeyHandler()) {
        performInput([&control] { control.key(forms::KeyCode::Enter); });
        if (controls_.contains(widget)) // else its form was destroyed
            enterTaken.raise(control);
        return true;
    }
    auto* box = dynamic_cast<forms::TextBox*>(&control);
    auto* edit = qobject_cast<QLineEdit*>(widget);
    return box != nullptr && edit != nullptr && typed(*box, *edit, event);
}

bool Binder::typed(forms::TextBox& control, QLineEdit& widget, const QKeyEvent& event) {
    const QString text = event.text();
    const bool types = text.size() == 1 && text[0].unicode() < 0x80 &&
                       (text[0].isPrint() || text[0] == '\b' || text[0] == '\r');
    if (!types || !control.handles(forms::ControlEvent::KeyPress))
        return false;
    const auto bytes = [&widget](int characters) {
        return static_cast<std::size_t>(widget.text().left(characters).toUtf8().size());
    };
    const int start = widget.hasSelectedText() ? widget.selectionStart() : widget.cursorPosition();
    const int length = static_cast<int>(widget.selectedText().size());
    control.select(bytes(start), bytes(start + length) - bytes(start));
    performInput([&] { control.key(forms::keystrokeOf(text[0].toLatin1())); });
    flush();
    const std::string before = control.text().substr(0, control.selectionStart());
    widget.setCursorPosition(static_cast<int>(QString::fromStdString(before).size()));
    return true;
}

void Binder::performInput(const std::function<void()>& action) {
    try {
        action();
    } catch (const forms::Unreachable&) {
        flush();
    }
}

} // namespace bitlux::gui
