#include "gui/panels/flags_view.h"

#include "gui/panels/sheet.h"

#include <algorithm>

namespace bitlux::gui {

namespace {

const std::string& groupOf(const PlacedView& placed) {
    return placed.view->group.empty() ? placed.owner->title : placed.view->group;
}

} // namespace

void addViewGroups(const std::vector<PlacedView>& views, qreal scale, RowGrid& grid) {
    std::vector<std::string> groups;
    for (const PlacedView& placed : views)
        if (std::find(groups.begin(), groups.end(), groupOf(placed)) == groups.end())
            groups.push_back(groupOf(placed));
    for (const std::string& group : groups) {
        grid.addTitle(textOf(group), scale);
        for (const PlacedView& placed : views) {
            if (groupOf(placed) != group)
                continue;
            const chips::View& view = *placed.view;
            const RowGrid::Start start =
                grid.buttons(view.button, view.line.button, textOf(placed.owner->title));
            grid.addRow({start}, grid.bits(view.row.first, BitRow::Use::Shown));
        }
    }
    grid.alignCells();
}

FlagsView::FlagsView(const chips::Chip& chip, std::size_t outerPage, const PanelWidgets& widgets,
                     QWidget* parent)
    : QWidget(parent) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* sheet = new Sheet(this);
    layout->addWidget(sheet);
    auto* column = new QVBoxLayout(sheet->widget());
    column->setContentsMargins(0, 0, 0, 0);
    auto* grid = new RowGrid(widgets, sheet->widget());
    grid->setVerticalSpacing(0);
    column->addLayout(grid);
    column->addStretch(1);
    addViewGroups(flagsOn(chip, outerPage), 1.0, *grid);
}

} // namespace bitlux::gui
