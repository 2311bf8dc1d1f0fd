#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
}

namespace bitlux {

/// What a command leaves beside its lines: names of files, empty for none.
struct OutputOptions {
    std::string trace; ///< "-" for the standard output
    std::string log;   ///< likewise
    std::string vcd;
    std::string sr;
    std::string journal;
    bool json = false; ///< objects for the lines
};

/// Adds the options to a command. The result raises CLI::ValidationError for options that do not
/// go together; to be called when all are parsed.
[[nodiscard]] std::function<void()> addOutputOptions(CLI::App& command, OutputOptions& options);

} // namespace bitlux
