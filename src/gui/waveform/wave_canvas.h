#pragma once

#include "gui/waveform/wave_picture.h"
#include "platform/event.h"
#include "waveform/wave_row.h"

#include <optional>

#include <QAbstractScrollArea>

namespace bitlux::gui {

/// The picture of a word, or of several in a row, with two cursors; to be zoomed and scrolled by
/// mouse and keyboard. Places are those on the axis of the row.
class WaveCanvas : public QAbstractScrollArea {
public:
    explicit WaveCanvas(QWidget* parent);

    /// Shows words one after the other, of which the last is the one that is looked at: as far
    /// zoomed and scrolled in it as in the one before; all as a whole when they were.
    void show(std::vector<Waveform> words);
    /// By whose names the words are told.
    void setNames(const WaveNames& names);
    [[nodiscard]] const WaveRow& row() const { return row_; }
    /// The last of the words; one without lines when there is none.
    [[nodiscard]] const Waveform& waveform() const;

    void fit();
    /// `factor` above 1 shows more of less, around the cursor when it is in sight.
    void zoom(double factor);

    [[nodiscard]] std::optional<std::int64_t> cursor() const { return cursor_; }
    void setCursor(std::int64_t at);
    /// The second cursor.
    [[nodiscard]] std::optional<std::int64_t> mark() const { return mark_; }
    void setMark(std::optional<std::int64_t> at);
    /// Moves the cursor to the next or previous edge of the chosen line, of all when none is.
    void moveToEdge(bool forward);
    /// The line (an index of the row's) whose edges are gone to; nothing for those of all.
    [[nodiscard]] std::optional<std::size_t> line() const { return line_; }
    void chooseLine(std::optional<std::size_t> line);

    /// "3.000 µs: CS 0, CLK 1, DI 1, DO 1", with the word in front where there are several; empty
    /// without a cursor.
    [[nodiscard]] QString readout() const;
    /// "Δ 2.000 µs, 500 kHz": the real time from the second cursor to the cursor; empty without
    /// both.
    [[nodiscard]] QString difference() const;

    Event<> cursorMoved; ///< or the second one
    Event<> lineChosen;
    Event<int> wordWanted; ///< the one so many words on

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
    [[nodiscard]] double begin() const; ///< of what can be shown, in nanoseconds
    [[nodiscard]] double end() const;
    [[nodiscard]] double width() const; ///< of the waves, in pixels
    /// In order, each once; of the chosen line alone when that is wanted.
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
    std::vector<qreal> rowEnds_; ///< as they were painted last
    WaveNames names_;
    WaveScale scale_;
    bool fitted_ = true;
    bool scrollsItself_ = false; ///< the bars follow the scale, not the other way round
    std::optional<std::int64_t> cursor_;
    std::optional<std::int64_t> mark_;
    std::optional<std::size_t> line_;
};

} // namespace bitlux::gui
