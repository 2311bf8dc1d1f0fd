#include "gui/desktop/crisp_ink.h"

#include <algorithm>
#include <cmath>

namespace bitlux::gui {

qreal CrispInk::x(qreal x) const {
    return back_.map(QPointF(std::round(toDevice_.map(QPointF(x, 0)).x()), 0)).x();
}

qreal CrispInk::y(qreal y) const {
    return back_.map(QPointF(0, std::round(toDevice_.map(QPointF(0, y)).y()))).y();
}

qreal CrispInk::length(qreal length) const {
    const qreal scale = toDevice_.m11();
    return std::max(1.0, std::round(length * scale)) / scale;
}

void CrispInk::horizontal(qreal x1, qreal x2, qreal y, qreal width, const QColor& color) {
    painter_.fillRect(QRectF(x1, y, x2 - x1, width), color);
}

void CrispInk::vertical(qreal x, qreal y1, qreal y2, qreal width, const QColor& color) {
    painter_.fillRect(QRectF(x, y1, width, y2 - y1), color);
}

void CrispInk::dashed(qreal x, qreal y1, qreal y2, qreal width, const QColor& color) {
    const qreal dash = length(3);
    const int dashes = static_cast<int>(std::ceil((y2 - y1) / (2 * dash)));
    for (int i = 0; i < dashes; ++i) {
        const qreal from = y1 + 2 * i * dash;
        vertical(x, from, std::min(from + dash, y2), width, color);
    }
}

} // namespace bitlux::gui
