#include "apps/examples.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

namespace bitlux {

void addExamples(CLI::App& command, const std::vector<std::string>& lines) {
    std::string text = "Examples:\n";
    for (const std::string& line : lines)
        text += fmt::format("  $ {}\n", line);
    command.footer(text + "\nExit codes:\n"
                          "  0  all is well\n"
                          "  1  a message says what is wrong\n"
                          "  2  the command line cannot be understood\n"
                          "  129, 130, 143  SIGHUP, SIGINT or SIGTERM has ended it");
}

} // namespace bitlux
