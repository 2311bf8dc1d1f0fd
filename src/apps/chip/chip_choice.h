#pragma once

#include "chips/chip_library.h"

#include <string>

namespace bitlux {

/// Resolves "NAME|FILE" of a command line: a file when it has a "/" or ends in ".toml", else the
/// chip of this name. Raises Failure like ChipLibrary::chip; for a file the text has all problems.
chips::ChipPtr chosenChip(chips::ChipLibrary& library, const std::string& nameOrFile);

} // namespace bitlux
