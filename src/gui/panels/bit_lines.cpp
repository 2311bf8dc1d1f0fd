#include "gui/panels/bit_lines.h"

#include <algorithm>

#include <QWidget>

namespace bitlux::gui {

namespace {

constexpr int byteBits = 8;
constexpr int cellLineSpacing = 2; ///< pixels

} // namespace

BitLines::~BitLines() = default;

void BitLines::setLeastWidth(int width) {
    leastWidth_ = width;
    invalidate();
}

void BitLines::setMostCells(int cells) {
    mostCells_ = cells;
    invalidate();
}

void BitLines::invalidate() {
    measuredCell_ = -1;
    QLayout::invalidate();
}

QLayoutItem* BitLines::itemAt(int index) const {
    return index >= 0 && index < count() ? cells_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* BitLines::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    QLayoutItem* item = cells_[static_cast<std::size_t>(index)].release();
    cells_.erase(cells_.begin() + index);
    return item;
}

int BitLines::cellsInLine(int width) const {
    for (const int cells : {count(), 4 * byteBits, 2 * byteBits})
        if (cells <= std::min(count(), mostCells_) && cells * leastWidth_ <= width)
            return std::max(cells, leastCells());
    return leastCells();
}

int BitLines::leastCells() const {
    return std::min(byteBits, mostCells_);
}

int BitLines::lineHeight(int width) const {
    const int cell = width / cellsInLine(width);
    if (measuredCell_ == cell)
        return measuredHeight_;
    measuredCell_ = cell;
    measuredHeight_ = 0;
    for (const auto& item : cells_)
        measuredHeight_ = std::max(measuredHeight_, item->widget()->heightForWidth(cell));
    return measuredHeight_;
}

int BitLines::usualHeight() const {
    return cells_.empty() ? 0 : cells_.front()->sizeHint().height();
}

int BitLines::heightForWidth(int width) const {
    const int lines = (count() - 1) / cellsInLine(width) + 1;
    return lines * (lineHeight(width) + cellLineSpacing) - cellLineSpacing;
}

QSize BitLines::sizeHint() const {
    const int cell = cells_.empty() ? 0 : cells_.front()->sizeHint().width();
    return {std::min(std::max(count(), leastCells()), 2 * byteBits) * cell, usualHeight()};
}

QSize BitLines::minimumSize() const {
    const int least = cells_.empty() ? 0 : cells_.front()->minimumSize().width();
    return {leastCells() * least, usualHeight()};
}

void BitLines::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    const int inLine = cellsInLine(rect.width());
    const int cellHeight = lineHeight(rect.width());
    const int lines = (count() - 1) / inLine + 1;
    int place = inLine * lines - count(); // of the first cell; the cells before it stay empty
    for (const auto& cell : cells_) {
        const int column = place % inLine;
        const int left = rect.left() + rect.width() * column / inLine;
        const int right = rect.left() + rect.width() * (column + 1) / inLine;
        const int top = rect.top() + place / inLine * (cellHeight + cellLineSpacing);
        cell->setGeometry(QRect(left, top, right - left, cellHeight));
        ++place;
    }
}

} // namespace bitlux::gui
