#pragma once

#include "chips/problem.h"
#include "mapimport/fitted_chip.h"
#include "mapimport/import_options.h"
#include "mapimport/source_map.h"

namespace bitlux::mapimport {

/// Makes of a register map what a chip's file can say: titles that differ, addresses and widths
/// that fit the words as far as these are known. What is changed or left out is reported in
/// `notes`.
FittedChip fitted(const SourceMap& map, const ImportOptions& options, chips::Problems& notes);

} // namespace bitlux::mapimport
