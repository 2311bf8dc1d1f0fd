#include "gui/panels/side_tabs.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>

namespace bitlux::gui {

namespace {
constexpr int indent = 10;
constexpr int tabMarkWidth = 3;
constexpr int tabSpacing = 8;
constexpr int manyTabs = 18;
constexpr int closeSpacing = 3; ///< when there are many, so that all are visible on a small screen
} // namespace

SideTabs::SideTabs(QWidget* parent) : QTabBar(parent) {
    setShape(RoundedWest);
    setDrawBase(false);
    setExpanding(false);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum); // many tabs scroll
}

QSize SideTabs::tabSizeHint(int) const {
    // All tabs are as wide as the widest, and the toolkit asks for every width whenever one is
    // added.
    if (count() < measured_)
        measured_ = widest_ = 0;
    for (; measured_ < count(); ++measured_)
        widest_ = std::max(widest_, fontMetrics().horizontalAdvance(tabText(measured_)));
    return {widest_ + 2 * indent,
            fontMetrics().height() + (count() > manyTabs ? closeSpacing : tabSpacing)};
}

void SideTabs::changeEvent(QEvent* event) {
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        measured_ = widest_ = 0;
    QTabBar::changeEvent(event);
}

void SideTabs::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    for (int i = 0; i < count(); ++i) {
        const QRect tab = tabRect(i);
        if (i == currentIndex()) {
            painter.fillRect(tab, palette().color(QPalette::Base));
            painter.fillRect(QRect(tab.left(), tab.top(), tabMarkWidth, tab.height()),
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
