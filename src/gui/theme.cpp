#include "gui/theme.h"

#include <algorithm>

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

namespace bitlux::gui {

namespace {

/// The arrow of a menu bar that is too narrow for its menus.
class MoreEngine : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->setPen(QApplication::palette().color(QPalette::ButtonText));
        painter->drawText(rect, Qt::AlignCenter, QString(QChar(0xBB)));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new MoreEngine; }
};

/// The toolkit's style, with some things drawn plainly that it takes from pictures or paints at
/// length: frames, tabs, and the arrow of a menu bar, which is hardly ever seen. Drawn they are
/// crisp at any scale, and the readers of image formats need not be loaded for them.
class Style : public QProxyStyle {
public:
    Style() : QProxyStyle("Fusion") {}

    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const override {
        if (icon == SP_ToolBarHorizontalExtensionButton)
            return QIcon(new MoreEngine);
        return QProxyStyle::standardIcon(icon, option, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameGroupBox)
            drawGroupFrame(*option, *painter, widget);
        else if (element == PE_Frame)
            drawFrame(*option, *painter);
        else
            QProxyStyle::drawPrimitive(element, option, painter, widget);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        if (element == CE_TabBarTabShape)
            drawTab(*option, *painter);
        else
            QProxyStyle::drawControl(element, option, painter, widget);
    }

private:
    static QColor lineColor(const QStyleOption& option) {
        QColor line = option.palette.color(QPalette::WindowText);
        line.setAlphaF(0.2F);
        return line;
    }

    static void drawFrame(const QStyleOption& option, QPainter& painter) {
        painter.save();
        painter.setBrush(Qt::NoBrush);
        painter.setPen(lineColor(option));
        painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
        painter.restore();
    }

    /// The selected tab has a line below it, the one under the pointer a tint.
    static void drawTab(const QStyleOption& option, QPainter& painter) {
        constexpr int thickness = 2;
        QColor tint = lineColor(option);
        tint.setAlphaF(0.08F);
        if ((option.state & State_MouseOver) != 0)
            painter.fillRect(option.rect, tint);
        if ((option.state & State_Selected) != 0)
            painter.fillRect(option.rect.adjusted(4, option.rect.height() - thickness, -4, 0),
                             option.palette.color(QPalette::Highlight));
    }

    void drawGroupFrame(const QStyleOption& option, QPainter& painter,
                        const QWidget* widget) const {
        constexpr qreal radius = 3;
        constexpr int belowTitle = 3; // the rectangle includes the title of the group
        const int title = std::max(pixelMetric(PM_ExclusiveIndicatorHeight, &option, widget),
                                   option.fontMetrics.height()) +
                          belowTitle;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(lineColor(option));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, title + 0.5, -0.5, -0.5), radius,
                                radius);
        painter.restore();
    }
};

struct Colors {
    QRgb window, text, base, alternate, button, highlight, tooltip, placeholder, disabled;
};

constexpr Colors light{.window = 0xFFF3F4F6,
                       .text = 0xFF1C222B,
                       .base = 0xFFFFFFFF,
                       .alternate = 0xFFECEFF3,
                       .button = 0xFFFCFCFD,
                       .highlight = 0xFF1F6FB5,
                       .tooltip = 0xFFFFFBE6,
                       .placeholder = 0xFF6B7480,
                       .disabled = 0xFF8A929C};

constexpr Colors dark{.window = 0xFF23272E,
                      .text = 0xFFE4E8EE,
                      .base = 0xFF181B20,
                      .alternate = 0xFF2B3038,
                      .button = 0xFF333943,
                      .highlight = 0xFF3D8FD6,
                      .tooltip = 0xFF3A414C,
                      .placeholder = 0xFF939CA8,
                      .disabled = 0xFF77808C};

QPalette paletteOf(const Colors& colors) {
    QPalette palette;
    palette.setColor(QPalette::Window, colors.window);
    palette.setColor(QPalette::Base, colors.base);
    palette.setColor(QPalette::AlternateBase, colors.alternate);
    palette.setColor(QPalette::Button, colors.button);
    palette.setColor(QPalette::Highlight, colors.highlight);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, colors.tooltip);
    palette.setColor(QPalette::ToolTipText, colors.text);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, colors.text);
        palette.setColor(QPalette::Disabled, role, colors.disabled);
    }
    palette.setColor(QPalette::PlaceholderText, colors.placeholder);
    return palette;
}

} // namespace

void applyTheme(bool useDark) {
    if (dynamic_cast<Style*>(QApplication::style()) == nullptr)
        QApplication::setStyle(new Style);
    QApplication::setPalette(paletteOf(useDark ? dark : light));
}

bool isDark() {
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

QColor changedColor() {
    return isDark() ? QColor(0x7A, 0x5A, 0x12) : QColor(0xFF, 0xD9, 0x7A);
}

QFont fixedFont() {
    QFont font = QApplication::font();
    font.setFamilies({"DejaVu Sans Mono", "monospace"});
    font.setStyleHint(QFont::Monospace);
    return font;
}

QFont scaled(const QFont& font, qreal factor) {
    QFont result = font;
    result.setPointSizeF(font.pointSizeF() * factor);
    return result;
}

} // namespace bitlux::gui
