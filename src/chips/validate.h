#pragma once

#include "chips/description.h"

namespace bitlux::chips {

/// The problems of a description; empty when it is valid.
Problems validate(const Chip& chip);

} // namespace bitlux::chips
