#pragma once

#include "config/configuration_settings.h"
#include "session/session.h"

#include <string>
#include <vector>

namespace bitlux {

/// The whole content of a configuration file: the settings, the Quick Commands, the commands to
/// send, the Batches, and the settings that stand at the end, as keys that older programs pass
/// over. Raises Failure (Conversion), naming the place, for a text that holds a character which a
/// file cannot.
std::string configurationText(const std::vector<ConfigurationSetting>& settings,
                              const Session& session,
                              const std::vector<std::string>& commandsToSend,
                              const std::vector<ConfigurationSetting>& atTheEnd);

} // namespace bitlux
