#pragma once

#include <optional>
#include <string>

namespace bitlux::gui {

/// The arguments joined by blanks, otherwise unchanged: the name of one configuration file.
[[nodiscard]] std::string commandLineOf(int argc, const char* const* argv);

/// What to print instead of running, when the command line is "--help" or "--version" and no file
/// has that name.
[[nodiscard]] std::optional<std::string> answerTo(const std::string& commandLine,
                                                  const std::string& program);

} // namespace bitlux::gui
