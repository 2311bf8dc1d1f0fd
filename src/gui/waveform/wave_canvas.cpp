#include "gui/waveform/wave_canvas.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QPainter>
#include <QScrollBar>

namespace bitlux::gui {

namespace {

constexpr double widestGap = 160;  ///< pixels between the two closest edges at the highest zoom
constexpr double widestView = 1e7; ///< pixels of a word, within the range of a scroll bar
constexpr const char* hint = "Send a word to see it on the lines";

} // namespace

WaveCanvas::WaveCanvas(QWidget* parent) : QAbstractScrollArea(parent) {
    setObjectName("waveform.canvas");
    setFocusPolicy(Qt::StrongFocus);
    setAccessibleName("Waveform");
    describe();
}

void WaveCanvas::show(std::vector<Waveform> words) {
    const std::int64_t before = row_.words.empty() ? 0 : row_.words.back().at;
    const std::string chosen = line_ ? row_.lines[*line_].name : std::string();
    row_ = WaveRow(std::move(words));
    if (line_ && (*line_ >= row_.lines.size() || row_.lines[*line_].name != chosen))
        chooseLine(std::nullopt);
    moveWith((row_.words.empty() ? 0 : row_.words.back().at) - before);
    if (fitted_)
        fit();
    else
        setScale(scale_.nsPerPixel, scale_.from);
    describe();
}

void WaveCanvas::setNames(const WaveNames& names) {
    names_ = names;
    updateScrollBars(); // the rows are higher with names
    describe();
    viewport()->update();
}

/// Keeps view and cursors at their positions in the last word.
void WaveCanvas::moveWith(std::int64_t distance) {
    scale_.from += static_cast<double>(distance);
    for (std::optional<std::int64_t>* any : {&cursor_, &mark_})
        if (*any)
            *any = std::max<std::int64_t>(**any + distance, std::llround(begin()));
}

const Waveform& WaveCanvas::waveform() const {
    static const Waveform none;
    return row_.words.empty() ? none : row_.words.back().waveform;
}

double WaveCanvas::begin() const {
    return -static_cast<double>(row_.longest) / 20;
}

double WaveCanvas::end() const {
    return static_cast<double>(row_.end()) - begin();
}

double WaveCanvas::width() const {
    return std::max(1.0, viewport()->width() - WavePicture::namesWidth(font(), row_.lines));
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
    const int rows =
        static_cast<int>(WavePicture::height(font(), row_.lines.size(), names_.decoder != nullptr));
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
    // The zoom may have reached its limit.
    setScale(scale_.nsPerPixel, at - pixel * scale_.nsPerPixel);
}

std::vector<std::int64_t> WaveCanvas::edges(bool ofChosen) const {
    std::vector<std::int64_t> all;
    for (std::size_t line = 0; line < row_.lines.size(); ++line) {
        if (ofChosen && line_.value_or(line) != line)
            continue;
        for (const WaveLine::Edge& edge : row_.lines[line].edges)
            if (edge.at >= 0) // the others are not visible
                all.push_back(edge.at);
    }
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

void WaveCanvas::setMark(std::optional<std::int64_t> at) {
    mark_ = at;
    describe();
    viewport()->update();
    cursorMoved.raise();
}

QString WaveCanvas::readout() const {
    if (!cursor_ || row_.lines.empty())
        return {};
    const WaveRow::Word& word = row_.words[row_.wordAt(*cursor_)];
    QString text = timeText(*cursor_ - word.at, 1) + ":";
    if (row_.words.size() > 1)
        text = QString("Word %1, ").arg(word.waveform.number) + text;
    for (const WaveLine& line : row_.lines) {
        const Level level = line.levelAt(*cursor_);
        text += QString("%1 %2 %3")
                    .arg(&line == &row_.lines.front() ? "" : ",", QString::fromStdString(line.name),
                         level == Level::Unknown ? "unknown"
                         : level == Level::High  ? "1"
                                                 : "0");
    }
    return text;
}

QString WaveCanvas::difference() const {
    if (!cursor_ || !mark_ || row_.words.empty())
        return {};
    const std::int64_t time = row_.timeAt(*cursor_) - row_.timeAt(*mark_);
    const QString text = QString("Δ %1").arg(timeText(time, 1));
    return time == 0 ? text : text + ", " + frequencyText(std::abs(time));
}

void WaveCanvas::describe() {
    const Waveform& word = waveform();
    if (word.lines.empty()) {
        setAccessibleDescription(hint);
        return;
    }
    QString sent;
    QString received;
    for (const WaveBit& bit : word.bits) {
        sent += bit.sent ? '1' : '0';
        received += !bit.received ? '?' : *bit.received ? '1' : '0';
    }
    setAccessibleDescription(
        QString("Word %1: type %2, %3 bits, %4 first%5%6%7. DI %8 (%9), DO %10 (%11). %12 %13")
            .arg(word.number)
            .arg(word.type)
            .arg(word.length)
            .arg(word.msbFirst ? "MSB" : "LSB", word.asCommanded ? ", as commanded" : "",
                 word.rebuilt ? ", edges evenly spaced" : "", word.complete ? "" : ", failed", sent,
                 QString::fromStdString(word.sent), received, QString::fromStdString(word.received))
            .arg(readout(), difference())
            .trimmed() +
        namesText());
}

/// What the last word and its answer mean; empty where they mean nothing.
QString WaveCanvas::namesText() const {
    if (names_.decoder == nullptr)
        return {};
    const std::size_t words = row_.words.size();
    const std::optional<std::uint64_t> before =
        words < 2 ? names_.before : std::optional(sentNumber(row_.words[words - 2].waveform));
    const auto textOf = [](const char* line, const WordLabels& labels) {
        if (labels.title.empty())
            return QString();
        QStringList fields;
        for (const WordLabels::Span& span : labels.spans)
            fields << QString::fromStdString(span.text);
        return QString(" %1: %2%3%4.")
            .arg(line, QString::fromStdString(labels.title), fields.isEmpty() ? "" : ": ",
                 fields.join(", "));
    };
    return textOf("DI", labelsOfWord(*names_.decoder, waveform())) +
           textOf("DO", labelsOfAnswer(*names_.decoder, waveform(), before));
}

QSize WaveCanvas::sizeHint() const {
    const int rows = static_cast<int>(
        WavePicture::height(font(), Waveform::firstExtra, names_.decoder != nullptr));
    return {640, rows + 2 * frameWidth() + horizontalScrollBar()->sizeHint().height()};
}

QSize WaveCanvas::minimumSizeHint() const {
    return {240, 6 * fontMetrics().height()};
}

void WaveCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    if (row_.lines.empty()) {
        painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter, hint);
        return;
    }
    const WavePicture::Content content{.row = row_,
                                       .scale = scale_,
                                       .cursor = cursor_,
                                       .mark = mark_,
                                       .line = line_,
                                       .scrolled = static_cast<qreal>(verticalScrollBar()->value()),
                                       .names = names_};
    WavePicture picture(painter, *viewport(), content);
    picture.paint();
    rowEnds_ = picture.rowEnds();
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

} // namespace bitlux::gui
