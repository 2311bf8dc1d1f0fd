#include "gui/widgets/elided_label.h"

#include <QEvent>
#include <QPainter>

namespace bitlux::gui {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 6, QLabel::minimumSizeHint().height()};
}

void ElidedLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QRect room = contentsRect().adjusted(indent() > 0 ? indent() : 0, 0, 0, 0);
    painter.drawText(room, Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, room.width()));
}

bool ElidedLabel::event(QEvent* event) {
    if (event->type() == QEvent::ToolTip)
        setToolTip(width() < sizeHint().width() ? "<p>" + text().toHtmlEscaped() + "</p>"
                                                : QString()); // formatted text is wrapped
    return QLabel::event(event);
}

} // namespace bitlux::gui
