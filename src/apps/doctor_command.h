#pragma once

#include "apps/machine.h"

#include <ostream>

namespace CLI {
class App;
}

namespace bitlux {

/// Arguments of `bitlux doctor`.
struct DoctorOptions {
    bool udev = false; ///< print a rule file instead
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addDoctorCommand(CLI::App& app, DoctorOptions& options);

/// Prints a line for everything that sending over a real bus requires, with a remedy where
/// something is wrong, and a verdict. Returns the exit code of the program: 0 when a bus can be
/// used.
int runDoctorCommand(const DoctorOptions& options, const Machine& machine, std::ostream& output,
                     std::ostream& errors);

} // namespace bitlux
