#pragma once

#include "gui/widgets/binder.h"
#include "panels/common/label_row.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <QLabel>

namespace bitlux::gui {

class BitLines;

/// A bit as a cell of a register's row: its number above its caption, lit by the back colour of the
/// label that it is bound to.
class BitCell : public QLabel {
public:
    BitCell(int bit, bool clickable, QWidget* parent);

    void setNumber(int bit) { bit_ = bit; }
    /// Marks the left edge of a field.
    void setFieldTop(bool top) { isFieldTop_ = top; }

    /// Shows the value beside the number: for rows whose zeros have a colour too.
    void showValue(bool one);

    /// The bit differs from what it was or should be.
    void setMarked(bool marked);

    /// Gives its number, its caption and its mark, which may have changed, to assistive tools.
    void nameAfterCaption();

    /// The neighbours, which the arrow keys reach.
    void setNeighbours(BitCell* left, BitCell* right);

    /// The width at which the longest part of the caption fits, if necessary in narrow letters.
    [[nodiscard]] int readableWidth() const;
    [[nodiscard]] QSize sizeHint() const override { return hint_; }
    /// The height of a caption of more than two lines.
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize minimumSizeHint() const override {
        return {hint_.width() / 2, hint_.height()};
    }

protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void updateName();
    void measure(); ///< after each change of the font
    void paintEdges(QPainter& painter) const;
    void paintMark(QPainter& painter) const;
    /// The caption; without blanks, it may break after each underscore.
    [[nodiscard]] QString breakable() const;
    /// Width of the longest part without a break, in pixels.
    [[nodiscard]] int longestPart() const;
    /// Width of letters, in percent, with which the longest part fits in this number of pixels, or
    /// the smallest width.
    [[nodiscard]] int stretchIn(int width) const;

    int bit_;
    QFont numberFont_;
    int numberHeight_ = 0;
    int character_ = 0; ///< average width of a character of the caption
    QSize hint_;
    std::optional<bool> shownValue_;
    QString named_; ///< the caption in its accessible name
    bool isFieldTop_ = false;
    bool isMarked_ = false;
    mutable QString measured_; ///< the caption of the measured part
    mutable int longest_ = 0;  ///< 0 for none
    BitCell* left_ = nullptr;
    BitCell* right_ = nullptr;
};

/// The bits of a word, the highest on the left, followed by its hexadecimal value. Only one cell is
/// in the tab order.
class BitRow : public QWidget {
public:
    enum class Use { Shown, Clicked };

    BitRow(const LabelRow& row, Use use, Binder& binder, QWidget* parent);

    [[nodiscard]] int size() const { return static_cast<int>(cells_.size()); }
    /// The number of the cell for bit 0; the others follow.
    void numberFrom(int first);
    /// Separates the fields: bit i of `tops` says that a field begins with cell i, from the left.
    void markFields(std::uint64_t tops);
    /// The smallest width at which a cell can be read; rows with the same value wrap at the same
    /// width.
    [[nodiscard]] int leastCellWidth() const;
    /// The width at which every caption fits.
    [[nodiscard]] int readableCellWidth() const;
    void setLeastCellWidth(int width);
    /// The largest number of cells in a line, whatever the width.
    void setLongestLine(int bits);
    /// The width for the value after the bits.
    [[nodiscard]] int valueWidth() const { return value_->minimumWidth(); }
    void setValueWidth(int width) { value_->setMinimumWidth(width); }

private:
    void makeCells(Use use, Binder& binder);
    void measureCells();
    void showValue();

    std::optional<LabelRow> row_; ///< nothing when its form was destroyed
    std::vector<BitCell*> cells_; ///< bit 0 first
    BitLines* lines_;
    QLabel* value_;
    bool isTwoColoured_;
    Subscription flushed_;
    Subscription formGoing_;
};

} // namespace bitlux::gui
