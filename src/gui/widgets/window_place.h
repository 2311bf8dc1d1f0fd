#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QWidget;

namespace bitlux::gui {

/// Where a window of this size, its frame included, opens next to another: inside the screen, and
/// beside the other where there is room (right, left, below, above). Where there is none it covers
/// as little of the other as can be. What is larger than the screen begins in its top left corner.
[[nodiscard]] QPoint placeBeside(QSize window, const QRect& other, const QRect& screen);

/// The largest size of a window that its screen has, the frame left out.
[[nodiscard]] QSize roomForWindow(const QWidget& window);

/// Gives a window that is not yet on the screen its place beside another, and a size that the
/// screen has.
void openBeside(QWidget& window, const QWidget& other);

} // namespace bitlux::gui
