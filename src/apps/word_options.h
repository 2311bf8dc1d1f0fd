#pragma once

#include "program/word_settings.h"

#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// How the words of a command are shaped: as a configuration file says, and as options say, which
/// go before the file.
struct WordOptions {
    std::string config; ///< a configuration file, or empty
    WordSettings settings;
};

/// Adds the options to a command.
void addWordOptions(CLI::App& command, WordOptions& options);
/// The same without length, type and order, for the words of a chip, which have those of the chip.
void addWiringOptions(CLI::App& command, WordOptions& options);

} // namespace bitlux
