#pragma once

#include <QColor>
#include <QFont>

class QWidget;

namespace bitlux::gui {

/// Sets the program's style and palette.
void applyTheme(bool dark);
[[nodiscard]] bool isDark();
/// The same with the colours of the desktop.
void applyDesktopTheme();

/// The background of bits and digits that changed with the last word.
[[nodiscard]] QColor changedColor();

/// The ink of a complaint beside the widget that it is about.
[[nodiscard]] QColor warningColor();
/// Gives a label that ink, or its own.
void showWarning(QWidget& label, bool wrong);

/// The font of words, addresses and the log.
[[nodiscard]] QFont fixedFont();
[[nodiscard]] QFont scaled(const QFont& font, qreal factor);

} // namespace bitlux::gui
