#include "gui/widgets/digits_label.h"

#include "gui/desktop/theme.h"

#include <algorithm>

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>
#include <QPainter>

namespace bitlux::gui {

namespace {
constexpr int inset = 3;
}

DigitsLabel::DigitsLabel(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setFocusPolicy(Qt::NoFocus);
}

void DigitsLabel::markChanges() {
    const QString now = text();
    QString marks(now.size(), ' ');
    for (qsizetype n = 1; n <= std::min(now.size(), before_.size()); ++n)
        if (now[now.size() - n] != before_[before_.size() - n])
            marks[now.size() - n] = '*';
    before_ = now;
    if (marks != marks_) {
        marks_ = marks;
        update();
    }
}

QSize DigitsLabel::sizeHint() const {
    const QFontMetrics metrics(font());
    return {metrics.horizontalAdvance(text()) + 2 * inset, metrics.height() + 2 * inset};
}

QSize DigitsLabel::minimumSizeHint() const {
    return sizeHint();
}

void DigitsLabel::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    connect(menu.addAction("&Copy"), &QAction::triggered, this,
            [this] { QGuiApplication::clipboard()->setText(text()); });
    menu.exec(event->globalPos());
}

void DigitsLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QFontMetrics metrics(font());
    const int width = metrics.horizontalAdvance('0');
    const int total = width * static_cast<int>(text().size());
    const bool centered = (alignment() & Qt::AlignHCenter) != 0;
    int x = centered ? (this->width() - total) / 2 : inset;
    const QRect line = rect().adjusted(0, inset - 1, 0, 1 - inset);
    for (qsizetype i = 0; i < text().size(); ++i, x += width) {
        const QRect cell(x, line.top(), width, line.height());
        if (i < marks_.size() && marks_[i] == '*')
            painter.fillRect(cell.adjusted(centered ? -inset : 0, 0, centered ? inset : 0, 0),
                             changedColor());
        painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                       QPalette::WindowText));
        painter.drawText(cell, Qt::AlignCenter, text().mid(i, 1));
    }
}

} // namespace bitlux::gui
