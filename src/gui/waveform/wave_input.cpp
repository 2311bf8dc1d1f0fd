// How mouse and keyboard move through a waveform.

#include "gui/waveform/wave_canvas.h"
#include "gui/waveform/wave_picture.h"

#include <algorithm>
#include <cmath>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QWheelEvent>

namespace bitlux::gui {

namespace {

constexpr double keyFactor = 1.5;
constexpr double wheelFactor = 1.25; ///< one step of the wheel
constexpr double wheelNotch = 120;
constexpr double snapDistance = 5; ///< pixels

} // namespace

void WaveCanvas::chooseLine(std::optional<std::size_t> line) {
    line_ = line;
    viewport()->update();
    lineChosen.raise();
}

void WaveCanvas::stepLine(int lines) {
    const int count = static_cast<int>(row_.lines.size());
    if (count == 0)
        return;
    // The entry for all lines precedes the first line.
    const int here = line_ ? static_cast<int>(*line_) + 1 : 0;
    const int next = std::clamp(here + lines, 0, count);
    chooseLine(next == 0 ? std::nullopt : std::optional(static_cast<std::size_t>(next - 1)));
}

/// The edge after or before a position, or that position if there is none; nothing without edges.
std::optional<std::int64_t> WaveCanvas::edgeFrom(std::optional<std::int64_t> at,
                                                 bool forward) const {
    const std::vector<std::int64_t> all = edges(true);
    if (all.empty())
        return at;
    if (!at)
        return forward ? all.front() : all.back();
    if (forward) {
        const auto next = std::upper_bound(all.begin(), all.end(), *at);
        return next == all.end() ? std::max(*at, all.back()) : *next;
    }
    const auto here = std::lower_bound(all.begin(), all.end(), *at);
    return here == all.begin() ? std::min(*at, all.front()) : *std::prev(here);
}

void WaveCanvas::moveToEdge(bool forward) {
    const std::optional<std::int64_t> at = edgeFrom(cursor_, forward);
    if (!at)
        return;
    setCursor(*at);
    bringIntoSight(*at);
}

void WaveCanvas::moveMarkToEdge(bool forward) {
    const std::optional<std::int64_t> at = edgeFrom(mark_ ? mark_ : cursor_, forward);
    if (!at)
        return;
    setMark(at);
    bringIntoSight(*at);
}

void WaveCanvas::bringIntoSight(std::int64_t at) {
    const auto place = static_cast<double>(at);
    const double pixel = scale_.x(place);
    const double room = width() / 10;
    if (pixel < 0)
        setScale(scale_.nsPerPixel, place - room * scale_.nsPerPixel);
    else if (pixel > width())
        setScale(scale_.nsPerPixel, place - (width() - room) * scale_.nsPerPixel);
}

std::int64_t WaveCanvas::placeAt(double pixel) const {
    const double wave = pixel - WavePicture::namesWidth(font(), row_.lines);
    double at = std::clamp(scale_.at(wave), begin(), end());
    double nearest = snapDistance;
    for (const std::int64_t edge : edges()) {
        const double distance = std::abs(scale_.x(static_cast<double>(edge)) - wave);
        if (distance <= nearest) {
            nearest = distance;
            at = static_cast<double>(edge);
        }
    }
    return std::llround(at);
}

void WaveCanvas::keyPressEvent(QKeyEvent* event) {
    const std::vector<std::int64_t> all = edges();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if ((event->modifiers() & Qt::ShiftModifier) != 0)
            moveMarkToEdge(event->key() == Qt::Key_Right);
        else
            moveToEdge(event->key() == Qt::Key_Right);
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
        stepLine(event->key() == Qt::Key_Down ? 1 : -1);
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (all.empty())
            break;
        setCursor(event->key() == Qt::Key_Home ? all.front() : all.back());
        bringIntoSight(*cursor_);
        break;
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoom(keyFactor);
        break;
    case Qt::Key_Minus:
        zoom(1 / keyFactor);
        break;
    case Qt::Key_0:
        fit();
        break;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        wordWanted.raise(event->key() == Qt::Key_PageDown ? 1 : -1);
        break;
    case Qt::Key_Escape:
        if (!mark_) {
            QAbstractScrollArea::keyPressEvent(event);
            break;
        }
        setMark(std::nullopt);
        break;
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void WaveCanvas::mousePressEvent(QMouseEvent* event) {
    if (row_.lines.empty())
        return;
    if (event->position().x() >= WavePicture::namesWidth(font(), row_.lines)) {
        takeMouse(*event);
    } else if (event->button() == Qt::LeftButton) { // a second click chooses all lines
        const auto row = std::upper_bound(rowEnds_.begin(), rowEnds_.end(), event->position().y());
        const auto line = static_cast<std::size_t>(row - rowEnds_.begin());
        if (line < row_.lines.size())
            chooseLine(line_ == line ? std::nullopt : std::optional(line));
    }
}

void WaveCanvas::mouseMoveEvent(QMouseEvent* event) {
    if (!row_.lines.empty())
        takeMouse(*event);
}

void WaveCanvas::takeMouse(const QMouseEvent& event) {
    const bool left = (event.buttons() & Qt::LeftButton) != 0;
    const bool right = (event.buttons() & Qt::RightButton) != 0;
    if (right || (left && (event.modifiers() & Qt::ShiftModifier) != 0))
        setMark(placeAt(event.position().x()));
    else if (left)
        setCursor(placeAt(event.position().x()));
}

void WaveCanvas::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    if (turn.x() != 0 || (event->modifiers() & Qt::ShiftModifier) != 0) {
        const int way = turn.x() != 0 ? turn.x() : turn.y();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way);
    } else {
        zoomAround(std::pow(wheelFactor, turn.y() / wheelNotch),
                   event->position().x() - WavePicture::namesWidth(font(), row_.lines));
    }
    event->accept();
}

} // namespace bitlux::gui
