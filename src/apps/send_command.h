#pragma once

#include "apps/command_run.h"
#include "apps/expected_answers.h"
#include "apps/word_options.h"

#include <ostream>
#include <string>
#include <vector>

namespace bitlux {

/// Arguments of `bitlux send`.
struct SendOptions {
    CommandOptions command;
    WordOptions shape;
    ExpectOptions expect;
    std::vector<std::string> words; ///< "-" for those of the standard input
};

/// Adds the command to the command line; `options` is filled when it is parsed.
CLI::App& addSendCommand(CLI::App& app, SendOptions& options);

/// Sends the words through the forms and prints a line for each, sent and received. An answer that
/// is not as expected is reported on `errors`, and the words go on. Returns the exit code of the
/// program.
int runSendCommand(const SendOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
