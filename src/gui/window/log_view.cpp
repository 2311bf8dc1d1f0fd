#include "gui/window/log_view.h"

#include "gui/desktop/theme.h"

#include <algorithm>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QToolTip>

namespace bitlux::gui {

namespace {
constexpr int margin = 6;
}

LogView::LogView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFont(fixedFont());
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    viewport()->setBackgroundRole(QPalette::Base);
}

void LogView::showLines(const forms::LineSource& lines, int count, int current) {
    const bool moved = current != current_;
    if (&lines != lines_ || count < count_)
        widest_ = 0;
    lines_ = &lines;
    count_ = count;
    current_ = current;
    updateScrollBar();
    if (moved && current_ >= 0)
        bringIntoSight(current_);
    measure();
    viewport()->update();
    if (moved)
        tellSelection();
}

/// Assistive tools follow the selection, and with it the line that has the focus.
void LogView::tellSelection() {
    if (!QAccessible::isActive() || current_ < 0)
        return;
    for (const QAccessible::Event what : {QAccessible::Selection, QAccessible::Focus}) {
        QAccessibleEvent event(this, what);
        event.setChild(current_ - firstVisible());
        if (what == QAccessible::Selection || hasFocus())
            QAccessible::updateAccessibility(&event);
    }
}

void LogView::mark(int index) {
    if (marked_ == index)
        return;
    marked_ = index;
    if (marked_ >= 0 && marked_ < count_) {
        bringIntoSight(std::min(marked_ + 1, scrolledLines() - 1)); // the next line too
        bringIntoSight(marked_);
    }
    viewport()->update();
}

void LogView::scrollAsIf(int lines) {
    if (scrolled_ == lines)
        return;
    scrolled_ = lines;
    updateScrollBar();
}

QString LogView::line(int index) const {
    // Lines may have been removed since the last refresh, and a paint may precede the next one.
    const auto place = static_cast<std::size_t>(index);
    return place < lines_->size() ? QString::fromStdString(lines_->line(place)) : QString();
}

int LogView::firstVisible() const {
    return std::min(verticalScrollBar()->value(), count_);
}

int LogView::visibleCount() const {
    if (count_ == 0)
        return 0;
    return std::min(count_ - firstVisible(), wholeLinesInSight() + 1);
}

QRect LogView::lineRect(int index) const {
    return {0, (index - firstVisible()) * lineHeight(), viewport()->width(), lineHeight()};
}

QSize LogView::sizeHint() const {
    // In the window's font: the font of the lines is not loaded before there are lines.
    constexpr int columns = 48;
    constexpr int rows = 12;
    const QFontMetrics metrics(QApplication::font());
    return {columns * metrics.averageCharWidth(), rows * metrics.height()};
}

int LogView::lineHeight() const {
    return fontMetrics().height() + 1;
}

int LogView::leftOfText() const {
    return margin + (markable_ ? lineHeight() / 2 + margin : 0);
}

int LogView::indexAt(const QPoint& place) const {
    const int index = firstVisible() + place.y() / lineHeight();
    return index < count_ ? index : -1;
}

void LogView::selectAt(const QPoint& place) {
    const int index = indexAt(place);
    if (index < 0)
        return;
    current_ = index; // for those who cannot wait for the refresh
    viewport()->update();
    tellSelection();
    emit selected(index);
}

int LogView::wholeLinesInSight() const {
    return std::max(1, viewport()->height() / lineHeight());
}

void LogView::updateScrollBar() {
    if (scrolledLines() == 0) {
        verticalScrollBar()->setRange(0, 0);
        return;
    }
    verticalScrollBar()->setPageStep(wholeLinesInSight());
    verticalScrollBar()->setRange(0, std::max(0, scrolledLines() - wholeLinesInSight()));
}

void LogView::measure() {
    if (!isVisible())
        return; // the first list with lines loads their font
    for (int i = 0; i < visibleCount(); ++i)
        widest_ = std::max(widest_, fontMetrics().horizontalAdvance(line(firstVisible() + i)));
    const int width = viewport()->width();
    horizontalScrollBar()->setPageStep(width);
    horizontalScrollBar()->setRange(
        0, widest_ == 0 ? 0 : std::max(0, leftOfText() + widest_ + margin - width));
}

void LogView::bringIntoSight(int index) {
    QScrollBar* bar = verticalScrollBar();
    if (index < bar->value())
        bar->setValue(index);
    else if (index >= bar->value() + wholeLinesInSight())
        bar->setValue(index - wholeLinesInSight() + 1);
}

void LogView::paintArrow(QPainter& painter, const QRect& row) const {
    const int half = lineHeight() / 4;
    const QPoint tip(margin + 2 * half, row.center().y());
    painter.setPen(Qt::NoPen);
    painter.setBrush(palette().color(QPalette::Text));
    painter.drawPolygon(
        QPolygon({tip, tip + QPoint(-2 * half, -half), tip + QPoint(-2 * half, half)}));
}

/// What is highlighted behind the lines. The marked row may have no line yet.
void LogView::paintRows(QPainter& painter) const {
    if (header_)
        painter.fillRect(lineRect(0), palette().color(QPalette::AlternateBase));
    if (current_ >= 0)
        painter.fillRect(lineRect(current_), palette().color(hasFocus() ? QPalette::Highlight
                                                                        : QPalette::AlternateBase));
    if (marked_ < 0)
        return;
    painter.fillRect(lineRect(marked_), changedColor());
    if (markable_)
        paintArrow(painter, lineRect(marked_));
}

