#include "platform/linux/user_folder.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

namespace bitlux {

namespace {

constexpr const char* ownFolder = "/bitlux-forge";

/// In the folder that a variable names, or in one of the user's home.
std::string folderIn(const char* variable, const char* inHome) {
    // a relative name counts as none
    if (const char* folder = std::getenv(variable); folder != nullptr && *folder == '/')
        return std::string(folder) + ownFolder;
    const char* home = std::getenv("HOME");
    if (home == nullptr || *home == '\0')
        return {};
    return std::string(home) + inHome + ownFolder;
}

} // namespace

std::string userFolder() {
    return folderIn("XDG_CONFIG_HOME", "/.config");
}

std::string stateFolder() {
    return folderIn("XDG_STATE_HOME", "/.local/state");
}

std::vector<std::string> dataFolders() {
    std::vector<std::string> folders{folderIn("XDG_DATA_HOME", "/.local/share")};
    const char* variable = std::getenv("XDG_DATA_DIRS");
    std::string_view rest =
        variable != nullptr && *variable != '\0' ? variable : "/usr/local/share:/usr/share";
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(':'), rest.size());
        if (rest.starts_with('/'))
            folders.push_back(std::string(rest.substr(0, end)) + ownFolder);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return folders;
}

} // namespace bitlux
