#pragma once

#include <ostream>

namespace CLI {
class App;
}

namespace bitlux {

/// Arguments of `bitlux list`.
struct ListOptions {
    bool names = false; ///< without descriptions
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addListCommand(CLI::App& app, ListOptions& options);

/// Prints the devices of the virtual bench, one a line. Returns the exit code of the program.
int runListCommand(const ListOptions& options, std::ostream& output);

} // namespace bitlux
