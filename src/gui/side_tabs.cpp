#include "gui/side_tabs.h"

#include <QKeyEvent>
#include <QPainter>

namespace bitlux::gui {

namespace {
constexpr int indent = 10;
constexpr int markWidth = 3;
constexpr int spacing = 8;
} // namespace

SideTabs::SideTabs(QWidget* parent) : QTabBar(parent) {
    setShape(RoundedWest);
    setDrawBase(false);
    setExpanding(false);
}

QSize SideTabs::tabSizeHint(int) const {
    int widest = 0; // all tabs are as wide as the widest
    for (int i = 0; i < count(); ++i)
        widest = std::max(widest, fontMetrics().horizontalAdvance(tabText(i)));
    return {widest + 2 * indent, fontMetrics().height() + spacing};
}

void SideTabs::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (int i = 0; i < count(); ++i) {
        const QRect tab = tabRect(i);
        if (i == currentIndex()) {
            painter.fillRect(tab, palette().color(QPalette::Base));
            painter.fillRect(QRect(tab.left(), tab.top(), markWidth, tab.height()),
                             palette().color(QPalette::Highlight));
        }
        painter.setPen(palette().color(QPalette::WindowText));
        painter.drawText(tab.adjusted(indent, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         tabText(i));
        if (i == currentIndex() && hasFocus()) {
            painter.setPen(palette().color(QPalette::Highlight));
            painter.drawRect(tab.adjusted(0, 0, -1, -1));
        }
    }
}

void SideTabs::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Up && currentIndex() > 0)
        setCurrentIndex(currentIndex() - 1);
    else if (event->key() == Qt::Key_Down && currentIndex() + 1 < count())
        setCurrentIndex(currentIndex() + 1);
    else
        QTabBar::keyPressEvent(event);
}

} // namespace bitlux::gui
