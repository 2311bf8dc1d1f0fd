// What surrounds the waves: intervals between words, ruler, names, cursors.

#include "gui/waveform/wave_picture.h"

#include <algorithm>
#include <cmath>

namespace bitlux::gui {

namespace {

// Logical pixels; everything else follows the font.
constexpr qreal rulerDistance = 90;

/// "1.25 ms": three digits are enough for an interval without events.
QString intervalText(std::int64_t nanoseconds) {
    std::int64_t step = 1;
    while (nanoseconds / step >= 1000)
        step *= 10;
    return timeText(nanoseconds / step * step, step);
}

} // namespace

void WavePicture::paintGaps() {
    for (std::size_t word = 1; word < row_.words.size(); ++word) {
        const qreal from = x(static_cast<double>(row_.endOf(word - 1)));
        const qreal to = x(static_cast<double>(row_.words[word].at));
        if (to < names_ || from > size_.width())
            continue;
        painter_.fillRect(QRectF(from, 0, to - from, ruler_), colors_.grid);
        for (const qreal at : {from, to})
            ink_.dashed(at, 0, ruler_, thin_, colors_.quiet);
        const QString text = intervalText(row_.idleBefore(word));
        if (!rows_.empty() && font_.horizontalAdvance(text) + 4 <= to - from)
            textIn(from, to, rows_[Waveform::clock].top,
                   rows_[Waveform::clock].bottom - rows_[Waveform::clock].top, text, colors_.quiet);
    }
}

void WavePicture::paintRuler() {
    painter_.fillRect(QRectF(0, ruler_, size_.width(), size_.height() - ruler_), colors_.base);
    ink_.horizontal(names_, size_.width(), ruler_, thin_, colors_.grid);
    const std::int64_t step = content_.scale.rulerStep(rulerDistance);
    qreal free = names_;
    for (std::size_t word = 0; word < row_.words.size(); ++word)
        free = paintRulerOf(word, step, free);
}

/// The times of a word, of which the first and the last of all extend to the borders; text begins
/// at `free`, and the result is the next free position.
qreal WavePicture::paintRulerOf(std::size_t word, std::int64_t step, qreal free) {
    const WaveScale& scale = content_.scale;
    const auto origin = static_cast<double>(row_.words[word].at);
    const bool isLast = word + 1 == row_.words.size();
    const double to =
        isLast ? scale.at(size_.width() - names_)
               : std::min(static_cast<double>(row_.endOf(word)), scale.at(size_.width() - names_));
    const double from = word == 0 ? scale.from : std::max(origin, scale.from);
    const auto first =
        static_cast<std::int64_t>(std::ceil((from - origin) / static_cast<double>(step)));
    for (std::int64_t n = first; origin + static_cast<double>(n * step) < to; ++n) {
        const qreal at = x(origin + static_cast<double>(n * step));
        ink_.vertical(at, ruler_, ink_.y(ruler_ + rulerMark), thin_, colors_.quiet);
        const QString text = timeText(n * step, step);
        const qreal half = font_.horizontalAdvance(text) / 2;
        if (at - half < free || at + half > size_.width())
            continue;
        textIn(at - half, at + half, ruler_ + rulerMark, font_.height(), text, colors_.quiet);
        free = at + half + waveGap;
    }
    return free;
}

void WavePicture::paintNames() {
    painter_.save();
    painter_.setClipRect(QRectF(0, 0, names_, ruler_));
    for (std::size_t line = 0; line < rows_.size(); ++line)
        paintName(line);
    painter_.restore();
}

void WavePicture::paintName(std::size_t line) {
    const Row& row = rows_[line];
    const QRectF place(waveGap, row.top - 2, names_ - 2 * waveGap, row.bottom - row.top + 4);
    const bool isChosen = content_.line == line;
    if (isChosen)
        painter_.fillRect(place.adjusted(-waveGap / 2, 0, waveGap / 2, 0), colors_.accent);
    const QString name = QString::fromStdString(row_.lines[line].name);
    painter_.setPen(isChosen ? colors_.onAccent : colors_.line);
    painter_.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                      font_.elidedText(name, Qt::ElideRight,
                                       place.width() - font_.horizontalAdvance("0") - waveGap));
    if (!content_.cursor)
        return;
    const Level level = row_.lines[line].levelAt(*content_.cursor);
    painter_.setPen(isChosen ? colors_.onAccent : colors_.accent);
    painter_.drawText(place, Qt::AlignRight | Qt::AlignVCenter,
                      level == Level::Unknown ? "?"
                      : level == Level::High  ? "1"
                                              : "0");
}

