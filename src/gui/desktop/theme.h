#pragma once

#include <QColor>
#include <QFont>

class QWidget;

namespace bitlux::gui {

/// Puts the program's style and palette in force.
void applyTheme(bool dark);
[[nodiscard]] bool isDark();
/// The same with the colours of the desktop.
void applyDesktopTheme();

/// Behind bits and digits that changed with the last word.
[[nodiscard]] QColor changedColor();

/// For what is wrong, beside the widget that it is about.
[[nodiscard]] QColor warningColor();
/// Gives a label that ink, or its own again.
void showWarning(QWidget& label, bool wrong);

/// For words, addresses and the log.
[[nodiscard]] QFont fixedFont();
[[nodiscard]] QFont scaled(const QFont& font, qreal factor);

} // namespace bitlux::gui
