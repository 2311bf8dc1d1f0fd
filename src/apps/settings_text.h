#pragma once

#include "program/program.h"

#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// Names and values for a reader's eye.
using SettingRows = std::vector<std::pair<std::string, std::string>>;

/// The settings as the configuration dialog holds them, but for the bus.
SettingRows settingRows(Program& program);

} // namespace bitlux
