#pragma once

#include "gui/panels/panel_extras.h"
#include "panels/common/auto_reads.h"

namespace bitlux::gui {

/// The boxes that choose what is read repeatedly, by their groups.
[[nodiscard]] QWidget* makeAutoReads(AutoReads& reads, Binder& binder, QWidget* parent);

/// A page "automatic reads", and above all pages the boxes that turn them on and that record;
/// nothing for a panel without such reads.
void addAutoReadExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
