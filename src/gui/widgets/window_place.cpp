#include "gui/widgets/window_place.h"

#include <algorithm>
#include <array>

#include <QScreen>
#include <QWidget>

namespace bitlux::gui {

namespace {

constexpr int usualTitle = 30; ///< pixels of a title bar while its height is unknown

int covered(const QRect& one, const QRect& other) {
    const QRect common = one.intersected(other);
    return common.isEmpty() ? 0 : common.width() * common.height();
}

QSize frameOf(const QWidget& window) {
    const QSize frame = window.frameGeometry().size() - window.size();
    return frame.height() > 0 ? frame : QSize(0, usualTitle);
}

} // namespace

QPoint placeBeside(QSize window, const QRect& other, const QRect& screen) {
    const auto inside = [&](QPoint at) {
        const QPoint last(screen.right() + 1 - window.width(),
                          screen.bottom() + 1 - window.height());
        return QPoint(std::max(screen.left(), std::min(at.x(), last.x())),
                      std::max(screen.top(), std::min(at.y(), last.y())));
    };
    const std::array<QPoint, 4> places{inside({other.right() + 1, other.top()}),
                                       inside({other.left() - window.width(), other.top()}),
                                       inside({other.left(), other.bottom() + 1}),
                                       inside({other.left(), other.top() - window.height()})};
    return *std::min_element(places.begin(), places.end(), [&](QPoint one, QPoint another) {
        return covered({one, window}, other) < covered({another, window}, other);
    });
}

QSize availableWindowSize(const QWidget& window) {
    return window.screen()->availableSize() - frameOf(window);
}

void openBeside(QWidget& window, const QWidget& other) {
    const QRect screen = other.screen()->availableGeometry();
    const QSize frame = frameOf(other); // the frame will be like that of the other window
    window.resize(window.size().boundedTo(screen.size() - frame));
    window.move(placeBeside(window.size() + frame, other.frameGeometry(), screen));
}

} // namespace bitlux::gui
