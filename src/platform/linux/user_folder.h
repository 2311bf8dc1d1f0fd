#pragma once

#include <string>
#include <vector>

namespace bitlux {

/// The folder of the user's own configuration files, `$XDG_CONFIG_HOME/bitlux-forge` or
/// `~/.config/bitlux-forge`; empty when the user has no home. It may not exist.
std::string userFolder();

/// The folder of state that survives the program, `$XDG_STATE_HOME/bitlux-forge` or
/// `~/.local/state/bitlux-forge`; empty when the user has no home. It may not exist.
std::string stateFolder();

/// The folders of data, `bitlux-forge` in `$XDG_DATA_HOME` (`~/.local/share`) first, which is empty
/// when the user has no home, and in those of `$XDG_DATA_DIRS` (`/usr/local/share`, `/usr/share`).
/// They may not exist.
std::vector<std::string> dataFolders();

} // namespace bitlux
