#pragma once

#include "gui/crisp_ink.h"
#include "gui/wave_scale.h"
#include "waveform/waveform.h"

#include <optional>

#include <QFontMetricsF>
#include <QWidget>

namespace bitlux::gui {

/// One painting of a waveform on a widget, in its font and palette: a row a line under each other,
/// bits and words written over DI and DO, a ruler below.
class WavePicture {
public:
    struct Content {
        const Waveform& waveform;
        WaveScale scale; ///< of what stands right of the names
        std::optional<std::int64_t> cursor;
        qreal scrolled = 0; ///< pixels of the rows above the widget
    };

    WavePicture(QPainter& painter, const QWidget& widget, const Content& content);

    void paint();

    /// Width of the column of names.
    [[nodiscard]] static qreal namesWidth(const QFont& font, const Waveform& waveform);
    /// Of all rows and the ruler; less and the text would be cut.
    [[nodiscard]] static qreal height(const QFont& font, const Waveform& waveform);

private:
    /// Of a line: bits and word stand above its wave, if it has any.
    struct Row {
        qreal word, bits, top, bottom;
    };
    struct Colors {
        explicit Colors(const QWidget& widget);
        QColor base, line, quiet, grid, accent, onAccent, band, unknown;
    };

    void layOutRows();
    [[nodiscard]] qreal x(double at) const;
    [[nodiscard]] qreal pixels(std::int64_t from, std::int64_t to) const;

    void paintRuler();
    void paintWave(const WaveLine& line, const Row& row);
    void paintLevel(const Row& row, Level level, qreal from, qreal to);
    void paintCaption();
    [[nodiscard]] qreal cell() const;
    void paintGuides();
    void paintSamples();
    void paintBits(std::size_t line, WaveBit::Window WaveBit::*window, const std::string& word);
    void paintBit(const Row& row, const WaveBit::Window& window, const QString& text);
    void paintCursor();
    void paintNames();
    void textIn(qreal from, qreal to, qreal top, qreal height, const QString& text,
                const QColor& color);

    QPainter& painter_;
    CrispInk ink_;
    QFont widgetFont_;
    QFontMetricsF font_;
    Colors colors_;
    const Content& content_;
    const Waveform& waveform_;
    QSizeF size_;
    qreal thin_;
    qreal thick_;
    qreal names_;
    qreal ruler_ = 0; ///< where it begins
    std::vector<Row> rows_;
};

} // namespace bitlux::gui
