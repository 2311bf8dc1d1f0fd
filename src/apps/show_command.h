#pragma once

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// Arguments of `bitlux show`.
struct ShowOptions {
    std::string file;
    bool batches = false; ///< only the names of Batches
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addShowCommand(CLI::App& app, ShowOptions& options);

/// Prints the content of a configuration file: settings, Quick Commands, Commands To Send, Batches.
/// Returns the exit code of the program: 1 after a message on `errors`.
int runShowCommand(const ShowOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
