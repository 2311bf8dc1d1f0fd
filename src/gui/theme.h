#pragma once

#include <QColor>
#include <QFont>

namespace bitlux::gui {

/// Puts the program's style and palette in force.
void applyTheme(bool dark);
[[nodiscard]] bool isDark();
/// The same with the colours of the desktop.
void applyDesktopTheme();

/// Behind bits and digits that changed with the last word.
[[nodiscard]] QColor changedColor();

/// For words, addresses and the log.
[[nodiscard]] QFont fixedFont();
[[nodiscard]] QFont scaled(const QFont& font, qreal factor);

} // namespace bitlux::gui
