#include "gui/configure/type_picture.h"

#include <algorithm>
#include <cmath>

namespace bitlux::gui {

namespace {

// Logical pixels; everything else follows the font.
constexpr qreal gap = 6;
constexpr qreal typeRowGap = 10;
constexpr qreal symbolWidth = 12;
constexpr qreal legendGap = 20;
constexpr qreal arrowReach = 4;
constexpr qreal dotRadius = 3;

constexpr std::array<const char*, 4> rowNames{"CS", "CLK", "DI", "DO"};
constexpr const char* idleText = "idle";

qreal namesWidth(const QFontMetricsF& font) {
    qreal width = 0;
    for (const char* name : rowNames)
        width = std::max(width, font.horizontalAdvance(name));
    return width + gap;
}

/// The extent of something in a row, which a label avoids.
struct Span {
    qreal from;
    qreal to;
};

/// The middle of the widest gap between the spans, which are sorted.
qreal widestRoom(const std::vector<Span>& spans) {
    qreal place = 0;
    qreal widest = 0;
    for (std::size_t i = 1; i < spans.size(); ++i) {
        const qreal room = spans[i].from - spans[i - 1].to;
        if (room > widest + 1) { // the first of equal gaps, whatever the rounding
            widest = room;
            place = spans[i - 1].to + room / 2;
        }
    }
    return place;
}

} // namespace

TypePicture::Colors::Colors(const QWidget& widget)
    : line(widget.palette().color(QPalette::WindowText)),
      quiet(widget.palette().color(QPalette::PlaceholderText)),
      accent(widget.palette().color(QPalette::Highlight)),
      eye(widget.palette().color(QPalette::Base)),
      unknown(quiet) {
    if (!widget.isEnabled())
        quiet = accent = line;
    unknown.setAlphaF(0.35F);
}

TypePicture::TypePicture(QPainter& painter, const QWidget& widget, const Content& content)
    : painter_(painter),
      ink_(painter),
      font_(widget.font()),
      colors_(widget),
      content_(content),
      size_(widget.size()),
      thin_(ink_.length(1)),
      thick_(ink_.length(1.4)),
      names_(namesWidth(font_)),
      unit_((size_.width() - names_ - thick_) / TypeTiming::end),
      slope_(ink_.length(std::clamp(unit_ / 8, 2.0, 4.0))) {
    layOutRows(size_.height());
}

QSize TypePicture::minimumSize(const QFont& font, const Content& content) {
    const QFontMetricsF metrics(font);
    // The shortest eye holds the end of a change, a digit, and a dot that is sampled before the
    // edge.
    const qreal digit = (metrics.horizontalAdvance('0') + 2 * gap) / 0.7;
    const qreal idle = (metrics.horizontalAdvance(idleText) + gap) / 2; // at least two units
    const qreal caption = (metrics.horizontalAdvance(content.caption) + gap) /
                          (content.timing.deselected - content.timing.selected);
    const qreal waves = TypeTiming::end * std::max({digit, idle, caption});
    const qreal row = metrics.height() + 2 + typeRowGap;
    return QSizeF(std::max(namesWidth(metrics) + waves + 1, legendWidth(metrics, content)),
                  gap + row * rowCount + metrics.height() + gap)
               .toSize() +
           QSize(1, 1);
}

void TypePicture::layOutRows(qreal height) {
    const qreal pitch = (height - font_.height() - 2 * gap) / rowCount;
    const qreal wave = std::min(pitch - typeRowGap, 1.8 * font_.height());
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const qreal top =
            ink_.y(gap + static_cast<qreal>(i) * pitch + (pitch - typeRowGap - wave) / 2);
        const qreal bottom = ink_.y(top + wave);
        rows_[i] = {top, ink_.y((top + bottom) / 2), bottom};
    }
}

std::vector<TypePicture::LegendItem> TypePicture::legend(const Content& content) {
    std::vector<LegendItem> items;
    if (content.sameEdge)
        items = {{LegendMark::Valid, "data valid and toggled"},
                 {LegendMark::Read, "DO is read just before"}};
    else
        items = {{LegendMark::Valid, "data valid"},
                 {LegendMark::Toggled, "data toggled"},
                 {LegendMark::Read, "DO is read"}};
    const auto& out = content.timing.dataOut;
    if (std::any_of(out.begin(), out.end(),
                    [](const auto& window) { return window.bit == TypeTiming::noBit; }))
        items.push_back({LegendMark::AnyLevel, "any level"});
    return items;
}

qreal TypePicture::legendWidth(const QFontMetricsF& font, const Content& content) {
    qreal width = -legendGap;
    for (const LegendItem& item : legend(content))
        width += symbolWidth + font.horizontalAdvance(item.text) + legendGap;
    return width;
}

qreal TypePicture::x(double at) const {
    return ink_.x(names_ + at * unit_);
}

