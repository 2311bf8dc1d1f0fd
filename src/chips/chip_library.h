#pragma once

#include "chips/chip_reader.h"
#include "chips/description.h"

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux::chips {

/// A chip of the product by name, read when it is first asked for. Raises Failure (OutOfRange) that
/// tells near names for any other name.
ChipPtr embeddedChip(std::string_view name);

/// All problems of a file, one a line.
std::string describe(const Problems& problems, const std::string& file);

} // namespace bitlux::chips
