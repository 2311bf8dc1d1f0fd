#include "gui/waveform/wave_picture.h"

#include "gui/desktop/theme.h"

#include <algorithm>
#include <cmath>

namespace bitlux::gui {

namespace {

// Logical pixels; everything else follows the font.
constexpr qreal rowGap = 9;
constexpr qreal fieldGap = 4;
constexpr qreal widestNames = 140;
constexpr qreal largestDot = 3;
constexpr qreal guideDistance = 14; ///< samples that are closer have no line

qreal wordHeight(const QFontMetricsF& font) {
    return font.height() + 2;
}

qreal nameHeight(const QFontMetricsF& font) {
    return font.height() + 1;
}

/// Of the fields and the gap above them.
qreal fieldsHeight(const QFontMetricsF& font) {
    return font.height() + fieldGap;
}

/// Height of the bits and of the dots below them.
qreal bitsHeight(const QFontMetricsF& font) {
    return font.height() + largestDot;
}

bool hasBits(std::size_t line) {
    return line == Waveform::dataIn || line == Waveform::dataOut;
}

qreal rulerHeight(const QFontMetricsF& font) {
    return font.height() + rulerMark + 4;
}

/// Minimum height of the waves alone.
qreal waveHeight(const QFontMetricsF& font) {
    return font.height();
}

/// From the longest to the shortest text.
QStringList captions(const Waveform& waveform, bool isAlone) {
    const QString number = QString::number(waveform.number);
    QString text = QString("type %1, %2 bits, %3 first")
                       .arg(waveform.type)
                       .arg(waveform.length)
                       .arg(waveform.msbFirst ? "MSB" : "LSB");
    if (waveform.asCommanded)
        text += ", as commanded";
    if (waveform.rebuilt)
        text += ", edges evenly spaced";
    if (!waveform.complete)
        text += ", failed";
    if (isAlone)
        return {text};
    return {QString("word %1: ").arg(number) + text, QString("word %1").arg(number), number};
}

QColor mixed(const QColor& one, const QColor& other, qreal share) {
    const auto part = [share](int a, int b) {
        return static_cast<int>(std::lround(a * share + b * (1 - share)));
    };
    return {part(one.red(), other.red()), part(one.green(), other.green()),
            part(one.blue(), other.blue())};
}

} // namespace

WavePicture::Colors::Colors(const QWidget& widget)
    : base(widget.palette().color(QPalette::Base)),
      line(widget.palette().color(QPalette::Text)),
      quiet(widget.palette().color(QPalette::PlaceholderText)),
      grid(mixed(line, base, 0.12)),
      accent(widget.palette().color(QPalette::Highlight)),
      onAccent(widget.palette().color(QPalette::HighlightedText)),
      band(mixed(accent, base, 0.2)),
      unknown(mixed(quiet, base, 0.3)) {}

WavePicture::WavePicture(QPainter& painter, const QWidget& widget, const Content& content)
    : painter_(painter),
      ink_(painter),
      widgetFont_(widget.font()),
      font_(widgetFont_),
      colors_(widget),
      content_(content),
      row_(content.row),
      size_(widget.size()),
      thin_(ink_.length(1)),
      thick_(ink_.length(1.4)),
      names_(namesWidth(widget.font(), content.row.lines)) {
    layOutRows();
}

qreal WavePicture::namesWidth(const QFont& font, const std::vector<WaveLine>& lines) {
    const QFontMetricsF metrics(font);
    qreal width = 0;
    for (const WaveLine& line : lines)
        width = std::max(width, metrics.horizontalAdvance(QString::fromStdString(line.name)));
    const qreal level = metrics.horizontalAdvance("0") + waveGap;
    return std::ceil(std::min(width, widestNames) + level + 2 * waveGap);
}

qreal WavePicture::height(const QFont& font, std::size_t lines, bool isNamed) {
    const QFontMetricsF metrics(font);
    qreal height = rulerHeight(metrics) + rowGap;
    for (std::size_t line = 0; line < lines; ++line)
        height += waveHeight(metrics) + rowGap +
                  (hasBits(line) ? wordHeight(metrics) + bitsHeight(metrics) : 0) +
                  (hasBits(line) && isNamed ? nameHeight(metrics) + fieldsHeight(metrics) : 0);
    return std::ceil(height);
}

void WavePicture::layOutRows() {
    const bool isNamed = content_.names.decoder != nullptr;
    const qreal needed = height(widgetFont_, row_.lines.size(), isNamed);
    const auto count = static_cast<qreal>(std::max<std::size_t>(row_.lines.size(), 1));
    const qreal more = std::max(0.0, size_.height() - needed) / count;
    const qreal stretch = std::min(more, 0.7 * font_.height()); // higher waves show nothing more
    const qreal spread = std::min(more - stretch, font_.height());
    qreal y = rowGap - content_.scrolled;
    for (std::size_t line = 0; line < row_.lines.size(); ++line) {
        Row row{};
        const bool hasNames = isNamed && hasBits(line);
        row.name = y;
        row.word = ink_.y(y + (hasNames ? nameHeight(font_) : 0));
        row.bits = row.word + (hasBits(line) ? wordHeight(font_) : 0);
        row.top = ink_.y(row.bits + (hasBits(line) ? bitsHeight(font_) : 0));
        row.bottom = ink_.y(row.top + waveHeight(font_) + stretch);
        row.fields = row.bottom + fieldGap;
        row.end = row.bottom + (hasNames ? fieldsHeight(font_) : 0);
        rows_.push_back(row);
        y = row.end + rowGap + spread;
    }
    ruler_ = ink_.y(size_.height() - rulerHeight(font_));
}

qreal WavePicture::x(double at) const {
    // Keeps positions far outside near, where the painter's numbers are exact.
    return ink_.x(std::clamp(names_ + content_.scale.x(at), -10.0, size_.width() + 10));
}

qreal WavePicture::pixels(std::int64_t from, std::int64_t to) const {
    return static_cast<qreal>(to - from) / content_.scale.nsPerPixel;
}

void WavePicture::paint() {
    painter_.fillRect(QRectF(QPointF(0, 0), size_), colors_.base);
    painter_.save();
    painter_.setClipRect(QRectF(names_, 0, size_.width() - names_, ruler_));
    paintGaps();
    for (const WaveRow::Word& word : row_.words)
        paintGuides(word);
    for (std::size_t i = 0; i < rows_.size(); ++i)
        paintWave(row_.lines[i], rows_[i]);
    for (const WaveRow::Word& word : row_.words) {
        paintSamples(word);
        paintCaption(word);
        paintBits(word, Waveform::dataIn, &WaveBit::dataIn, word.waveform.sent);
        paintBits(word, Waveform::dataOut, &WaveBit::dataOut, word.waveform.received);
    }
    if (content_.names.decoder != nullptr)
        for (std::size_t word = 0; word < row_.words.size(); ++word)
            paintNamesOf(word);
    painter_.restore();
    paintRuler();
    paintNames();
    if (content_.mark)
        paintCursor(*content_.mark, true);
    if (content_.cursor)
        paintCursor(*content_.cursor, false);
}

std::vector<qreal> WavePicture::rowEnds() const {
    std::vector<qreal> ends;
    for (const Row& row : rows_)
        ends.push_back(std::min(row.end + rowGap / 2, ruler_));
    return ends;
}

void WavePicture::paintWave(const WaveLine& line, const Row& row) {
    const double left = content_.scale.at(0);
    const double right = content_.scale.at(size_.width() - names_);
    auto edge = std::upper_bound(line.edges.begin(), line.edges.end(), left,
                                 [](double time, const WaveLine::Edge& other) {
                                     return time < static_cast<double>(other.at);
                                 });
    Level level = edge == line.edges.begin() ? line.before : std::prev(edge)->to;
    qreal from = x(left);
    for (; edge != line.edges.end() && static_cast<double>(edge->at) <= right; ++edge) {
        const qreal to = x(static_cast<double>(edge->at));
        paintLevel(row, level, from, to);
        ink_.vertical(to, row.top, row.bottom + thick_, thick_, colors_.line);
        level = edge->to;
        from = to;
    }
    paintLevel(row, level, from, x(right));
}

void WavePicture::paintLevel(const Row& row, Level level, qreal from, qreal to) {
    if (level == Level::Unknown)
        painter_.fillRect(QRectF(from, row.top, to - from, row.bottom + thick_ - row.top),
                          colors_.unknown);
    else
        ink_.horizontal(from, to + thick_, level == Level::High ? row.top : row.bottom, thick_,
                        colors_.line);
}

void WavePicture::paintCaption(const WaveRow::Word& word) {
    if (rows_.empty())
        return;
    const Row& row = rows_[Waveform::chipSelect];
    const qreal from = std::max(x(static_cast<double>(word.at)), names_);
    const qreal to = std::min(x(static_cast<double>(word.at + word.waveform.end)), size_.width());
    for (const QString& text : captions(word.waveform, row_.words.size() == 1))
        if (font_.horizontalAdvance(text) + 2 * waveGap < to - from) {
            textIn(from, to, row.top, row.bottom - row.top, text, colors_.quiet);
            return;
        }
}

qreal WavePicture::cell(const Waveform& waveform) const {
    const auto count = static_cast<qreal>(std::max<std::size_t>(waveform.bits.size(), 1));
    return pixels(0, waveform.end) / count;
}

void WavePicture::paintGuides(const WaveRow::Word& word) {
    if (rows_.size() <= Waveform::dataOut || cell(word.waveform) < guideDistance)
        return;
    const QColor color = mixed(colors_.accent, colors_.base, 0.6);
    for (const WaveBit& bit : word.waveform.bits) {
        const qreal at = x(static_cast<double>(word.at + bit.sampledAt));
        if (bit.received && at >= names_)
            for (const std::size_t line : {Waveform::clock, Waveform::dataIn,
                                           Waveform::dataOut}) // the lines around the texts
                ink_.dashed(at, ink_.y(rows_[line].top - 3), rows_[line].bottom, thin_, color);
    }
}

void WavePicture::paintSamples(const WaveRow::Word& word) {
    if (rows_.size() <= Waveform::dataOut)
        return;
    const Row& row = rows_[Waveform::dataOut];
    const qreal radius = std::clamp(cell(word.waveform) / 5, 1.0, largestDot);
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colors_.accent);
    for (const WaveBit& bit : word.waveform.bits) {
        const qreal at = x(static_cast<double>(word.at + bit.sampledAt));
        if (!bit.received || at < names_ || at > size_.width())
            continue;
        const Level level = word.waveform.lines[Waveform::dataOut].levelAt(bit.dataOut.from);
        const qreal y = level == Level::High ? row.top : row.bottom;
        painter_.drawEllipse(QPointF(at + thin_ / 2, y + thick_ / 2), radius, radius);
    }
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void WavePicture::paintBits(const WaveRow::Word& word, std::size_t line,
                            WaveBit::Window WaveBit::*window, const std::string& text) {
    const auto& bits = word.waveform.bits;
    const auto isKnown = [&](const WaveBit& bit) {
        return line == Waveform::dataIn || bit.received.has_value();
    };
    if (rows_.size() <= line || bits.empty() || !isKnown(bits.front()))
        return;
    const auto place = [&](std::int64_t at) { return x(static_cast<double>(word.at + at)); };
    const Row& row = rows_[line];
    const auto last = std::find_if(bits.rbegin(), bits.rend(), isKnown);
    const qreal from = place((bits.front().*window).from);
    const qreal to = place(((*last).*window).to);
    painter_.fillRect(QRectF(from, row.word, to - from, wordHeight(font_) - 1), colors_.band);
    painter_.setFont(fixedFont());
    for (const WaveBit& bit : bits)
        if (isKnown(bit))
            paintBit(row, place((bit.*window).from), place((bit.*window).to),
                     (line == Waveform::dataIn ? bit.sent : *bit.received) ? "1" : "0");
    const QString digits = QString::fromStdString(text);
    const qreal left = std::max(from, names_);
    const qreal right = std::min(to, size_.width());
    if (QFontMetricsF(painter_.font()).horizontalAdvance(digits) <= right - left)
        textIn(left, right, row.word, wordHeight(font_) - 1, digits, colors_.line);
    painter_.setFont(widgetFont_);
}

void WavePicture::paintBit(const Row& row, qreal from, qreal to, const QString& text) {
    const bool isWide = to - from >= font_.horizontalAdvance("0") + 3;
    if (isWide && to >= names_ && from <= size_.width())
        textIn(from, to, row.bits, font_.height(), text, colors_.line);
}

void WavePicture::textIn(qreal from, qreal to, qreal top, qreal height, const QString& text,
                         const QColor& color) {
    painter_.setPen(color);
    painter_.drawText(QRectF(from, top, to - from, height), Qt::AlignCenter | Qt::TextDontClip,
                      text);
}

} // namespace bitlux::gui
