#include "platform/linux/user_marker_files.h"

#include "platform/letters.h"
#include "platform/linux/user_folder.h"

#include <filesystem>
#include <system_error>

namespace bitlux {

bool UserMarkerFiles::present(std::string_view name) const {
    std::error_code error; // what cannot be looked at is not there
    std::filesystem::directory_iterator entry(userFolder(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        std::error_code unknown;
        if (equalIgnoringCase(entry->path().filename().native(), name) && entry->exists(unknown) &&
            !entry->is_directory(unknown))
            return true;
    }
    return false;
}

} // namespace bitlux
