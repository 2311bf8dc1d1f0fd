#include "gui/widgets/label_behaviour.h"

#include <utility>

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>

namespace bitlux::gui {

LabelBehaviour::LabelBehaviour(QLabel& label) : QObject(&label), label_(label) {
    label.installEventFilter(this);
}

LabelBehaviour* LabelBehaviour::of(const QLabel& label) {
    return label.findChild<LabelBehaviour*>(QString(), Qt::FindDirectChildrenOnly);
}

void LabelBehaviour::press() {
    if (pressable_ && label_.isEnabled() && label_.isVisible())
        emit clicked();
}

void LabelBehaviour::light(bool lit) {
    lamp_ = true;
    if (std::exchange(lit_, lit) == lit || !QAccessible::isActive())
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(&label_, changed);
    QAccessible::updateAccessibility(&event);
}

bool LabelBehaviour::eventFilter(QObject*, QEvent* event) {
    const auto isLeft = [event] {
        return static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton;
    };
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        held_ = isLeft();
        break;
    case QEvent::MouseButtonDblClick:
        held_ = isLeft();
        if (held_)
            emit doubleClicked();
        break;
    case QEvent::MouseButtonRelease: {
        const QPoint place = static_cast<QMouseEvent*>(event)->position().toPoint();
        if (isLeft() && std::exchange(held_, false) && label_.rect().contains(place))
            emit clicked();
        break;
    }
    case QEvent::KeyPress: {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() != Qt::Key_Space || !pressable_)
            break;
        if (!key.isAutoRepeat())
            press();
        return true;
    }
    default:
        break;
    }
    return false;
}

} // namespace bitlux::gui
