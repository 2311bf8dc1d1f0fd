#pragma once

#include "gui/panel_extras.h"

/// What the parts of the ZT72516's panel add to its window. Nothing is added for a part that a
/// panel has not.
namespace bitlux::gui {

void addWordDisplayExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
