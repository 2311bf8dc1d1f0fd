#pragma once

#include "chips/problem.h"
#include "mapimport/fitted_chip.h"
#include "mapimport/import_options.h"

#include <cstddef>
#include <string>

namespace bitlux::mapimport {

/// The text of a chip's file.
struct ChipText {
    std::string text;
    std::size_t registers = 0; ///< that are in it
};

/// Writes a chip's file, no longer than one may be: a long one has no notes, and captions in place
/// of fields of one bit; if that is not enough, the last registers are left out. `notes` say so.
/// Keys of `[word]` without a value become comments. `source` is the file that was
/// imported.
ChipText chipText(const FittedChip& chip, const ImportOptions& options, const std::string& source,
                  chips::Problems& notes);

} // namespace bitlux::mapimport