void WavePicture::paintNamesOf(std::size_t word) {
    const WaveRow::Word& shown = row_.words[word];
    const bool isInSight = x(static_cast<double>(row_.endOf(word))) > names_ &&
                           x(static_cast<double>(shown.at)) < size_.width();
    if (!isInSight || rows_.size() <= Waveform::dataOut)
        return;
    const WordDecoder& decoder = *content_.names.decoder;
    const std::optional<std::uint64_t> before =
        word == 0 ? content_.names.before
                  : std::optional(sentNumber(row_.words[word - 1].waveform));
    paintLabels(shown, Waveform::dataIn, &WaveBit::dataIn, labelsOfWord(decoder, shown.waveform));
    paintLabels(shown, Waveform::dataOut, &WaveBit::dataOut,
                labelsOfAnswer(decoder, shown.waveform, before));
}

void WavePicture::paintLabels(const WaveRow::Word& word, std::size_t line,
                              WaveBit::Window WaveBit::*window, const WordLabels& labels) {
    /// Where bits are on the axis, whichever of them travels first.
    const auto stretchOf = [&](int low, int high) {
        std::pair<qreal, qreal> stretch{size_.width() + waveGap, 0};
        for (const WaveBit& bit : word.waveform.bits)
            if (bit.number >= low && bit.number <= high) {
                const WaveBit::Window& at = bit.*window;
                stretch.first = std::min(stretch.first, x(static_cast<double>(word.at + at.from)));
                stretch.second = std::max(stretch.second, x(static_cast<double>(word.at + at.to)));
            }
        return std::pair(std::max(stretch.first, names_), std::min(stretch.second, size_.width()));
    };
    if (labels.title.empty())
        return;
    const Row& row = rows_[line];
    const auto [left, right] = stretchOf(0, word.waveform.length - 1);
    const QString title = font_.elidedText(QString::fromStdString(labels.title), Qt::ElideRight,
                                           std::max(0.0, right - left));
    textIn(left, right, row.name, font_.height(), title, colors_.line);
    for (const WordLabels::Span& span : labels.spans) {
        const auto [from, to] = stretchOf(span.low, span.high);
        if (from < to)
            paintField(row, from, to, QString::fromStdString(span.text));
    }
}

/// A bar below the bits, with the text where something of it has room.
void WavePicture::paintField(const Row& row, qreal from, qreal to, const QString& text) {
    const QRectF bar(from + thin_, row.fields, to - from - 2 * thin_, font_.height());
    painter_.fillRect(bar, colors_.grid);
    const QString shown = font_.elidedText(text, Qt::ElideRight, bar.width() - 4);
    constexpr qsizetype least = 4; // fewer letters say nothing
    if (shown.size() >= least || shown == text)
        textIn(bar.left(), bar.right(), bar.top(), bar.height(), shown, colors_.line);
}

void WavePicture::paintCursor(std::int64_t place, bool isMark) {
    const qreal at = ink_.x(names_ + content_.scale.x(static_cast<double>(place)));
    if (at < names_ || at > size_.width() || row_.words.empty())
        return;
    const QColor& color = isMark ? colors_.line : colors_.accent;
    if (isMark)
        ink_.dashed(at, 0, ruler_, thick_, color);
    else
        ink_.vertical(at, 0, ruler_, thick_, color);
    const auto step = static_cast<std::int64_t>(std::max(1.0, content_.scale.nsPerPixel));
    const QString text =
        timeText(place - row_.words[row_.wordAt(place)].at, std::min<std::int64_t>(step, 100));
    const qreal width = font_.horizontalAdvance(text) + 2 * waveGap;
    const qreal left = std::clamp(at - width / 2, names_, size_.width() - width);
    const QRectF flag(left, ruler_, width, font_.height() + rulerMark + 2);
    painter_.fillRect(flag, color);
    textIn(flag.left(), flag.right(), flag.top(), flag.height(), text,
           isMark ? colors_.base : colors_.onAccent);
}

} // namespace bitlux::gui
