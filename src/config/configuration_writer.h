#pragma once

#include "config/configuration_settings.h"
#include "session/session.h"

#include <string>
#include <vector>

namespace bitlux {

/// The whole content of a configuration file: the settings, the Quick Commands, the commands to
/// send and the Batches. Raises Failure (Conversion), naming the place, for a text that holds a
/// character which a file cannot.
std::string configurationText(const std::vector<ConfigurationSetting>& settings,
                              const Session& session,
                              const std::vector<std::string>& commandsToSend);

} // namespace bitlux
