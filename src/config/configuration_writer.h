#pragma once

#include "config/configuration_settings.h"
#include "session/session.h"

#include <string>
#include <vector>

namespace bitlux {

/// The whole content of a configuration file: the settings, the Quick Commands, the commands to
/// send, the Batches, and the settings at the end, as keys that older programs skip. Raises Failure
/// (Conversion), naming the place, for a text with a character that a file cannot hold.
std::string configurationText(const std::vector<ConfigurationSetting>& settings,
                              const Session& session,
                              const std::vector<std::string>& commandsToSend,
                              const std::vector<ConfigurationSetting>& atTheEnd);

} // namespace bitlux
