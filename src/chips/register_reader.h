#pragma once

#include "chips/table_reader.h"

namespace bitlux::chips {

/// A title as part of a name: letters and digits remain, everything else becomes an underscore.
std::string identifier(std::string_view title);

/// Row, captions and colours; `captions` and `first` are the defaults.
Row readRow(TableReader& table, std::vector<std::string> captions, ControlName first);

/// The line of a sequence for a write, a view or a command.
Line readLine(TableReader& table, const std::string& name, const ControlName& button);

/// A register with its fields and views.
Register readRegister(const Node& node, Problems& problems);

} // namespace bitlux::chips
