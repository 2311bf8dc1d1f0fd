#pragma once

#include "gui/desktop/crisp_ink.h"
#include "gui/waveform/wave_scale.h"
#include "waveform/wave_row.h"
#include "waveform/word_labels.h"

#include <memory>
#include <optional>

#include <QFontMetricsF>
#include <QWidget>

namespace bitlux::gui {

inline constexpr qreal waveGap = 8; ///< logical pixels around texts
inline constexpr qreal rulerMark = 5;

/// The names for the words of a picture.
struct WaveNames {
    std::shared_ptr<const WordDecoder> decoder{}; ///< null for no names
    /// The word before the first one, if it is known.
    std::optional<std::uint64_t> before{};
};

/// Paints words once, in a widget's font and palette: a row for each line, bits and words above DI
/// and DO, and below a ruler with the time since each word's begin. Between two words is a band,
/// with its duration if that fits. With names, the register is above the word and its fields are
/// below their bits; only visible words are decoded.
class WavePicture {
public:
    struct Content {
        const WaveRow& row;
        WaveScale scale; ///< of the area right of the names
        std::optional<std::int64_t> cursor;
        std::optional<std::int64_t> mark; ///< the second cursor
        std::optional<std::size_t> line;  ///< that the user chose
        qreal scrolled = 0;               ///< pixels of the rows above the widget
        WaveNames names{};
    };

    WavePicture(QPainter& painter, const QWidget& widget, const Content& content);

    void paint();

    /// Width of the column of names.
    [[nodiscard]] static qreal namesWidth(const QFont& font, const std::vector<WaveLine>& lines);
    /// Height of this number of rows and the ruler; with less, text would be cut.
    [[nodiscard]] static qreal height(const QFont& font, std::size_t lines, bool isNamed);
    /// The lower ends of the rows.
    [[nodiscard]] std::vector<qreal> rowEnds() const;

private:
    /// Height of a line: name, word and bits are above its wave, if it has any, and fields below.
    struct Row {
        qreal name, word, bits, top, bottom, fields, end;
    };
    struct Colors {
        explicit Colors(const QWidget& widget);
        QColor base, line, quiet, grid, accent, onAccent, band, unknown;
    };

    void layOutRows();
    [[nodiscard]] qreal x(double at) const;
    [[nodiscard]] qreal pixels(std::int64_t from, std::int64_t to) const;

    void paintGaps();
    void paintRuler();
    qreal paintRulerOf(std::size_t word, std::int64_t step, qreal free);
    void paintWave(const WaveLine& line, const Row& row);
    void paintLevel(const Row& row, Level level, qreal from, qreal to);
    void paintCaption(const WaveRow::Word& word);
    [[nodiscard]] qreal cell(const Waveform& waveform) const;
    void paintGuides(const WaveRow::Word& word);
    void paintSamples(const WaveRow::Word& word);
    void paintBits(const WaveRow::Word& word, std::size_t line, WaveBit::Window WaveBit::*window,
                   const std::string& text);
    void paintNamesOf(std::size_t word);
    void paintLabels(const WaveRow::Word& word, std::size_t line, WaveBit::Window WaveBit::*window,
                     const WordLabels& labels);
    void paintField(const Row& row, qreal from, qreal to, const QString& text);
    void paintBit(const Row& row, qreal from, qreal to, const QString& text);
    void paintCursor(std::int64_t place, bool isMark);
    void paintNames();
    void paintName(std::size_t line);
    void textIn(qreal from, qreal to, qreal top, qreal height, const QString& text,
                const QColor& color);

    QPainter& painter_;
    CrispInk ink_;
    QFont widgetFont_;
    QFontMetricsF font_;
    Colors colors_;
    const Content& content_;
    const WaveRow& row_;
    QSizeF size_;
    qreal thin_;
    qreal thick_;
    qreal names_;
    qreal ruler_ = 0; ///< its upper edge
    std::vector<Row> rows_;
};

} // namespace bitlux::gui
