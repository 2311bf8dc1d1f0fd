#pragma once

#include "session/quick_command_table.h"

#include <cstddef>
#include <string>

namespace bitlux {

/// How many Quick Commands have a name: those of the session, and those of a configuration file, 0
/// when it cannot be read.
std::size_t namedCommands(const QuickCommandTable& table);
std::size_t namedCommandsIn(const std::string& fileName);

/// Copies a file to its name with "~" appended, replacing an older copy, and returns that name.
/// Raises Failure (File) when it cannot.
std::string keepOldFile(const std::string& fileName);

} // namespace bitlux
