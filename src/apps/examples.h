#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// Ends the help of a command with examples and the exit codes.
void addExamples(CLI::App& command, const std::vector<std::string>& lines);

} // namespace bitlux
