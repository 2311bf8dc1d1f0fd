#pragma once

class QTabBar;
class QWidget;

namespace bitlux::gui {

/// Ctrl+Tab and Ctrl+PgDn show the next page, with Shift or PgUp the previous one, while the focus
/// is in `window`.
void addPageKeys(QTabBar& tabs, QWidget& window);

/// The first widget of a page in the tab order; null when there is none.
[[nodiscard]] QWidget* firstField(QWidget& page);

/// Puts the fields of a page that was made late after `before` in the tab order.
void putInTabOrder(QWidget& before, QWidget& page);

} // namespace bitlux::gui
