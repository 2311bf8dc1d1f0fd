#include "platform/text_file.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail(const std::string& fileName, int error) {
    throw Failure(Failure::Kind::File, fmt::format("The file \"{}\" cannot be written: {}.",
                                                   fileName, std::strerror(error)));
}

/// A file beside its target that takes the target's place, or goes away when that fails.
class Replacement {
public:
    Replacement(std::string shownName, const fs::path& target)
        : shownName_(std::move(shownName)),
          target_(target),
          temporary_(target.string() + ".XXXXXX"),
          descriptor_(::mkostemp(temporary_.data(), O_CLOEXEC)) {
        if (descriptor_ < 0)
            fail(shownName_, errno);
    }

    ~Replacement() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
        if (!finished_)
            ::unlink(temporary_.c_str());
    }

    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    void writeLine(std::string_view line) {
        write(line);
        write("\r\n");
    }

    void write(std::string_view content) {
        buffer_.append(content);
        if (buffer_.size() > flushSize)
            flush();
    }

    void finish() {
        flush();
        takeOverPermissions();
        if (::fsync(descriptor_) != 0)
            fail(shownName_, errno);
        const int closed = ::close(descriptor_);
        descriptor_ = -1;
        if (closed != 0 || ::rename(temporary_.c_str(), target_.c_str()) != 0)
            fail(shownName_, errno);
        finished_ = true;
    }

private:
    static constexpr std::size_t flushSize = 1 << 16;

    void flush() {
        std::string_view rest = buffer_;
        while (!rest.empty()) {
            const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
            if (written < 0 && errno != EINTR)
                fail(shownName_, errno);
            if (written > 0)
                rest.remove_prefix(static_cast<std::size_t>(written));
        }
        buffer_.clear();
    }

    void takeOverPermissions() const {
        struct stat old {};
        mode_t mode = 0;
        const bool exists = ::stat(target_.c_str(), &old) == 0;
        if (exists) {
            mode = old.st_mode & 07777U;
        } else {
            const mode_t mask = ::umask(0);
            ::umask(mask);
            mode = 0666U & ~mask;
        }
        // The owner too, where that is allowed: a log saved with sudo stays the user's.
        if (exists && ::fchown(descriptor_, old.st_uid, old.st_gid) != 0 && errno != EPERM)
            fail(shownName_, errno);
        if (::fchmod(descriptor_, mode) != 0)
            fail(shownName_, errno);
    }

    std::string shownName_;
    fs::path target_;
    std::string temporary_;
    std::string buffer_;
    int descriptor_;
    bool finished_ = false;
};

/// The file that a name leads to; a device, a pipe or a folder cannot be replaced.
fs::path targetOf(const std::string& fileName) {
    constexpr int mostLinks = 40; // as many as the system follows
    std::error_code error;
    fs::path name = fileName;
    // A link whose file does not exist yet is no canonical path to the library.
    for (int n = 0; n < mostLinks && fs::is_symlink(name, error) && !fs::exists(name, error); ++n)
        name = name.parent_path() / fs::read_symlink(name, error);
    const fs::path resolved = fs::weakly_canonical(name, error);
    fs::path target = error ? name : resolved;
    const fs::file_status status = fs::status(target, error);
    if (fs::is_directory(status))
        fail(fileName, EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw Failure(Failure::Kind::File,
                      fmt::format("The file \"{}\" cannot be written: it is a device.", fileName));
    if (fs::exists(status) && ::access(target.c_str(), W_OK) != 0)
        fail(fileName, errno);
    return target;
}

} // namespace

void replaceFile(const std::string& fileName, std::string_view content) {
    Replacement replacement(fileName, targetOf(fileName));
    replacement.write(content);
    replacement.finish();
}

void replaceTextFile(
    const std::string& fileName,
    const std::function<void(const std::function<void(std::string_view)>&)>& write) {
    Replacement replacement(fileName, targetOf(fileName));
    write([&replacement](std::string_view line) { replacement.writeLine(line); });
    replacement.finish();
}

void appendLine(const std::string& fileName, std::string_view line) {
    // A pipe must not make the program wait.
    const int descriptor =
        ::open(fileName.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (descriptor < 0)
        fail(fileName, errno);
    const std::string whole = std::string(line) + "\r\n"; // at once, so that no line is half there
    const ssize_t written = ::write(descriptor, whole.data(), whole.size());
    const int error = written < 0 ? errno : ENOSPC;
    const int closed = ::close(descriptor);
    if (written != static_cast<ssize_t>(whole.size()))
        fail(fileName, error);
    if (closed != 0)
        fail(fileName, errno);
}

} // namespace bitlux
