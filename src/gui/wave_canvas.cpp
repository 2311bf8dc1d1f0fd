#include "gui/wave_canvas.h"

#include "gui/wave_picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace bitlux::gui {

namespace {

constexpr double keyFactor = 1.5;
constexpr double wheelFactor = 1.25; ///< a notch of the wheel
constexpr double wheelNotch = 120;
constexpr double widestGap = 160;  ///< pixels that zooming in gives the shortest time between edges
constexpr double widestView = 1e7; ///< pixels of a word, so that a scroll bar can count them
constexpr double snapDistance = 5; ///< pixels
constexpr const char* hint = "Send a word to see it on the lines";

} // namespace

WaveCanvas::WaveCanvas(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName("waveform.canvas");
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Waveform");
    describe();
}

void WaveCanvas::show(Waveform waveform) {
    waveform_ = std::move(waveform);
    if (fitted_)
        fit();
    else
        setScale(scale_.nsPerPixel, scale_.from);
    describe();
}

double WaveCanvas::begin() const {
    return -static_cast<double>(waveform_.end) / 20;
}

double WaveCanvas::end() const {
    return static_cast<double>(waveform_.end) - begin();
}

double WaveCanvas::width() const {
    return std::max(1.0, viewport()->width() - WavePicture::namesWidth(font(), waveform_));
}

void WaveCanvas::fit() {
    setScale((end() - begin()) / width(), begin());
    fitted_ = true;
}

void WaveCanvas::setScale(double nsPerPixel, double from) {
    double shortest = std::max(1.0, end() - begin());
    const std::vector<std::int64_t> all = edges();
    for (std::size_t i = 1; i < all.size(); ++i)
        shortest = std::min(shortest, static_cast<double>(all[i] - all[i - 1]));
    const double whole = std::max(1.0, end() - begin()) / width();
    const double finest =
        std::min(whole, std::max(shortest / widestGap, whole * width() / widestView));
    scale_.nsPerPixel = std::clamp(nsPerPixel, finest, whole);
    fitted_ = scale_.nsPerPixel >= whole;
    scale_.from = std::clamp(from, begin(), std::max(begin(), end() - width() * scale_.nsPerPixel));
    updateScrollBars();
    viewport()->update();
}

void WaveCanvas::updateScrollBars() {
    scrollsItself_ = true;
    const int page = static_cast<int>(width());
    const int all = static_cast<int>(std::ceil((end() - begin()) / scale_.nsPerPixel));
    horizontalScrollBar()->setRange(0, fitted_ ? 0 : std::max(0, all - page));
    horizontalScrollBar()->setPageStep(page);
    horizontalScrollBar()->setSingleStep(std::max(1, page / 10));
    horizontalScrollBar()->setValue(
        static_cast<int>(std::lround((scale_.from - begin()) / scale_.nsPerPixel)));
    scrollsItself_ = false;
    const int rows = static_cast<int>(WavePicture::height(font(), waveform_));
    verticalScrollBar()->setRange(0, std::max(0, rows - viewport()->height()));
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(fontMetrics().height());
}

void WaveCanvas::zoom(double factor) {
    const double at = cursor_ ? scale_.x(static_cast<double>(*cursor_)) : -1;
    zoomAround(factor, at >= 0 && at <= width() ? at : width() / 2);
}

void WaveCanvas::zoomAround(double factor, double pixel) {
    const double at = scale_.at(pixel);
    const double nsPerPixel = scale_.nsPerPixel / factor;
    setScale(nsPerPixel, at - pixel * nsPerPixel);
    // The limit of the zoom may have been nearer.
    setScale(scale_.nsPerPixel, at - pixel * scale_.nsPerPixel);
}

std::vector<std::int64_t> WaveCanvas::edges() const {
    std::vector<std::int64_t> all;
    for (const WaveLine& line : waveform_.lines)
        for (const WaveLine::Edge& edge : line.edges)
            if (edge.at >= 0) // the others are not in sight
                all.push_back(edge.at);
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    return all;
}

void WaveCanvas::setCursor(std::int64_t at) {
    cursor_ = at;
    describe();
    viewport()->update();
    cursorMoved.raise();
}

void WaveCanvas::moveToEdge(bool forward) {
    const std::vector<std::int64_t> all = edges();
    if (all.empty())
        return;
    if (!cursor_) {
        setCursor(forward ? all.front() : all.back());
    } else if (forward) {
        const auto next = std::upper_bound(all.begin(), all.end(), *cursor_);
        setCursor(next == all.end() ? all.back() : *next);
    } else {
        const auto here = std::lower_bound(all.begin(), all.end(), *cursor_);
        setCursor(here == all.begin() ? all.front() : *std::prev(here));
    }
    showCursor();
}

void WaveCanvas::showCursor() {
    const auto at = static_cast<double>(*cursor_);
    const double pixel = scale_.x(at);
    const double room = width() / 10;
    if (pixel < 0)
        setScale(scale_.nsPerPixel, at - room * scale_.nsPerPixel);
    else if (pixel > width())
        setScale(scale_.nsPerPixel, at - (width() - room) * scale_.nsPerPixel);
}

