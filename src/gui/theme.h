#pragma once

#include <QColor>
#include <QFont>

namespace bitlux::gui {

/// Puts the program's style and palette in force.
void applyTheme(bool dark);
[[nodiscard]] bool isDark();

/// Behind bits and digits that changed with the last word.
[[nodiscard]] QColor changedColor();

/// For words, addresses and the log.
[[nodiscard]] QFont fixedFont();
[[nodiscard]] QFont scaled(const QFont& font, qreal factor);

} // namespace bitlux::gui
