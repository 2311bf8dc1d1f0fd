#pragma once

#include <QPainter>

namespace bitlux::gui {

/// Draws lines that fill whole device pixels at any scale factor, at any position of the widget.
/// Positions are those of the painter; a line is right of or below its position.
class CrispInk {
public:
    explicit CrispInk(QPainter& painter)
        : painter_(painter), toDevice_(painter.deviceTransform()), back_(toDevice_.inverted()) {}

    [[nodiscard]] qreal x(qreal x) const;
    [[nodiscard]] qreal y(qreal y) const;
    /// The nearest whole number of device pixels, at least one.
    [[nodiscard]] qreal length(qreal length) const;

    /// These take positions from x() and y(), and widths from length().
    void horizontal(qreal x1, qreal x2, qreal y, qreal width, const QColor& color);
    void vertical(qreal x, qreal y1, qreal y2, qreal width, const QColor& color);
    void dashed(qreal x, qreal y1, qreal y2, qreal width, const QColor& color);

private:
    QPainter& painter_;
    QTransform toDevice_; ///< scales and moves
    QTransform back_;
};

} // namespace bitlux::gui
