#pragma once

#include "program/program.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// Names and values for display.
using SettingRows = std::vector<std::pair<std::string, std::string>>;

/// The settings in the configuration dialog, without the bus.
SettingRows settingRows(Program& program);

} // namespace bitlux
