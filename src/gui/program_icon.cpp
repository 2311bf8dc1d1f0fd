#include "gui/program_icon.h"

#include <array>

#include <QIconEngine>
#include <QPainter>

namespace bitlux::gui {

namespace {

/// A clock above a data line, on a dark tile of 64 units.
class IconEngine : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 64.0, rect.height() / 64.0);
        painter->setPen(QPen(QColor(0x4A, 0x60, 0x80), 2)); // for dark surroundings
        painter->setBrush(QColor(0x1D, 0x2B, 0x3F));
        painter->drawRoundedRect(QRectF(3, 3, 58, 58), 12, 12);
        drawLine(*painter, QColor(0xE4, 0xE8, 0xEE),
                 std::array<QPointF, 10>{{{9, 29},
                                          {16, 29},
                                          {16, 15},
                                          {27, 15},
                                          {27, 29},
                                          {38, 29},
                                          {38, 15},
                                          {49, 15},
                                          {49, 29},
                                          {55, 29}}});
        drawLine(
            *painter, QColor(0xFF, 0xB3, 0x3C),
            std::array<QPointF, 6>{{{9, 50}, {16, 50}, {16, 38}, {38, 38}, {38, 50}, {55, 50}}});
        painter->restore();
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap picture(size);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return picture;
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
        return {{16, 16}, {32, 32}, {48, 48}};
    }

    [[nodiscard]] QIconEngine* clone() const override { return new IconEngine; }

private:
    template <std::size_t Count>
    static void drawLine(QPainter& painter, const QColor& color,
                         const std::array<QPointF, Count>& points) {
        painter.setPen(QPen(color, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(points.data(), static_cast<int>(Count));
    }
};

} // namespace

QIcon programIcon() {
    return QIcon(new IconEngine);
}

} // namespace bitlux::gui
