#include "gui/group_flow.h"

#include <algorithm>

namespace bitlux::gui {

namespace {

constexpr int beside = 8;
constexpr int below = 10;

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
        const int wanted = item->sizeHint().width();
        if (rows.empty() || left < beside + wanted) {
            rows.emplace_back(&item, 1);
            left = width - wanted;
        } else {
            rows.back() = Row(rows.back().data(), rows.back().size() + 1);
            left -= beside + wanted;
        }
    }
    return rows;
}

int GroupFlow::heightOf(Row row, int width) {
    int height = 0;
    for (const auto& item : row) {
        const QSize wanted = item->sizeHint();
        const bool isCut = wanted.width() > width && item->hasHeightForWidth();
        height = std::max(height, isCut ? item->heightForWidth(width) : wanted.height());
    }
    return height;
}

/// Groups that are left over stand below those above them, if they find room there.
int GroupFlow::widthOfRest(Row row, int width, std::size_t above) {
    int wanted = -beside;
    for (const auto& item : row)
        wanted += item->sizeHint().width() + beside;
    const int between = static_cast<int>(above - 1) * beside;
    const int group = (width - between) / static_cast<int>(above);
    const int groups = static_cast<int>(row.size());
    return std::clamp(groups * group + (groups - 1) * beside, std::min(wanted, width), width);
}

int GroupFlow::heightForWidth(int width) const {
    int height = -below;
    for (const Row row : rowsIn(width))
        height += heightOf(row, width) + below;
    return std::max(height, 0);
}

QSize GroupFlow::sizeHint() const {
    QSize size = minimumSize();
    if (spare_ == Spare::Shared)
        return size;
    int width = -beside;
    for (const auto& item : items_)
        width += item->sizeHint().width() + beside;
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
    const std::vector<Row> rows = rowsIn(rect.width());
    int top = rect.top();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const bool isRest = i > 0 && i + 1 == rows.size() && rows[i].size() < rows[i - 1].size();
        const int width =
            isRest ? widthOfRest(rows[i], rect.width(), rows[i - 1].size()) : rect.width();
        const int height = heightOf(rows[i], rect.width());
        place(rows[i], QRect(rect.left(), top, width, height));
        top += height + below;
    }
}

void GroupFlow::place(Row row, QRect room) const {
    const int groups = static_cast<int>(row.size());
    int spare = room.width() - (groups - 1) * beside;
    for (const auto& item : row)
        spare -= item->sizeHint().width();
    int left = room.left();
    for (int i = 0; i < groups; ++i) {
        // What does not divide goes to the last, so that all rows end at the same place.
        int share = i + 1 < groups ? spare / groups : spare - spare / groups * (groups - 1);
        if (spare_ == Spare::Left)
            share = std::min(spare, 0);
        const auto& item = row[static_cast<std::size_t>(i)];
        const int width = item->sizeHint().width() + share;
        item->setGeometry(QRect(left, room.top(), width, room.height()));
        left += width + beside;
    }
}

} // namespace bitlux::gui
