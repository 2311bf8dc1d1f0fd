#pragma once

#include "gui/wave_scale.h"
#include "platform/event.h"
#include "waveform/waveform.h"

#include <optional>

#include <QAbstractScrollArea>

namespace bitlux::gui {

/// The picture of a word with a cursor, to be zoomed and scrolled by mouse and keyboard.
class WaveCanvas : public QAbstractScrollArea {
public:
    explicit WaveCanvas(QWidget* parent);

    /// Shows a word, as far zoomed and scrolled as the one before; as a whole when that was.
    void show(Waveform waveform);
    [[nodiscard]] const Waveform& waveform() const { return waveform_; }

    void fit();
    /// `factor` above 1 shows more of less, around the cursor when it is in sight.
    void zoom(double factor);

    [[nodiscard]] std::optional<std::int64_t> cursor() const { return cursor_; }
    void setCursor(std::int64_t at);
    /// "3.000 µs: CS 0, CLK 1, DI 1, DO 1"; empty without a cursor.
    [[nodiscard]] QString readout() const;

    Event<> cursorMoved;
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
    [[nodiscard]] std::vector<std::int64_t> edges() const;
    void setScale(double nsPerPixel, double from);
    void zoomAround(double factor, double pixel);
    void updateScrollBars();
    void moveToEdge(bool forward);
    void showCursor();
    void placeCursor(double pixel);
    void describe();
    void paintFocus(QPainter& painter) const;

    Waveform waveform_;
    WaveScale scale_;
    bool fitted_ = true;
    bool scrollsItself_ = false; ///< the bars follow the scale, not the other way round
    std::optional<std::int64_t> cursor_;
};

} // namespace bitlux::gui
