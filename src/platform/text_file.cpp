#include "platform/text_file.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

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

bool isThere(const fs::path& target) {
    std::error_code unknown;
    return fs::exists(target, unknown);
}

/// A file that is open for writing. Each step gives 0, or the number of the system's error.
class OpenFile {
public:
    explicit OpenFile(int descriptor)
        : descriptor_(descriptor), error_(descriptor < 0 ? errno : 0) {}
    ~OpenFile() {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;

    /// Of opening it.
    [[nodiscard]] int error() const { return error_; }
    [[nodiscard]] int descriptor() const { return descriptor_; }

    [[nodiscard]] int write(std::string_view rest) const {
        while (!rest.empty()) {
            const ssize_t written = ::write(descriptor_, rest.data(), rest.size());
            if (written < 0 && errno != EINTR)
                return errno;
            if (written > 0)
                rest.remove_prefix(static_cast<std::size_t>(written));
        }
        return 0;
    }

    [[nodiscard]] int finish() {
        // Some file systems cannot.
        const bool isSafe = ::fsync(descriptor_) == 0 || errno == EINVAL || errno == ENOSYS;
        const int error = isSafe ? 0 : errno;
        const int closed = ::close(descriptor_) != 0 ? errno : 0;
        descriptor_ = -1;
        return error != 0 ? error : closed;
    }

private:
    int descriptor_;
    int error_;
};

/// A new file beside its target, which replaces the target or is removed.
class Replacement {
public:
    explicit Replacement(const fs::path& target)
        : target_(target),
          name_((target.parent_path() / ".bitlux-XXXXXX").string()),
          file_(::mkostemp(name_.data(), O_CLOEXEC)) {}
    ~Replacement() {
        if (file_.error() == 0 && !finished_)
            ::unlink(name_.c_str());
    }
    Replacement(const Replacement&) = delete;
    Replacement& operator=(const Replacement&) = delete;

    /// Of making it.
    [[nodiscard]] int error() const { return file_.error(); }

    [[nodiscard]] int fill(std::string_view content) {
        if (const int error = file_.write(content))
            return error;
        takeOverPermissions();
        return file_.finish();
    }

    [[nodiscard]] int takePlace() {
        finished_ = ::rename(name_.c_str(), target_.c_str()) == 0;
        return finished_ ? 0 : errno;
    }

private:
    /// As far as the system lets it: a log that is saved with sudo stays the user's.
    void takeOverPermissions() const {
        struct stat old {};
        mode_t mode = 0;
        if (::stat(target_.c_str(), &old) == 0) {
            mode = old.st_mode & 07777U;
            [[maybe_unused]] const int owned = ::fchown(file_.descriptor(), old.st_uid, old.st_gid);
        } else {
            const mode_t mask = ::umask(0);
            ::umask(mask);
            mode = 0666U & ~mask;
        }
        ::fchmod(file_.descriptor(), mode);
    }

    const fs::path& target_;
    std::string name_;
    OpenFile file_;
    bool finished_ = false;
};

/// Overwrites a file in place. The space for all of it is allocated first, so that a full disk
/// leaves the old content intact.
void overwrite(const std::string& shownName, const fs::path& target, std::string_view content) {
    OpenFile file(::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat old {};
    if (file.error() != 0 || ::fstat(file.descriptor(), &old) != 0)
        fail(shownName, errno);
    const auto size = static_cast<off_t>(content.size());
    int error = 0;
    if (size > old.st_size)
        error = ::posix_fallocate(file.descriptor(), old.st_size, size - old.st_size);
    const bool hasRoom = error == 0;
    if (hasRoom)
        error = file.write(content);
    if (::ftruncate(file.descriptor(), hasRoom ? size : old.st_size) != 0 && error == 0)
        error = errno;
    const int finished = file.finish();
    if (error != 0 || finished != 0)
        fail(shownName, error != 0 ? error : finished);
}

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
    const fs::path target = targetOf(fileName);
    Replacement replacement(target);
    int error = replacement.error();
    if (error == 0) {
        if (const int full = replacement.fill(content))
            fail(fileName, full);
        error = replacement.takePlace();
    }
    if (error == 0)
        return;
    // The folder takes no file, or the name cannot be given to another one.
    if (!isThere(target))
        fail(fileName, error);
    overwrite(fileName, target, content);
}

void replaceTextFile(
    const std::string& fileName,
    const std::function<void(const std::function<void(std::string_view)>&)>& write) {
    std::string content;
    write([&content](std::string_view line) { (content += line) += "\r\n"; });
    replaceFile(fileName, content);
}

void appendLine(const std::string& fileName, std::string_view line) {
    // A pipe must not make the program wait.
    OpenFile file(
        ::open(fileName.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666));
    struct stat old {};
    if (file.error() != 0 || ::fstat(file.descriptor(), &old) != 0)
        fail(fileName, errno);
    const int error = file.write(std::string(line) + "\r\n");
    if (error == 0)
        return;
    // Half a line would make the whole file unreadable.
    if (S_ISREG(old.st_mode) && ::ftruncate(file.descriptor(), old.st_size) != 0)
        fail(fileName, errno);
    fail(fileName, error);
}

} // namespace bitlux
