#pragma once

#include "apps/command_run.h"

#include <ostream>
#include <string>

namespace bitlux {

/// The options of `bitlux replay`.
struct ReplayOptions {
    CommandOptions command;
    std::string file;     ///< a journal
    bool isFast = false;  ///< without pauses
    bool updates = false; ///< the journal takes the new answers
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addReplayCommand(CLI::App& app, ReplayOptions& options);

/// Sends again what a journal has, and reports which answers differ. Returns the exit code of the
/// program.
int runReplayCommand(const ReplayOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
