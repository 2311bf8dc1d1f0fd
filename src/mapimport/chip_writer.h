#pragma once

#include "chips/problem.h"
#include "mapimport/fitted_chip.h"
#include "mapimport/import_options.h"

#include <string>

namespace bitlux::mapimport {

/// The text of a chip's file, no longer than one may be: a long one has no notes, and registers at
/// its end are left out, which `notes` tell. Keys of `[word]` without a value stand there as
/// comments. `source` is the file that was imported.
std::string chipText(const FittedChip& chip, const ImportOptions& options,
                     const std::string& source, chips::Problems& notes);

} // namespace bitlux::mapimport
