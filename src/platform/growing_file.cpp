#include "platform/growing_file.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

GrowingFile::GrowingFile(std::string fileName)
    : fileName_(std::move(fileName)),
      // A pipe must not make the program wait.
      descriptor_(::open(fileName_.c_str(),
                         O_WRONLY | O_APPEND | O_CREAT | O_TRUNC | O_CLOEXEC | O_NONBLOCK, 0666)) {
    if (descriptor_ < 0)
        fail(errno);
}

GrowingFile::~GrowingFile() {
    ::close(descriptor_);
}

void GrowingFile::add(std::string_view lines) {
    std::string_view rest = lines;
    while (!rest.empty()) {
        const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
        if (written > 0)
            rest.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            break;
    }
    if (rest.empty())
        return;
    const int error = errno;
    const auto begun = static_cast<off_t>(lines.size() - rest.size());
    struct stat now {};
    if (::fstat(descriptor_, &now) == 0 && S_ISREG(now.st_mode) && now.st_size >= begun &&
        ::ftruncate(descriptor_, now.st_size - begun) != 0)
        fail(errno);
    fail(error);
}

void GrowingFile::fail(int error) const {
    throw Failure(Failure::Kind::File, fmt::format("The file \"{}\" cannot be written: {}.",
                                                   fileName_, std::strerror(error)));
}

} // namespace bitlux
