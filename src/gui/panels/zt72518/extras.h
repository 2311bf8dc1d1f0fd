#pragma once

#include "gui/panels/panel_extras.h"

/// What the parts of the ZT7251x family's panel add to its window. Nothing is added for a part that
/// a panel has not.
namespace bitlux::gui {

void addDongleVersionExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);
/// The diagram's page, and the way to the test side of the chip.
void addDiagramExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
