#pragma once

#include "apps/chip/register_options.h"

#include <ostream>

namespace bitlux {

/// The exit code when a value is not what it was to be: a write did not take, snapshots differ.
inline constexpr int differsError = 3;

/// Runs one of the commands of addRegisterCommands. Returns the exit code of the program.
int runRegisterCommand(const RegisterOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