void WaveCanvas::placeCursor(double pixel) {
    const double wave = pixel - WavePicture::namesWidth(font(), waveform_);
    double at = std::clamp(scale_.at(wave), begin(), end());
    double nearest = snapDistance;
    for (const std::int64_t edge : edges()) {
        const double distance = std::abs(scale_.x(static_cast<double>(edge)) - wave);
        if (distance <= nearest) {
            nearest = distance;
            at = static_cast<double>(edge);
        }
    }
    setCursor(std::llround(at));
}

QString WaveCanvas::readout() const {
    if (!cursor_ || waveform_.lines.empty())
        return {};
    QString text = timeText(*cursor_, 1) + ":";
    for (const WaveLine& line : waveform_.lines) {
        const Level level = line.levelAt(*cursor_);
        text += QString("%1 %2 %3")
                    .arg(&line == &waveform_.lines.front() ? "" : ",",
                         QString::fromStdString(line.name),
                         level == Level::Unknown ? "unknown"
                         : level == Level::High  ? "1"
                                                 : "0");
    }
    return text;
}

void WaveCanvas::describe() {
    if (waveform_.lines.empty()) {
        setAccessibleDescription(hint);
        return;
    }
    QString sent;
    QString received;
    for (const WaveBit& bit : waveform_.bits) {
        sent += bit.sent ? '1' : '0';
        received += !bit.received ? '?' : *bit.received ? '1' : '0';
    }
    setAccessibleDescription(
        QString("Word %1: type %2, %3 bits, %4 first%5%6. DI %7 (%8), DO %9 (%10). %11")
            .arg(waveform_.number)
            .arg(waveform_.type)
            .arg(waveform_.length)
            .arg(waveform_.msbFirst ? "MSB" : "LSB", waveform_.asCommanded ? ", as commanded" : "",
                 waveform_.complete ? "" : ", failed", sent, QString::fromStdString(waveform_.sent),
                 received, QString::fromStdString(waveform_.received), readout())
            .trimmed());
}

QSize WaveCanvas::sizeHint() const {
    Waveform usual;
    usual.lines.resize(Waveform::firstExtra);
    const int rows = static_cast<int>(WavePicture::height(font(), usual));
    return {640, rows + 2 * frameWidth() + horizontalScrollBar()->sizeHint().height()};
}

QSize WaveCanvas::minimumSizeHint() const {
    return {240, 6 * fontMetrics().height()};
}

void WaveCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (waveform_.lines.empty()) {
        painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter, hint);
        return;
    }
    const WavePicture::Content content{waveform_, scale_, cursor_,
                                       static_cast<qreal>(verticalScrollBar()->value())};
    WavePicture(painter, *viewport(), content).paint();
    if (hasFocus())
        paintFocus(painter);
}

void WaveCanvas::paintFocus(QPainter& painter) const {
    const QColor color = palette().color(QPalette::Highlight);
    const int right = viewport()->width() - 1;
    const int bottom = viewport()->height() - 1;
    for (const QRect& side : {QRect(0, 0, right, 1), QRect(0, bottom, right, 1),
                              QRect(0, 0, 1, bottom), QRect(right, 0, 1, bottom + 1)})
        painter.fillRect(side, color);
}

void WaveCanvas::resizeEvent(QResizeEvent*) {
    if (fitted_)
        fit();
    else
        setScale(scale_.nsPerPixel, scale_.from);
}

void WaveCanvas::scrollContentsBy(int dx, int) {
    if (dx != 0 && !scrollsItself_)
        scale_.from = begin() + horizontalScrollBar()->value() * scale_.nsPerPixel;
    viewport()->update();
}

void WaveCanvas::keyPressEvent(QKeyEvent* event) {
    const std::vector<std::int64_t> all = edges();
    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        moveToEdge(event->key() == Qt::Key_Right);
        break;
    case Qt::Key_Home:
    case Qt::Key_End:
        if (all.empty())
            break;
        setCursor(event->key() == Qt::Key_Home ? all.front() : all.back());
        showCursor();
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
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void WaveCanvas::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && !waveform_.lines.empty())
        placeCursor(event->position().x());
}

void WaveCanvas::mouseMoveEvent(QMouseEvent* event) {
    if ((event->buttons() & Qt::LeftButton) != 0 && !waveform_.lines.empty())
        placeCursor(event->position().x());
}

void WaveCanvas::wheelEvent(QWheelEvent* event) {
    const QPoint turn = event->angleDelta();
    if (turn.x() != 0 || (event->modifiers() & Qt::ShiftModifier) != 0) {
        const int way = turn.x() != 0 ? turn.x() : turn.y();
        horizontalScrollBar()->setValue(horizontalScrollBar()->value() - way);
    } else {
        zoomAround(std::pow(wheelFactor, turn.y() / wheelNotch),
                   event->position().x() - WavePicture::namesWidth(font(), waveform_));
    }
    event->accept();
}

} // namespace bitlux::gui