void TypePicture::paint() {
    using Shape = Stretch::Shape;
    const TypeTiming& timing = content_.timing;
    paintNames();
    paintChipSelect();
    paintData(rows_[DataIn], stretches(timing.dataIn, Shape::Low), 0);
    // What the chip does follows the edge.
    paintData(rows_[DataOut], stretches(timing.dataOut, Shape::Floating), slope_);
    paintEdgeLines();
    paintClock();
    paintBits(DataIn, timing.dataIn, 0);
    paintBits(DataOut, timing.dataOut, slope_);
    paintReads();
    paintLegend();
}

void TypePicture::paintNames() {
    painter_.setPen(colors_.line);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
        const Wave& wave = rows_[i];
        painter_.drawText(QRectF(0, wave.middle - font_.height(), names_, 2 * font_.height()),
                          Qt::AlignLeft | Qt::AlignVCenter, rowNames.at(i));
    }
}

void TypePicture::paintChipSelect() {
    const Wave& wave = rows_[ChipSelect];
    const TypeTiming& timing = content_.timing;
    const bool within = content_.selectedWhenHigh;
    level(wave, 0, timing.selected, !within);
    step(wave, timing.selected);
    level(wave, timing.selected, timing.deselected, within);
    step(wave, timing.deselected);
    level(wave, timing.deselected, TypeTiming::end, !within);
    textAt(x((timing.selected + timing.deselected) / 2.0), wave.top, wave.bottom - wave.top,
           content_.caption, colors_.quiet);
}

void TypePicture::paintClock() {
    const Wave& wave = rows_[Clock];
    const TypeTiming& timing = content_.timing;
    const bool idleHigh = timing.clock.front().edge == Edge::Falling;
    double from = 0;
    for (const auto& next : timing.clock) {
        level(wave, from, next.at, next.edge == Edge::Falling);
        step(wave, next.at);
        from = next.at;
    }
    level(wave, from, TypeTiming::end, idleHigh);
    for (const auto& next : timing.clock)
        if (next.valid)
            arrow({x(next.at) + half(), wave.middle + half()}, next.edge == Edge::Rising);
    paintIdle(0, timing.selected, idleHigh);
    paintIdle(std::max(from, static_cast<double>(timing.deselected)), TypeTiming::end, idleHigh);
}

void TypePicture::paintIdle(double from, double to, bool high) {
    const Wave& wave = rows_[Clock];
    const qreal height = wave.bottom - wave.top;
    textAt(x((from + to) / 2), high ? wave.top + thick_ : wave.top, height, idleText,
           colors_.quiet);
}

void TypePicture::paintEdgeLines() {
    const qreal top = ink_.y(rows_[Clock].top - typeRowGap / 3);
    const qreal bottom = ink_.y(rows_[DataOut].bottom + typeRowGap / 2);
    for (const auto& next : content_.timing.clock) {
        if (next.valid)
            ink_.vertical(x(next.at), top, bottom, thin_, colors_.accent);
        else if (next.toggled)
            ink_.dashed(x(next.at), top, bottom, thin_, colors_.quiet);
    }
}

TypePicture::Stretches TypePicture::stretches(const std::vector<TypeTiming::Window>& windows,
                                              Stretch::Shape outside) {
    Stretches all{{0, windows.front().from, outside}};
    for (const auto& window : windows)
        all.push_back({window.from, window.to, Stretch::Shape::Eye, window.bit});
    all.push_back({windows.back().to, TypeTiming::end, outside});
    return all;
}

std::vector<qreal> TypePicture::levels(const Wave& wave, Stretch::Shape shape) {
    switch (shape) {
    case Stretch::Shape::Low:
        return {wave.bottom};
    case Stretch::Shape::Floating:
        return {wave.middle};
    case Stretch::Shape::Eye:
        break;
    }
    return {wave.top, wave.bottom};
}

void TypePicture::paintData(const Wave& wave, const Stretches& data, qreal delay) {
    for (std::size_t n = 1; n + 1 < data.size(); ++n)
        fillEye(wave, data, n, delay);
    for (std::size_t n = 0; n < data.size(); ++n) {
        const bool isLast = n + 1 == data.size();
        const qreal from = n == 0 ? x(0) : x(data[n].from) + delay + slope_;
        const qreal to = isLast ? x(TypeTiming::end) + thick_ : x(data[n].to) + delay - slope_;
        for (const qreal y : levels(wave, data[n].shape))
            ink_.horizontal(from, to, y, thick_, colors_.line);
        if (!isLast)
            paintChange(wave, x(data[n].to) + delay, data[n].shape, data[n + 1].shape);
    }
}

