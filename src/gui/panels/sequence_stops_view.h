#pragma once

#include "gui/panels/panel_extras.h"

namespace bitlux::gui {

/// The points at which a run stops, on the page of the sequence; nothing for a panel without them.
void addStopExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
