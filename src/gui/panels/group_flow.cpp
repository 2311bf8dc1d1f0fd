#include "gui/panels/group_flow.h"

#include <algorithm>
#include <utility>

namespace bitlux::gui {

namespace {

constexpr int groupSpacing = 8;
constexpr int belowGroup = 10;

} // namespace

GroupFlow::~GroupFlow() = default;

QLayoutItem* GroupFlow::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].get() : nullptr;
}

QLayoutItem* GroupFlow::takeAt(int index) {
    if (index < 0 || index >= count())
        return nullptr;
    const auto place = items_.begin() + index;
    QLayoutItem* item = place->release();
    items_.erase(place);
    return item;
}

std::vector<GroupFlow::Row> GroupFlow::rowsIn(int width) const {
    std::vector<Row> rows;
    int left = 0;
    for (const auto& item : items_) {
        if (item->isEmpty()) // hidden
            continue;
        const int wanted = item->sizeHint().width();
        if (rows.empty() || left < groupSpacing + wanted) {
            rows.emplace_back();
            left = width - wanted;
        } else {
            left -= groupSpacing + wanted;
        }
        rows.back().push_back(item.get());
    }
    return rows;
}

std::vector<int> GroupFlow::widthsIn(const Row& row, int width) const {
    const int groups = static_cast<int>(row.size());
    int spare = width - (groups - 1) * groupSpacing;
    for (const QLayoutItem* item : row)
        spare -= item->sizeHint().width();
    std::vector<int> widths;
    for (int i = 0; i < groups; ++i) {
        // The last one gets the remainder, so that all rows end at the same position.
        int share = i + 1 < groups ? spare / groups : spare - spare / groups * (groups - 1);
        if (spare_ == Spare::Left)
            share = std::min(spare, 0);
        widths.push_back(row[static_cast<std::size_t>(i)]->sizeHint().width() + share);
    }
    return widths;
}

int GroupFlow::heightOf(const Row& row, const std::vector<int>& widths) {
    int height = 0;
    for (std::size_t i = 0; i < row.size(); ++i)
        height = std::max(height, row[i]->hasHeightForWidth() ? row[i]->heightForWidth(widths[i])
                                                              : row[i]->sizeHint().height());
    return height;
}

/// The groups of an incomplete last row are placed below those above them, if they fit there.
int GroupFlow::widthOfRest(const Row& row, int width, std::size_t above) {
    int wanted = -groupSpacing;
    for (const QLayoutItem* item : row)
        wanted += item->sizeHint().width() + groupSpacing;
    const int between = static_cast<int>(above - 1) * groupSpacing;
    const int group = (width - between) / static_cast<int>(above);
    const int groups = static_cast<int>(row.size());
    return std::clamp(groups * group + (groups - 1) * groupSpacing, std::min(wanted, width), width);
}

std::vector<GroupFlow::Line> GroupFlow::linesIn(int width) const {
    std::vector<Row> rows = rowsIn(width);
    std::vector<Line> lines;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isRest = spare_ == Spare::Shared && i > 0 && i + 1 == rows.size() &&
                            rows[i].size() < lines.back().row.size();
        std::vector<int> widths = widthsIn(
            rows[i], isRest ? widthOfRest(rows[i], width, lines.back().row.size()) : width);
        const int height = heightOf(rows[i], widths);
        lines.push_back({std::move(rows[i]), std::move(widths), height});
    }
    return lines;
}

int GroupFlow::heightForWidth(int width) const {
    int height = -belowGroup;
    for (const Line& line : linesIn(width))
        height += line.height + belowGroup;
    return std::max(height, 0);
}

QSize GroupFlow::sizeHint() const {
    QSize size = minimumSize();
    if (spare_ == Spare::Shared)
        return size;
    int width = -groupSpacing;
    for (const auto& item : items_)
        width += item->sizeHint().width() + groupSpacing;
    return size.expandedTo({width, 0});
}

QSize GroupFlow::minimumSize() const {
    QSize size;
    for (const auto& item : items_)
        size = size.expandedTo(item->hasHeightForWidth() ? item->minimumSize() : item->sizeHint());
    return size;
}

void GroupFlow::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    int top = rect.top();
    for (const Line& line : linesIn(rect.width())) {
        int left = rect.left();
        for (std::size_t i = 0; i < line.row.size(); ++i) {
            line.row[i]->setGeometry(QRect(left, top, line.widths[i], line.height));
            left += line.widths[i] + groupSpacing;
        }
        top += line.height + belowGroup;
    }
}

} // namespace bitlux::gui
