#pragma once

#include "gui/waveform/wave_picture.h"
#include "platform/event.h"
#include "waveform/wave_row.h"

#include <optional>

#include <QAbstractScrollArea>

namespace bitlux::gui {

/// The picture of a word, or of several in a row, with two cursors; zoomed and scrolled by mouse
/// and keyboard. Positions are those on the axis of the row.
class WaveCanvas : public QAbstractScrollArea {
public:
    explicit WaveCanvas(QWidget* parent);

    /// Shows words one after the other. The last one is the current word: zoomed and scrolled like
    /// the one before; the whole row if the whole was visible.
    void show(std::vector<Waveform> words);
    /// The names by which words are decoded.
    void setNames(const WaveNames& names);
    [[nodiscard]] const WaveRow& row() const { return row_; }
    /// The last of the words; one without lines when there is none.
    [[nodiscard]] const Waveform& waveform() const;

    void fit();
    /// A `factor` above 1 zooms in, around the cursor if it is visible.
    void zoom(double factor);

    [[nodiscard]] std::optional<std::int64_t> cursor() const { return cursor_; }
    void setCursor(std::int64_t at);
    /// The second cursor.
    [[nodiscard]] std::optional<std::int64_t> mark() const { return mark_; }
    void setMark(std::optional<std::int64_t> at);
    /// Moves the cursor to the next or previous edge of the chosen line, or of all lines.
    void moveToEdge(bool forward);
    /// The line (an index in the row) on whose edges the cursor moves; nothing for all lines.
    [[nodiscard]] std::optional<std::size_t> line() const { return line_; }
    void chooseLine(std::optional<std::size_t> line);

    /// "3.000 µs: CS 0, CLK 1, DI 1, DO 1", preceded by the word if there are several; empty
    /// without a cursor.
    [[nodiscard]] QString readout() const;
    /// "Δ 2.000 µs, 500 kHz": the real time from the second cursor to the cursor; empty without
    /// both.
    [[nodiscard]] QString difference() const;

    Event<> cursorMoved; ///< or the second one
    Event<> lineChosen;
    Event<int> wordWanted; ///< relative to the current word

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] double begin() const; ///< of the visible range, in nanoseconds
    [[nodiscard]] double end() const;
    [[nodiscard]] double width() const; ///< of the waves, in pixels
    /// In order, without repetitions; of the chosen line alone if requested.
    [[nodiscard]] std::vector<std::int64_t> edges(bool ofChosen = false) const;
    [[nodiscard]] std::optional<std::int64_t> edgeFrom(std::optional<std::int64_t> at,
                                                       bool forward) const;
    void moveWith(std::int64_t distance);
    void setScale(double nsPerPixel, double from);
    void zoomAround(double factor, double pixel);
    void updateScrollBars();
    void moveMarkToEdge(bool forward);
    void stepLine(int lines);
    void bringIntoSight(std::int64_t at);
    [[nodiscard]] std::int64_t placeAt(double pixel) const;
    void takeMouse(const QMouseEvent& event);
    void describe();
    [[nodiscard]] QString namesText() const;
    void paintFocus(QPainter& painter) const;

    WaveRow row_;
    std::vector<qreal> rowEnds_; ///< as painted last
    WaveNames names_;
    WaveScale scale_;
    bool fitted_ = true;
    bool scrollsItself_ = false; ///< the scroll bars are being set from the scale
    std::optional<std::int64_t> cursor_;
    std::optional<std::int64_t> mark_;
    std::optional<std::size_t> line_;
};

} // namespace bitlux::gui
