#include "gui/window/run_row.h"

#include <QGridLayout>
#include <QPointer>
#include <QShortcut>
#include <QVBoxLayout>

namespace bitlux::gui {

RunRow::RunRow(RunControls& run, Binder& binder, QWidget* parent) : QWidget(parent) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    // The two buttons of a pair share a place, so that nothing moves when one replaces the other.
    const std::array<forms::Button*, 5> controls{&run.cmdSendOnce, &run.cmdCancelSingle,
                                                 &run.cmdSendContinuous, &run.cmdStopContinuous,
                                                 &run.cmdAbort};
    for (std::size_t i = 0; i < controls.size(); ++i) {
        auto* button = binder.make<QPushButton>(*controls[i], this);
        button->setMinimumWidth(button->fontMetrics().horizontalAdvance("Send Continuously") + 36);
        button->setMinimumHeight(button->fontMetrics().height() + 14);
        grid->addWidget(button, 0, static_cast<int>(i / 2));
        buttons_[i] = button;
    }
    grid->setColumnStretch(3, 1);
    // For every window of the program; a shortcut of the button itself would change with its text.
    new QShortcut(
        Qt::SHIFT | Qt::Key_Escape, this, [abort = buttons_.back()] { abort->click(); },
        Qt::ApplicationShortcut);
}

void RunRow::moveTo(const Place& place) {
    if (parentWidget() == place.room)
        return;
    const QPointer<QWidget> focused = window()->focusWidget(); // which moving takes away
    if (place.room->layout() == nullptr)
        (new QVBoxLayout(place.room))->setContentsMargins(0, 0, 0, 0);
    place.room->layout()->addWidget(this);
    show();
    QWidget* before = place.before;
    for (QWidget* button : buttons_) {
        QWidget::setTabOrder(before, button);
        before = button;
    }
    if (focused != nullptr && isAncestorOf(focused))
        focused->setFocus();
}

} // namespace bitlux::gui