void LogView::paintTarget(QPainter& painter) const {
    constexpr int thickness = 2;
    const QRect row = lineRect(target_);
    const int y = target_ > pressed_ ? row.bottom() - thickness + 1 : row.top();
    painter.fillRect(QRect(0, y, row.width(), thickness), palette().color(QPalette::Highlight));
}

void LogView::paintEvent(QPaintEvent*) {
    ++paints_;
    QPainter painter(viewport());
    const int left = leftOfText() - horizontalScrollBar()->value();
    paintRows(painter);
    for (int i = 0; i < visibleCount(); ++i) {
        const int index = firstVisible() + i;
        const QRect row = lineRect(index);
        painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                       index == current_ && index != marked_ && hasFocus()
                                           ? QPalette::HighlightedText
                                           : QPalette::Text));
        painter.drawText(row.adjusted(left, 0, 0, 0), Qt::AlignVCenter | Qt::TextDontClip,
                         line(index));
    }
    if (target_ >= 0)
        paintTarget(painter);
}

void LogView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const bool atEnd = verticalScrollBar()->value() == verticalScrollBar()->maximum();
    updateScrollBar();
    if (atEnd)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    measure();
}

void LogView::showEvent(QShowEvent* event) {
    QAbstractScrollArea::showEvent(event);
    measure();
}

void LogView::scrollContentsBy(int dx, int dy) {
    QAbstractScrollArea::scrollContentsBy(dx, dy);
    if (dy != 0)
        measure();
}

void LogView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void LogView::focusOutEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusOutEvent(event);
    viewport()->update();
}

bool LogView::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip)
        return QAbstractScrollArea::viewportEvent(event);
    showWhole(*static_cast<QHelpEvent*>(event));
    return true;
}

void LogView::showWhole(const QHelpEvent& event) const {
    const int index = indexAt(event.pos());
    const QString text = index < 0 ? QString() : line(index);
    const int end = leftOfText() + fontMetrics().horizontalAdvance(text);
    const bool isWhole = horizontalScrollBar()->value() == 0 && end <= viewport()->width();
    QToolTip::showText(event.globalPos(),
                       isWhole ? toolTip() : "<span>" + text.toHtmlEscaped() + "</span>",
                       viewport());
}

void LogView::copyLine() const {
    if (current_ >= 0)
        QApplication::clipboard()->setText(line(current_));
}

void LogView::keyPressEvent(QKeyEvent* event) {
    int target = 0;
    if (event->matches(QKeySequence::Copy)) {
        copyLine();
        return;
    }
    const bool moves = draggable_ && event->modifiers() == Qt::AltModifier && current_ >= 0;
    if (moves && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        target = std::clamp(current_ + (event->key() == Qt::Key_Up ? -1 : 1), 0, count_ - 1);
        if (target != current_)
            emit dragged(current_, target);
        return;
    }
    switch (event->key()) {
    case Qt::Key_Up:
        target = current_ - 1;
        break;
    case Qt::Key_Down:
        target = current_ + 1;
        break;
    case Qt::Key_PageUp:
        target = current_ - wholeLinesInSight();
        break;
    case Qt::Key_PageDown:
        target = current_ + wholeLinesInSight();
        break;
    case Qt::Key_Home:
        target = 0;
        break;
    case Qt::Key_End:
        target = count_ - 1;
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
        return;
    }
    if (count_ > 0)
        emit selected(std::clamp(target, 0, count_ - 1));
}

void LogView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    const int index = indexAt(event->position().toPoint());
    if (draggable_) {
        pressed_ = index;
        pressedAt_ = event->position().toPoint();
    }
    if (index >= 0)
        emit selected(index);
}

void LogView::mouseMoveEvent(QMouseEvent* event) {
    const QPoint way = event->position().toPoint() - pressedAt_;
    const bool drags = pressed_ >= 0 && (event->buttons() & Qt::LeftButton) != 0 &&
                       (target_ >= 0 || way.manhattanLength() >= QApplication::startDragDistance());
    if (!drags)
        return;
    target_ = dropTarget(*event);
    bringIntoSight(target_);
    viewport()->setCursor(Qt::ClosedHandCursor);
    viewport()->update();
}

void LogView::mouseReleaseEvent(QMouseEvent*) {
    const int from = pressed_;
    const int to = target_;
    endDrag();
    if (from >= 0 && to >= 0 && from != to)
        emit dragged(from, to);
}

int LogView::dropTarget(const QMouseEvent& event) const {
    const int line = firstVisible() + event.position().toPoint().y() / lineHeight();
    return std::clamp(line, 0, std::max(0, count_ - 1));
}

void LogView::endDrag() {
    pressed_ = -1;
    target_ = -1;
    viewport()->unsetCursor();
    viewport()->update();
}

void LogView::mouseDoubleClickEvent(QMouseEvent* event) {
    mousePressEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()) >= 0)
        emit doubleClicked();
}

void LogView::changeEvent(QEvent* event) {
    QAbstractScrollArea::changeEvent(event);
    if (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)
        return;
    widest_ = 0;
    updateScrollBar();
    measure();
}

} // namespace bitlux::gui
