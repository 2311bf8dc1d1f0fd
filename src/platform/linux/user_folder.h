#pragma once

#include <string>

namespace bitlux {

/// The folder of the user's own configuration files, `$XDG_CONFIG_HOME/bitlux-forge` or
/// `~/.config/bitlux-forge`; empty when the user has no home. It need not exist.
std::string userFolder();

} // namespace bitlux
