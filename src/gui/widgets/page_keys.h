#pragma once

class QTabBar;
class QWidget;

namespace bitlux::gui {

/// Ctrl+Tab and Ctrl+PgDn turn to the next page, with Shift or PgUp to the one before, while the
/// focus is in `window`.
void addPageKeys(QTabBar& tabs, QWidget& window);

/// The first widget in a page that the tabulator key reaches; null when there is none.
[[nodiscard]] QWidget* firstField(QWidget& page);

/// The fields of a page that was made late follow `before` in the order of the tabulator key.
void putInTabOrder(QWidget& before, QWidget& page);

} // namespace bitlux::gui
