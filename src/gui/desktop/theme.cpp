#include "gui/desktop/theme.h"

#include <algorithm>
#include <array>

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleOption>

namespace bitlux::gui {

namespace {

/// The arrow of a menu bar that is too narrow for its menus.
class MenuArrowEngine : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        painter->setPen(QApplication::palette().color(QPalette::ButtonText));
        painter->drawText(rect, Qt::AlignCenter, QString(QChar(0xBB)));
    }
    [[nodiscard]] QIconEngine* clone() const override { return new MenuArrowEngine; }
};

/// The toolkit's style, with some elements drawn more simply: frames, tabs, buttons, fields, and
/// the arrow of a menu bar. The toolkit paints them from pictures or slowly. Drawn, they are crisp
/// at any scale, and no readers of image formats are loaded for them.
class Style : public QProxyStyle {
public:
    Style() : QProxyStyle("Fusion") {}

    [[nodiscard]] QIcon standardIcon(StandardPixmap icon, const QStyleOption* option,
                                     const QWidget* widget) const override {
        if (icon == SP_ToolBarHorizontalExtensionButton)
            return QIcon(new MenuArrowEngine);
        return QProxyStyle::standardIcon(icon, option, widget);
    }

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        if (element == PE_FrameGroupBox)
            drawOutline(groupFrame(*option, widget), *painter, lineColor(*option));
        else if (element == PE_Frame)
            drawOutline(option->rect, *painter, lineColor(*option));
        else if (element == PE_FrameTabBarBase)
            painter->fillRect(option->rect.adjusted(0, option->rect.height() - 1, 0, 0),
                              lineColor(*option));
        else if (element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton)
            drawIndicator(element, *option, *painter, widget);
        else if (element == PE_PanelButtonCommand)
            drawButton(*option, *painter);
        else if (element == PE_PanelLineEdit)
            drawField(*option, *painter);
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

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                            QPainter* painter, const QWidget* widget) const override {
        if (control == CC_ComboBox)
            drawComboBox(*option, *painter, widget);
        else
            QProxyStyle::drawComplexControl(control, option, painter, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        if (hint == SH_Widget_Animation_Duration)
            return 0; // no animations
        return QProxyStyle::styleHint(hint, option, widget, result);
    }

private:
    /// A fifth of the text's colour on the window's; opaque, since this is filled faster.
    static QColor lineColor(const QStyleOption& option) {
        const QColor text = option.palette.color(QPalette::WindowText);
        const QColor window = option.palette.color(QPalette::Window);
        const auto mixed = [](int one, int other) { return (one + 4 * other) / 5; };
        return {mixed(text.red(), window.red()), mixed(text.green(), window.green()),
                mixed(text.blue(), window.blue())};
    }

    /// Four filled rectangles: stroking a tall outline would start threads.
    static void drawOutline(const QRect& rect, QPainter& painter, const QColor& color) {
        const int right = rect.width() - 1;
        const int bottom = rect.height() - 1;
        for (const QRect& side : {rect.adjusted(0, 0, 0, -bottom), rect.adjusted(0, bottom, 0, 0),
                                  rect.adjusted(0, 0, -right, 0), rect.adjusted(right, 0, 0, 0)})
            painter.fillRect(side, color);
    }

    /// A surface with a thin border, which shows the focus.
    static void drawPanel(const QStyleOption& option, QPainter& painter, const QColor& surface,
                          bool marked) {
        constexpr qreal radius = 2.5;
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setBrush(surface);
        painter.setPen(marked ? option.palette.color(QPalette::Highlight) : lineColor(option));
        painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
        painter.restore();
    }

    static void drawButton(const QStyleOption& option, QPainter& painter) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
        const bool isDefault =
            button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0;
        QColor surface = option.palette.color(QPalette::Button);
        if ((option.state & (State_Sunken | State_On)) != 0)
            surface = option.palette.color(QPalette::AlternateBase);
        else if ((option.state & (State_MouseOver)) != 0 && (option.state & State_Enabled) != 0)
            surface = surface.lighter(isDark() ? 115 : 102);
        drawPanel(option, painter, surface, isDefault || isFocused(option));
    }

    static void drawField(const QStyleOption& option, QPainter& painter) {
        const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
        const QColor surface = option.palette.color(QPalette::Base);
        if (frame != nullptr && frame->lineWidth == 0) // within something that has a frame
            painter.fillRect(option.rect, surface);
        else
            drawPanel(option, painter, surface, (option.state & State_HasFocus) != 0);
    }

    void drawComboBox(const QStyleOptionComplex& option, QPainter& painter,
                      const QWidget* widget) const {
        const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(&option);
        const bool editable = combo != nullptr && combo->editable;
        drawPanel(option, painter,
                  option.palette.color(editable ? QPalette::Base : QPalette::Button),
                  (option.state & State_HasFocus) != 0);
        const QPointF center =
            QRectF(subControlRect(CC_ComboBox, &option, SC_ComboBoxArrow, widget)).center();
        const std::array<QPointF, 3> arrow{center + QPointF(-4, -2), center + QPointF(4, -2),
                                           center + QPointF(0, 2)};
        QColor ink = option.palette.color(QPalette::ButtonText);
        ink.setAlphaF(0.7F);
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(Qt::NoPen);
        painter.setBrush(ink);
        painter.drawConvexPolygon(arrow.data(), static_cast<int>(arrow.size()));
        painter.restore();
    }

    /// The toolkit's border is invisible on a dark window.
    void drawIndicator(PrimitiveElement element, const QStyleOption& option, QPainter& painter,
                       const QWidget* widget) const {
        QProxyStyle::drawPrimitive(element, &option, &painter, widget);
        if (element == PE_IndicatorCheckBox) {
            drawOutline(option.rect, painter, lineColor(option));
            return;
        }
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(lineColor(option));
        painter.setBrush(Qt::NoBrush);
        painter.drawEllipse(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5));
        painter.restore();
    }

    static bool isFocused(const QStyleOption& option) {
        return (option.state & State_HasFocus) != 0 &&
               (option.state & State_KeyboardFocusChange) != 0;
    }

    /// The selected tab has a line below it, the one under the pointer a tint.
    static void drawTab(const QStyleOption& option, QPainter& painter) {
        constexpr int thickness = 2;
        QColor tint = option.palette.color(QPalette::WindowText);
        tint.setAlphaF(0.08F);
        if ((option.state & State_MouseOver) != 0)
            painter.fillRect(option.rect, tint);
        if ((option.state & State_Selected) != 0)
            painter.fillRect(option.rect.adjusted(4, option.rect.height() - thickness, -4, 0),
                             option.palette.color(QPalette::Highlight));
    }

    /// The rectangle of a group without its title.
    [[nodiscard]] QRect groupFrame(const QStyleOption& option, const QWidget* widget) const {
        constexpr int belowTitle = 3;
        const int title = std::max(pixelMetric(PM_ExclusiveIndicatorHeight, &option, widget),
                                   option.fontMetrics.height());
        return option.rect.adjusted(0, title + belowTitle, 0, 0);
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

void applyDesktopTheme() {
    QApplication::setPalette(QPalette()); // none of our own: the desktop's
    applyTheme(isDark());
}

bool isDark() {
    return QApplication::palette().color(QPalette::Window).lightness() < 128;
}

QColor changedColor() {
    return isDark() ? QColor(0x7A, 0x5A, 0x12) : QColor(0xFF, 0xD9, 0x7A);
}

QColor warningColor() {
    return isDark() ? QColor(0xFF, 0x8A, 0x80) : QColor(0xB7, 0x1C, 0x1C);
}

void showWarning(QWidget& label, bool wrong) {
    const QColor ink = wrong ? warningColor() : QApplication::palette().color(QPalette::WindowText);
    if (label.palette().color(QPalette::WindowText) == ink)
        return;
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::WindowText, ink);
    label.setPalette(palette);
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
