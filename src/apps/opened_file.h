#pragma once

#include "program/program.h"

#include <string>

namespace bitlux {

/// Opens a configuration file as File, Open does. Raises Failure (File) when there is none of this
/// name, and Failure with file, line and reason when it is damaged; what is no configuration ends
/// in a box.
void openConfiguration(Program& program, const std::string& fileName);

} // namespace bitlux
