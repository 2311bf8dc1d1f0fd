#pragma once

#include "chips/chip_library.h"

#include <string>

namespace bitlux {

/// What "NAME|FILE" on a command line stands for: a file when it has a "/" or ends in ".toml", else
/// the chip of this name. Raises Failure as ChipLibrary::chip does; of a file it tells all
/// problems.
chips::ChipPtr chosenChip(chips::ChipLibrary& library, const std::string& nameOrFile);

} // namespace bitlux
