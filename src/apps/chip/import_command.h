#pragma once

#include "mapimport/import_options.h"

#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// The options of `bitlux chip import`.
struct ImportCommandOptions {
    bool isGiven = false;
    std::string source; ///< a register map
    std::string output; ///< a file of a chip; empty for the standard output
    mapimport::ImportOptions import;
};

/// Adds the command to `chip`.
void addImportCommand(CLI::App& chip, ImportCommandOptions& options);

/// Imports a register map; what was changed, and what is left to do, is printed on `errors`.
/// Returns the exit code of the program. Raises Failure when the file cannot be written.
int runImportCommand(const ImportCommandOptions& options, std::ostream& output,
                     std::ostream& errors);

} // namespace bitlux
