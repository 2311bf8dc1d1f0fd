#include "platform/linux/running_marker.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view prefix = "running-";

/// Locks a file, and makes sure that it was not removed meanwhile.
bool lock(int descriptor) {
    struct stat status {};
    return ::flock(descriptor, LOCK_EX | LOCK_NB) == 0 && ::fstat(descriptor, &status) == 0 &&
           status.st_nlink > 0;
}

/// Whether the owner of a marker has ended; the marker is removed then.
bool takeAway(const fs::path& file) {
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor < 0)
        return false;
    const bool taken = lock(descriptor) && ::unlink(file.c_str()) == 0;
    ::close(descriptor);
    return taken;
}

} // namespace

RunningMarker::RunningMarker(const std::string& folder) {
    // Another process may take it for one that was left, before it is locked.
    constexpr int attempts = 5;
    for (int i = 0; i < attempts; ++i) {
        file_ = fmt::format("{}/{}XXXXXX", folder, prefix);
        descriptor_ = ::mkostemp(file_.data(), O_CLOEXEC);
        if (descriptor_ < 0)
            break;
        if (lock(descriptor_)) {
            name_ = file_.substr(folder.size() + 1 + prefix.size());
            return;
        }
        ::unlink(file_.c_str());
        ::close(descriptor_);
    }
    throw Failure(Failure::Kind::File,
                  fmt::format("No file can be made in \"{}\": {}.", folder, std::strerror(errno)));
}

RunningMarker::~RunningMarker() {
    if (!leftBehind_)
        ::unlink(file_.c_str());
    ::close(descriptor_);
}

std::vector<std::string> RunningMarker::takeLeft(const std::string& folder) {
    std::vector<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(prefix) && takeAway(entry->path()))
            names.push_back(name.substr(prefix.size()));
    }
    return names;
}

} // namespace bitlux
