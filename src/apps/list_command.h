#pragma once

#include "apps/machine.h"

#include <ostream>

namespace CLI {
class App;
}

namespace bitlux {

/// Arguments of `bitlux list`.
struct ListOptions {
    bool names = false; ///< of the devices alone
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addListCommand(CLI::App& app, ListOptions& options);

/// Prints the devices of the virtual bench and the buses of the machine, one a line. Returns the
/// exit code of the program.
int runListCommand(const ListOptions& options, const Machine& machine, std::ostream& output);

} // namespace bitlux
