#pragma once

#include <memory>
#include <vector>

#include <QLayout>

namespace bitlux::gui {

/// The cells of a word, the highest bit first: in one line if they fit, else in lines of 32, 16 or
/// 8. The lines are aligned on the right, so that bits of equal weight are below each other; fewer
/// than eight bits keep their position in the byte.
class BitLines : public QLayout {
public:
    BitLines() = default;
    ~BitLines() override;

    /// The smallest width at which a cell can be read.
    void setLeastWidth(int width);
    [[nodiscard]] int leastWidth() const { return leastWidth_; }
    /// The largest number of cells in a line, whatever the width.
    void setMostCells(int cells);

    void addItem(QLayoutItem* item) override { cells_.emplace_back(item); }
    [[nodiscard]] int count() const override { return static_cast<int>(cells_.size()); }
    [[nodiscard]] QLayoutItem* itemAt(int index) const override;
    QLayoutItem* takeAt(int index) override;

    [[nodiscard]] Qt::Orientations expandingDirections() const override { return Qt::Horizontal; }
    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSize() const override;
    void setGeometry(const QRect& rect) override;
    void invalidate() override;

private:
    [[nodiscard]] int cellsInLine(int width) const;
    /// The minimum width of a line.
    [[nodiscard]] int leastCells() const;
    /// The height of lines of this width: that of the highest cell.
    [[nodiscard]] int lineHeight(int width) const;
    [[nodiscard]] int usualHeight() const;

    std::vector<std::unique_ptr<QLayoutItem>> cells_;
    int mostCells_ = 64; // no limit
    int leastWidth_ = 0;
    mutable int measuredCell_ = -1; ///< width of cells whose height is known
    mutable int measuredHeight_ = 0;
};

} // namespace bitlux::gui
