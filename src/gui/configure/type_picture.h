#pragma once

#include "gui/configure/type_timing.h"
#include "gui/desktop/crisp_ink.h"

#include <array>

#include <QFontMetricsF>
#include <QWidget>

namespace bitlux::gui {

/// Paints the timing of a type once, in a widget's font and palette.
class TypePicture {
public:
    struct Content {
        TypeTiming timing;
        bool sameEdge = false;         ///< data is valid and toggled on one edge
        bool selectedWhenHigh = false; ///< level of chip select within the word
        QString caption;               ///< inside the chip select line
    };

    TypePicture(QPainter& painter, const QWidget& widget, const Content& content);

    void paint();

    /// Below this size, text would be cut.
    [[nodiscard]] static QSize minimumSize(const QFont& font, const Content& content);

private:
    enum Row : std::uint8_t { ChipSelect, Clock, DataIn, DataOut };
    static constexpr int rowCount = 4;

    enum class LegendMark : std::uint8_t { Valid, Toggled, Read, AnyLevel };
    struct LegendItem {
        LegendMark mark;
        const char* text;
    };
    struct Wave {
        qreal top, middle, bottom;
    };
    /// The state of a data line for some time.
    struct Stretch {
        enum class Shape : std::uint8_t { Low, Floating, Eye };
        int from;
        int to;
        Shape shape;
        int bit = TypeTiming::noBit;
    };
    using Stretches = std::vector<Stretch>;

    struct Colors {
        explicit Colors(const QWidget& widget);
        QColor line, quiet, accent, eye, unknown;
    };

    static std::vector<LegendItem> legend(const Content& content);
    static qreal legendWidth(const QFontMetricsF& font, const Content& content);
    static Stretches stretches(const std::vector<TypeTiming::Window>& windows,
                               Stretch::Shape outside);

    void layOutRows(qreal height);
    [[nodiscard]] qreal x(double at) const;
    [[nodiscard]] qreal half() const { return thick_ / 2; }
    [[nodiscard]] static std::vector<qreal> levels(const Wave& wave, Stretch::Shape shape);

    [[nodiscard]] bool validRises() const;

    void paintNames();
    void paintChipSelect();
    void paintClock();
    void paintIdle(double from, double to, bool high);
    void paintEdgeLines();
    void paintData(const Wave& wave, const Stretches& data, qreal delay);
    void fillEye(const Wave& wave, const Stretches& data, std::size_t n, qreal delay);
    void paintChange(const Wave& wave, qreal at, Stretch::Shape before, Stretch::Shape after);
    void paintBits(Row row, const std::vector<TypeTiming::Window>& windows, qreal delay);
    void paintReads();
    void paintLegend();

    void level(const Wave& wave, double from, double to, bool high);
    void step(const Wave& wave, double at);
    void slant(QPointF from, QPointF to);
    void arrow(QPointF center, bool up);
    void dot(QPointF center);
    void mark(LegendMark mark, qreal x, qreal top);
    void textAt(qreal center, qreal top, qreal height, const QString& text, const QColor& color);

    QPainter& painter_;
    CrispInk ink_;
    QFontMetricsF font_;
    Colors colors_;
    const Content& content_;
    QSizeF size_;
    qreal thin_;
    qreal thick_;
    qreal names_; ///< width of the column of names
    qreal unit_;
    qreal slope_; ///< half the width of a data line's change
    std::array<Wave, rowCount> rows_{};
};

} // namespace bitlux::gui
