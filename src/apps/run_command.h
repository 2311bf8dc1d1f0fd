#pragma once

#include "apps/command_run.h"

#include <optional>
#include <ostream>
#include <string>

namespace bitlux {

/// Arguments of `bitlux run`.
struct RunOptions {
    CommandOptions command;
    std::string file;
    std::optional<std::string> batch; ///< without one the Commands To Send
    bool passesPauses = false;
    std::string expect;                 ///< a file with the answers that are expected, or empty
    std::string junit;                  ///< the report of what has come, or empty
    bool stops = false;                 ///< at the first mismatch
    std::optional<std::string> pinWord; ///< hexadecimal; sent with changes of the dongle's pins
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addRunCommand(CLI::App& app, RunOptions& options);

/// Opens the file and plays its commands through the forms. A message box ends the run, its text on
/// `errors`; so does a signal, with an orderly end. Returns the exit code of the program.
int runRunCommand(const RunOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
