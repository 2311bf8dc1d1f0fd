#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// Ends the help of a command with lines to try, and with the exit codes.
void addExamples(CLI::App& command, const std::vector<std::string>& lines);

} // namespace bitlux
