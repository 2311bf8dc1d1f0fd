#pragma once

#include "chips/description.h"
#include "chips/document.h"

namespace bitlux::chips {

/// Reads `[sequence]`.
SequenceStyle readSequence(const Node& node, Problems& problems);

} // namespace bitlux::chips