void TypePicture::fillEye(const Wave& wave, const Stretches& data, std::size_t n, qreal delay) {
    const auto tip = [&](const Stretch& neighbour, qreal at, qreal outwards) {
        const bool isEye = neighbour.shape == Stretch::Shape::Eye;
        const qreal y = isEye ? wave.middle : levels(wave, neighbour.shape).front();
        return QPointF(at + delay + (isEye ? 0 : outwards), y);
    };
    const qreal left = x(data[n].from);
    const qreal right = x(data[n].to);
    QPolygonF shape{tip(data[n - 1], left, -slope_),       {left + delay + slope_, wave.top},
                    {right + delay - slope_, wave.top},    tip(data[n + 1], right, slope_),
                    {right + delay - slope_, wave.bottom}, {left + delay + slope_, wave.bottom}};
    shape.translate(half(), half());
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(data[n].bit == TypeTiming::noBit ? colors_.unknown : colors_.eye);
    painter_.drawPolygon(shape);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void TypePicture::paintChange(const Wave& wave, qreal at, Stretch::Shape before,
                              Stretch::Shape after) {
    const bool crosses = before == after;
    for (const qreal y1 : levels(wave, before))
        for (const qreal y2 : levels(wave, after)) {
            if (y1 != y2)
                slant({at - slope_, y1 + half()}, {at + slope_, y2 + half()});
            else if (!crosses)
                ink_.horizontal(at - slope_, at + slope_, y1, thick_, colors_.line);
        }
}

void TypePicture::paintBits(Row row, const std::vector<TypeTiming::Window>& windows, qreal delay) {
    const Wave& wave = rows_.at(row);
    for (const auto& window : windows) {
        if (window.bit == TypeTiming::noBit)
            continue;
        std::vector<Span> spans{{0, x(window.from) + delay + slope_ / 2},
                                {x(window.to) + delay - slope_ / 2, size_.width()}};
        for (const auto& next : content_.timing.clock)
            if (next.valid && next.at > window.from && next.at < window.to)
                spans.push_back({x(next.at), x(next.at) + thin_});
        if (row == DataOut)
            for (const auto& read : content_.timing.reads)
                if (read.at > window.from && read.at < window.to)
                    spans.push_back({x(read.at) - dotRadius, x(read.at) + dotRadius});
        std::sort(spans.begin(), spans.end(),
                  [](const Span& a, const Span& b) { return a.from < b.from; });
        textAt(widestRoom(spans), wave.top, wave.bottom - wave.top + thick_,
               QString::number(window.bit), colors_.line);
    }
}

void TypePicture::paintReads() {
    for (const auto& read : content_.timing.reads)
        dot({x(read.at), rows_[DataOut].middle + half()});
}

void TypePicture::paintLegend() {
    const qreal top = ink_.y(size_.height() - font_.height() - 2);
    qreal left = std::min(names_, size_.width() - legendWidth(font_, content_));
    for (const LegendItem& item : legend(content_)) {
        mark(item.mark, ink_.x(left + arrowReach), top);
        left += symbolWidth;
        painter_.setPen(colors_.line);
        painter_.drawText(QPointF(left, top + font_.ascent()), item.text);
        left += font_.horizontalAdvance(item.text) + legendGap;
    }
}

void TypePicture::mark(LegendMark mark, qreal x, qreal top) {
    const qreal bottom = ink_.y(top + font_.height());
    const QPointF middle(x + thin_ / 2, (top + bottom) / 2);
    switch (mark) {
    case LegendMark::Valid:
        ink_.vertical(x, top, bottom, thin_, colors_.accent);
        arrow(middle, validRises());
        break;
    case LegendMark::Toggled:
        ink_.dashed(x, top, bottom, thin_, colors_.quiet);
        break;
    case LegendMark::Read:
        dot(middle);
        break;
    case LegendMark::AnyLevel:
        ink_.vertical(x - ink_.length(4), ink_.y(middle.y() - 4), ink_.y(middle.y() + 4),
                      ink_.length(8), colors_.unknown);
        break;
    }
}

void TypePicture::level(const Wave& wave, double from, double to, bool high) {
    ink_.horizontal(x(from), x(to) + thick_, high ? wave.top : wave.bottom, thick_, colors_.line);
}

void TypePicture::step(const Wave& wave, double at) {
    ink_.vertical(x(at), wave.top, wave.bottom + thick_, thick_, colors_.line);
}

bool TypePicture::validRises() const {
    const auto& clock = content_.timing.clock;
    return std::any_of(clock.begin(), clock.end(),
                       [](const auto& next) { return next.valid && next.edge == Edge::Rising; });
}

void TypePicture::slant(QPointF from, QPointF to) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(QPen(colors_.line, thick_, Qt::SolidLine, Qt::SquareCap));
    painter_.drawLine(from, to);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void TypePicture::arrow(QPointF center, bool up) {
    const qreal tip = up ? -arrowReach : arrowReach;
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colors_.accent);
    painter_.drawPolygon(QPolygonF{center + QPointF(0, tip), center + QPointF(-arrowReach, -tip),
                                   center + QPointF(arrowReach, -tip)});
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void TypePicture::dot(QPointF center) {
    painter_.setRenderHint(QPainter::Antialiasing);
    painter_.setPen(Qt::NoPen);
    painter_.setBrush(colors_.accent);
    painter_.drawEllipse(center, dotRadius, dotRadius);
    painter_.setRenderHint(QPainter::Antialiasing, false);
}

void TypePicture::textAt(qreal center, qreal top, qreal height, const QString& text,
                         const QColor& color) {
    const qreal width = font_.horizontalAdvance(text) + gap;
    painter_.setPen(color);
    painter_.drawText(QRectF(center - width / 2, top, width, height),
                      Qt::AlignCenter | Qt::TextDontClip, text);
}

} // namespace bitlux::gui
