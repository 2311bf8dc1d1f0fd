#pragma once

#include "gui/panels/panel_places.h"
#include "gui/panels/row_grid.h"

#include <cstddef>

#include <QWidget>

namespace bitlux::gui {

/// Rows of views, under the headings of their groups or of their registers.
void addViewGroups(const std::vector<PlacedView>& views, qreal scale, RowGrid& grid);

/// A page of flags: a row of bits for each of its views.
class FlagsView : public QWidget {
public:
    FlagsView(const chips::Chip& chip, std::size_t outerPage, const PanelWidgets& widgets,
              QWidget* parent);
};

} // namespace bitlux::gui
