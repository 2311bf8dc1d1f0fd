#pragma once

#include "apps/chip/import_command.h"
#include "apps/chip/register_options.h"

#include <cstdint>
#include <ostream>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// Arguments of `bitlux chip`.
struct ChipOptions {
    enum class Task : std::uint8_t { List, Show, Check };

    Task task = Task::List;
    bool names = false;  ///< of chips or registers alone
    bool fields = false; ///< print what `chip write` takes alone
    std::string chip;    ///< a name or a file
    ImportCommandOptions import;
    RegisterOptions registers;
};

/// Adds the command with its own commands; `options` is filled when one of them is parsed.
CLI::App& addChipCommand(CLI::App& app, ChipOptions& options);

/// Lists the chips, shows the registers of one, checks or imports a file, or works on registers.
/// Returns the exit code of the program: 1 after a message on `errors`.
int runChipCommand(const ChipOptions& options, std::ostream& output, std::ostream& errors);

} // namespace bitlux
