#pragma once

#include "apps/command_run.h"
#include "apps/expected_answers.h"
#include "apps/word_options.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// The options of those commands of `bitlux chip` that work on registers.
struct RegisterOptions {
    enum class Task : std::uint8_t { None, Read, Write, Dump, Diff, Load, Decode, Watch };

    Task task = Task::None;
    CommandOptions command;
    WordOptions shape;
    std::string chip;               ///< a name or a file
    std::vector<std::string> names; ///< registers, changes, files or words
    std::string file;               ///< a snapshot to write or to load
    ExpectOptions expect;           ///< its patterns are FIELD=VALUE
    bool all = false;               ///< also what a read clears
    bool verify = false;            ///< read back what was written
    bool fromReset = false;         ///< fields that are not named get their reset values
    std::string raw;                ///< the whole value of the register to write
    std::int64_t every = 0;         ///< nanoseconds between two reads of Watch
    int times = 0;                  ///< reads of Watch, 0 for no end
};

/// Adds the commands to `chip`.
void addRegisterCommands(CLI::App& chip, RegisterOptions& options);

} // namespace bitlux
