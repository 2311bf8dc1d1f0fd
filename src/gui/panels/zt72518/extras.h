#pragma once

#include "gui/panels/panel_extras.h"

/// What the parts of the ZT7251x family's panel add to its window. Nothing is added for a part that
/// a panel does not have.
namespace bitlux::gui {

void addDongleVersionExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);
/// The page of the diagram, and the button for the test mode.
void addDiagramExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
