#pragma once

#include "gui/widgets/binder.h"
#include "panels/common/label_row.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <QLabel>

namespace bitlux::gui {

class BitLines;

/// A bit as a cell of a register's row: its number above its caption, lit by the back colour of
/// the label that it is tied to.
class BitCell : public QLabel {
public:
    BitCell(int bit, bool clickable, QWidget* parent);

    void setNumber(int bit) { bit_ = bit; }
    /// A field begins here, from the left.
    void setFieldTop(bool top) { isFieldTop_ = top; }

    /// Tells the value beside the number: for rows whose zeros have a colour too.
    void tellValue(bool one);

    /// The bit differs from what it was or should be.
    void setMarked(bool marked);

    /// Tells its number, its caption and its mark, which may have
    /// changed, to assistive technology.
    void nameAfterCaption();

    /// Arrow keys lead to these.
    void setNeighbours(BitCell* left, BitCell* right);

    /// In which the longest part of the caption finds room, if need be in narrow letters.
    [[nodiscard]] int readableWidth() const;
    [[nodiscard]] QSize sizeHint() const override { return hint_; }
    /// Of a caption that wants more than two lines.
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {hint_.width() / 2, hint_.height()};
    }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void tellName();
    void measure(); ///< anew with each font
    void paintEdges(QPainter& painter) const;
    void paintMark(QPainter& painter) const;
    /// The caption, with a place to break it behind each line in it where it has no blank.
    [[nodiscard]] QString breakable() const;
    /// Of the longest part that is not broken, in pixels.
    [[nodiscard]] int longestPart() const;
    /// Width of letters, in percent, in which the longest part has room in so many pixels, or the
    /// least there is.
    [[nodiscard]] int stretchIn(int width) const;

    int bit_;
    QFont numberFont_;
    int numberHeight_ = 0;
    int character_ = 0; ///< width of one in the caption, on average
    QSize hint_;
    std::optional<bool> told_;
    QString named_; ///< the caption that its accessible name tells
    bool isFieldTop_ = false;
    bool isMarked_ = false;
    mutable QString measured_; ///< the caption whose longest part is known
    mutable int longest_ = 0;  ///< 0 for none
    BitCell* left_ = nullptr;
    BitCell* right_ = nullptr;
};

/// The bits of a word, the highest on the left, and its hexadecimal value behind them. Only one
/// cell is on the way of the Tab key.
class BitRow : public QWidget {
public:
    enum class Use { Shown, Clicked };

    BitRow(const LabelRow& row, Use use, Binder& binder, QWidget* parent);

    [[nodiscard]] int size() const { return static_cast<int>(cells_.size()); }
    /// Bit 0 is told as this one, and the others follow.
    void numberFrom(int first);
    /// Parts the fields: bit i of `tops` tells that a field begins with cell i, from the left.
    void markFields(std::uint64_t tops);
    /// Narrower than this a cell cannot be read; rows of one width break where they have the same.
    [[nodiscard]] int leastCellWidth() const;
    /// In which each caption finds room.
    [[nodiscard]] int readableCellWidth() const;
    void setLeastCellWidth(int width);
    /// No line is longer than this, however much room there is.
    void setLongestLine(int bits);
    /// Room for the value behind the bits.
    [[nodiscard]] int valueWidth() const { return value_->minimumWidth(); }
    void setValueWidth(int width) { value_->setMinimumWidth(width); }

private:
    void makeCells(Use use, Binder& binder);
    void measureCells();
    void showValue();

    std::optional<LabelRow> row_; ///< nothing when its form has gone
    std::vector<BitCell*> cells_; ///< bit 0 first
    BitLines* lines_;
    QLabel* value_;
    bool isTwoColoured_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
