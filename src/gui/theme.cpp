#include "gui/theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QStyleFactory>

namespace bitlux::gui {

namespace {

QPalette lightPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0xF3, 0xF4, 0xF6));
    palette.setColor(QPalette::WindowText, QColor(0x1C, 0x22, 0x2B));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::AlternateBase, QColor(0xEC, 0xEF, 0xF3));
    palette.setColor(QPalette::Text, QColor(0x1C, 0x22, 0x2B));
    palette.setColor(QPalette::Button, QColor(0xFC, 0xFC, 0xFD));
    palette.setColor(QPalette::ButtonText, QColor(0x1C, 0x22, 0x2B));
    palette.setColor(QPalette::Highlight, QColor(0x1F, 0x6F, 0xB5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0xFF, 0xFB, 0xE6));
    palette.setColor(QPalette::ToolTipText, QColor(0x1C, 0x22, 0x2B));
    palette.setColor(QPalette::PlaceholderText, QColor(0x6B, 0x74, 0x80));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x8A, 0x92, 0x9C));
    return palette;
}

QPalette darkPalette() {
    QPalette palette;
    palette.setColor(QPalette::Window, QColor(0x23, 0x27, 0x2E));
    palette.setColor(QPalette::WindowText, QColor(0xE4, 0xE8, 0xEE));
    palette.setColor(QPalette::Base, QColor(0x18, 0x1B, 0x20));
    palette.setColor(QPalette::AlternateBase, QColor(0x2B, 0x30, 0x38));
    palette.setColor(QPalette::Text, QColor(0xE4, 0xE8, 0xEE));
    palette.setColor(QPalette::Button, QColor(0x33, 0x39, 0x43));
    palette.setColor(QPalette::ButtonText, QColor(0xE4, 0xE8, 0xEE));
    palette.setColor(QPalette::Highlight, QColor(0x3D, 0x8F, 0xD6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::ToolTipBase, QColor(0x3A, 0x41, 0x4C));
    palette.setColor(QPalette::ToolTipText, QColor(0xE4, 0xE8, 0xEE));
    palette.setColor(QPalette::PlaceholderText, QColor(0x93, 0x9C, 0xA8));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x77, 0x80, 0x8C));
    return palette;
}

} // namespace

void applyTheme(bool dark) {
    if (QApplication::style()->name() != "fusion")
        QApplication::setStyle(QStyleFactory::create("Fusion"));
    QApplication::setPalette(dark ? darkPalette() : lightPalette());
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
