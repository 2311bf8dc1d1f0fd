#pragma once

#include "program/word_settings.h"

#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// The shape of the words of a command: from a configuration file, and from options, which override
/// the file.
struct WordOptions {
    std::string config; ///< a configuration file, or empty
    WordSettings settings;
};

/// Adds the options to a command.
void addWordOptions(CLI::App& command, WordOptions& options);
/// The same without length, type and order, for the words of a chip, which have those of the chip.
void addWiringOptions(CLI::App& command, WordOptions& options);

} // namespace bitlux
