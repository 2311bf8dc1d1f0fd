#pragma once

#include "chips/problem.h"
#include "mapimport/import_options.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace bitlux::mapimport {

/// What became of a register map.
struct ImportedMap {
    std::string text; ///< of a chip's file; empty when there are problems
    std::size_t registers = 0;
    chips::Problems notes; ///< what was changed or left out; places are in the source
    chips::Problems problems;
};

/// Makes a chip's file of a register map in IP-XACT (IEEE 1685-2009 and 1685-2014) or CMSIS-SVD.
/// `file` is its name, for the first line. The file passes chips::readChip once `[word]` is
/// complete and right.
ImportedMap importMap(std::string_view source, const std::string& file,
                      const ImportOptions& options);

} // namespace bitlux::mapimport
