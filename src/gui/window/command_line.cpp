#include "gui/window/command_line.h"

#include "program/program.h"
#include "program/version.h"

#include <fmt/format.h>

namespace bitlux::gui {

std::string commandLineOf(int argc, const char* const* argv) {
    std::string line;
    for (int i = 1; i < argc; ++i)
        line += (i > 1 ? " " : "") + std::string(argv[i]);
    return line;
}

std::optional<std::string> answerTo(const std::string& commandLine, const std::string& program) {
    if (Program::ValidFile(commandLine))
        return std::nullopt;
    if (commandLine == "--version")
        return fmt::format("{} {}\n", program, programVersion);
    if (commandLine == "--help")
        return fmt::format("usage: {} [FILE.spi]\n\n"
                           "Opens the window, and the configuration file that is named. The whole\n"
                           "command line is its name, also with blanks in it.\n",
                           program);
    return std::nullopt;
}

} // namespace bitlux::gui
