#pragma once

#include "apps/chip/register_options.h"
#include "apps/expected_answers.h"

#include <ostream>

namespace bitlux {

/// Runs one of the commands of addRegisterCommands. Returns the exit code of the program.
int runRegisterCommand(const RegisterOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
