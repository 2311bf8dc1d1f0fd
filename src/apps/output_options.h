#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// The output files of a command: names, empty for none.
struct OutputOptions {
    std::string trace; ///< "-" for the standard output
    std::string log;   ///< likewise
    std::string vcd;
    std::string sr;
    std::string journal;
    bool json = false; ///< prints objects instead of lines
};

/// Adds the options to a command. The result raises CLI::ValidationError for options that exclude
/// each other; to be called after parsing.
[[nodiscard]] std::function<void()> addOutputOptions(CLI::App& command, OutputOptions& options);

} // namespace bitlux
