#include "gui/theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace bitlux::gui {

namespace {

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
    if (QApplication::style()->name() != "fusion")
        QApplication::setStyle(QStyleFactory::create("Fusion"));
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

} // namespace bitlux::gui
