#include "platform/linux/user_folder.h"

#include <cstdlib>

namespace bitlux {

namespace {

constexpr const char* ownFolder = "/bitlux-forge";

} // namespace

std::string userFolder() {
    // a relative name counts as none
    if (const char* config = std::getenv("XDG_CONFIG_HOME"); config != nullptr && *config == '/')
        return std::string(config) + ownFolder;
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        return {};
    return std::string(home) + "/.config" + ownFolder;
}

} // namespace bitlux
