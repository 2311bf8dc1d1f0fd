#pragma once

#include "chips/description.h"
#include "chips/document.h"

namespace bitlux::chips {

Variants readVariants(const Node& node, Problems& problems);

/// Without a list of buttons every view of `chip` is read. Its registers must have been read
/// before.
AutomaticReads readAutomaticReads(const Node& node, const Chip& chip, Problems& problems);

OwnControl readOwnControl(const Node& node, Problems& problems);
Sheet readSheet(const Node& node, Problems& problems);

/// Without a list of pages there is one for each part that `chip` has.
PanelLayout readPanel(const Node& node, const Chip& chip, Problems& problems);

} // namespace bitlux::chips
