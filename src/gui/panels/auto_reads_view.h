#pragma once

#include "gui/panels/panel_extras.h"
#include "panels/common/auto_reads.h"

namespace bitlux::gui {

/// The boxes that choose what is read again and again, by their groups.
[[nodiscard]] QWidget* makeAutoReads(AutoReads& reads, Binder& binder, QWidget* parent);

/// A page "automatic reads", and above all pages what turns them on and what records; nothing for a
/// panel without such reads.
void addAutoReadExtras(PanelForm& form, const PanelWidgets& widgets, PanelExtras& extras);

} // namespace bitlux::gui
