#pragma once

#include "chips/description.h"

namespace bitlux::chips {

/// What is wrong with a description; nothing when all of it can be used.
Problems validate(const Chip& chip);

} // namespace bitlux::chips
