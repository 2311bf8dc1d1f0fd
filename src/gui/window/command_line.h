#pragma once

#include <optional>
#include <string>

namespace bitlux::gui {

/// The arguments as they stand, joined by a blank: the name of one configuration file.
[[nodiscard]] std::string commandLineOf(int argc, const char* const* argv);

/// What to print instead of running, when the command line is "--help" or "--version" and no file
/// has that name.
[[nodiscard]] std::optional<std::string> answerTo(const std::string& commandLine,
                                                  const std::string& program);

} // namespace bitlux::gui
