#pragma once

#include "chips/zt72518/registers.h"
#include "gui/register_page_view.h"
#include "panels/zt72518/panel_form.h"

namespace bitlux::gui {

/// What a page of the panel ZT72518 has beside its registers' rows.
[[nodiscard]] PageParts pageParts(const oldchips::zt72518::Page& page, zt72518::PanelForm& form,
                                  const PanelWidgets& widgets);

} // namespace bitlux::gui
