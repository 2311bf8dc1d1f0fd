#pragma once

#include "platform/forms/line_source.h"

#include <QAbstractScrollArea>

class QHelpEvent;

namespace bitlux::gui {

/// The lines of a list box. Only the visible lines are made and painted, so that a list of 20,000
/// lines that grows with every word costs no more than a short one.
class LogView : public QAbstractScrollArea {
    Q_OBJECT

public:
    explicit LogView(QWidget* parent = nullptr);

    /// Shows `count` lines of `lines`, which outlives this, with the selection at `current` (-1 for
    /// none). Scrolls to a selection that moved.
    void showLines(const forms::LineSource& lines, int count, int current);

    /// Leaves space for a mark before the lines.
    void setMarkable() { markable_ = true; }
    /// A line can be dragged to the position of another, by the mouse or by Alt with Up and Down.
    void setDraggable() { draggable_ = true; }

    /// The first line is a header.
    void setHeader() { header_ = true; }
    /// Scrolls as if there were this number of lines, so that lists of different length beside each
    /// other scroll together.
    void scrollAsIf(int lines);

    /// Marks a line, -1 for none. Scrolls to a mark that moved.
    void mark(int index);
    [[nodiscard]] int marked() const { return marked_; }

    [[nodiscard]] int count() const { return count_; }
    [[nodiscard]] int current() const { return current_; }
    [[nodiscard]] QString line(int index) const;
    /// The visible lines: the first, and their number.
    [[nodiscard]] int firstVisible() const;
    [[nodiscard]] int visibleCount() const;
    [[nodiscard]] QRect lineRect(int index) const;

    /// Selects the line at a place of the viewport, as a click does.
    void selectAt(const QPoint& place);

    /// Puts the selected line on the clipboard.
    void copyLine() const;

    /// How often the lines were painted.
    [[nodiscard]] int paints() const { return paints_; }

    [[nodiscard]] QSize sizeHint() const override;

signals:
    /// The user chose a line.
    void selected(int index);
    /// A line was double-clicked; it was selected before.
    void doubleClicked();
    /// A line was dragged to the position of another.
    void dragged(int from, int to);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    /// Shows a line that does not fit in a tooltip.
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] int lineHeight() const;
    [[nodiscard]] int leftOfText() const;                 ///< pixels
    [[nodiscard]] int indexAt(const QPoint& place) const; ///< -1 beside the lines
    void showWhole(const QHelpEvent& event) const;
    void paintTarget(QPainter& painter) const;
    [[nodiscard]] int dropTarget(const QMouseEvent& event) const;
    void endDrag();
    void paintRows(QPainter& painter) const;
    void paintArrow(QPainter& painter, const QRect& row) const;
    [[nodiscard]] int scrolledLines() const { return scrolled_ < 0 ? count_ : scrolled_; }
    [[nodiscard]] int wholeLinesInSight() const;
    void updateScrollBar();
    /// Adapts the scroll range to the widest of the visible lines.
    void measure();
    void bringIntoSight(int index);
    void tellSelection();

    const forms::LineSource* lines_ = nullptr;
    int count_ = 0;
    int current_ = -1;
    int marked_ = -1;
    /// Widest line that was visible since lines were removed, in pixels. It only grows: a scroll
    /// bar below the lines can hide the line that needs it, and would appear and disappear again
    /// and again.
    int widest_ = 0;
    int paints_ = 0;
    bool markable_ = false;
    bool draggable_ = false;
    bool header_ = false;
    int scrolled_ = -1; ///< number of lines to scroll over, -1 for the existing ones
    int pressed_ = -1;  ///< line under the pointer when the button went down
    int target_ = -1;   ///< line under the pointer while another is dragged
    QPoint pressedAt_;
};

} // namespace bitlux::gui
