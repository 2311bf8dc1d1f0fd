#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>

class QWidget;

namespace bitlux::gui {

/// The position of a window of this size, its frame included, next to another: inside the screen,
/// and beside the other where it fits (right, left, below, above). Where it does not fit it covers
/// as little of the other as possible. A window larger than the screen starts in its top left
/// corner.
[[nodiscard]] QPoint placeBeside(QSize window, const QRect& other, const QRect& screen);

/// The largest size of a window that fits its screen, without the frame.
[[nodiscard]] QSize availableWindowSize(const QWidget& window);

/// Places a window that is not yet on the screen beside another, with a size that fits the screen.
void openBeside(QWidget& window, const QWidget& other);

} // namespace bitlux::gui
