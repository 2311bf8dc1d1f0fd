#include "gui/binder.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QMimeData>

namespace bitlux::gui {

Binder::Binder(forms::FormSet& forms) : forms_(forms) {
    timer_.setSingleShot(true);
    timer_.setInterval(frame);
    connect(&timer_, &QTimer::timeout, this, [this] { flush(); });
    timer_.start(); // for what changed before anybody listened
    becameDirty_ = forms_.becameDirty.follow([this] { timer_.start(); });
}

template <typename B, typename Control, typename Widget>
void Binder::add(Control& control, Widget& widget) {
    auto binding = std::make_unique<B>(control, widget);
    binding->refresh();
    bindings_[&control] = std::move(binding);
    controls_[&widget] = &control;
    widget.installEventFilter(this);
}

void Binder::bind(forms::Button& control, QPushButton& widget) {
    add<ButtonBinding>(control, widget);
}
void Binder::bind(forms::CheckBox& control, QCheckBox& widget) {
    add<CheckBoxBinding>(control, widget);
}
void Binder::bind(forms::ComboBox& control, QComboBox& widget) {
    add<ComboBoxBinding>(control, widget);
    if (QLineEdit* edit = widget.lineEdit()) { // it has the mouse, the box the keyboard
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
            found->second->refresh();
    flushed.raise();
}

bool Binder::eventFilter(QObject* watched, QEvent* event) {
    const auto found = controls_.find(watched);
    if (found == controls_.end())
        return false;
    forms::Control& control = *found->second;
    if (event->type() == QEvent::FocusIn) {
        control.form().setFocus(control);
    } else if (event->type() == QEvent::MouseButtonDblClick) {
        if (auto* combo = dynamic_cast<forms::ComboBox*>(&control))
            byHand([combo] { combo->doubleClick(); });
    } else if (event->type() == QEvent::DragEnter) {
        // A file is the window's affair, not a text for a field.
        if (static_cast<QDragEnterEvent*>(event)->mimeData()->hasUrls()) {
            event->ignore();
            return true;
        }
    } else if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && control.hasKeyHandler()) {
            byHand([&control] { control.key(forms::KeyCode::Enter); });
            return true;
        }
    }
    return false;
}

void Binder::byHand(const std::function<void()>& action) {
    try {
        action();
    } catch (const forms::Unreachable&) {
        flush();
    }
}

} // namespace bitlux::gui
