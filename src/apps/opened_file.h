#pragma once

#include "program/program.h"

#include <string>

namespace bitlux {

/// Opens a configuration file like File, Open. Raises Failure (File) when there is no file of this
/// name, and Failure with file, line and reason when it is damaged; for a file that is no
/// configuration a box is shown.
void openConfiguration(Program& program, const std::string& fileName);

} // namespace bitlux
