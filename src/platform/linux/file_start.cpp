#include "platform/linux/file_start.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace bitlux {

namespace {

/// Fills `bytes` up to its size and shortens it to what was there. Returns errno, or 0.
int fill(int descriptor, std::string& bytes) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t size = ::read(descriptor, bytes.data() + filled, bytes.size() - filled);
        if (size < 0 && errno == EINTR)
            continue;
        if (size < 0)
            return errno;
        if (size == 0)
            break;
        filled += static_cast<std::size_t>(size);
    }
    bytes.resize(filled);
    return 0;
}

} // namespace

FileStart readFileStart(const std::string& fileName, std::size_t most) {
    const int descriptor = ::open(fileName.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (descriptor < 0)
        return {.bytes = {}, .error = errno};
    FileStart start;
    start.bytes.resize(most + 1); // one more byte shows whether the file is longer
    start.error = fill(descriptor, start.bytes);
    ::close(descriptor);
    if (start.error != 0)
        return {.bytes = {}, .error = start.error};
    start.isWhole = start.bytes.size() <= most;
    if (!start.isWhole)
        start.bytes.resize(most);
    return start;
}

} // namespace bitlux
