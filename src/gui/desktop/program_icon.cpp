#include "gui/desktop/program_icon.h"

#include <array>

#include <QIconEngine>
#include <QLinearGradient>
#include <QPainter>

namespace bitlux::gui {

namespace {

/// The picture of packaging/icons/io.bitlux.Forge.svg, of 64 units: a chip, and on it an edge of
/// the clock.
class IconEngine : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / 64.0, rect.height() / 64.0);
        for (const double y : {12, 24, 36, 48})
            painter->fillRect(QRectF(4, y, 56, 4), QColor(0x8B, 0x97, 0xA5));
        drawBody(*painter);
        constexpr std::array<QPointF, 5> clock{{{22, 22}, {34, 22}, {34, 42}, {46, 42}, {46, 22}}};
        drawLine(*painter, Qt::white, std::array<QPointF, 2>{{{18, 42}, {22, 42}}});
        drawLine(*painter, Qt::white, clock);
        drawLine(*painter, QColor(0xFF, 0xC8, 0x3D), std::array<QPointF, 2>{{{22, 42}, {22, 22}}});
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
    static void drawBody(QPainter& painter) {
        QLinearGradient body(0, 4, 0, 60);
        body.setColorAt(0, QColor(0x2F, 0x86, 0xCF));
        body.setColorAt(1, QColor(0x15, 0x54, 0x89));
        painter.setPen(Qt::NoPen);
        painter.setBrush(body);
        painter.drawRoundedRect(QRectF(12, 4, 40, 56), 5, 5);
        painter.setPen(QPen(QColor(255, 255, 255, 77), 1.5));
        painter.setBrush(Qt::NoBrush);
        painter.drawRoundedRect(QRectF(12.75, 4.75, 38.5, 54.5), 4.25, 4.25);
    }

    template <std::size_t Count>
    static void drawLine(QPainter& painter, const QColor& color,
                         const std::array<QPointF, Count>& points) {
        painter.setPen(QPen(color, 4, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(Qt::NoBrush);
        painter.drawPolyline(points.data(), static_cast<int>(Count));
    }
};

} // namespace

QIcon programIcon() {
    return QIcon(new IconEngine);
}

} // namespace bitlux::gui
