#include "platform/line_reader.h"

#include "platform/failure.h"
#include "platform/printable.h"

#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr std::size_t longestName = 200; // in a message

[[noreturn]] void fail(const std::string& fileName, const std::string& reason) {
    throw Failure(Failure::Kind::File, fmt::format("The file \"{}\" cannot be read: {}.",
                                                   printable(fileName, longestName), reason));
}

void requireFile(int descriptor, const std::string& fileName) {
    struct stat status {};
    if (::fstat(descriptor, &status) != 0)
        fail(fileName, std::strerror(errno));
    if (S_ISDIR(status.st_mode))
        fail(fileName, "it is a folder");
    if (!S_ISREG(status.st_mode))
        fail(fileName, "it is a device");
}

} // namespace

LineReader::LineReader(std::string fileName)
    : fileName_(std::move(fileName)),
      // A pipe must not make the program wait.
      descriptor_(::open(fileName_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)) {
    if (descriptor_ < 0)
        fail(fileName_, std::strerror(errno));
    try {
        requireFile(descriptor_, fileName_);
        buffer_.resize(2 * longestLine);
    } catch (...) {
        ::close(descriptor_);
        throw;
    }
}

LineReader::~LineReader() {
    ::close(descriptor_);
}

std::optional<std::string_view> LineReader::next() {
    std::size_t searched = 0;
    std::size_t length = 0;
    std::size_t ending = 0;
    for (;;) {
        const std::string_view rest = std::string_view(buffer_).substr(begin_, end_ - begin_);
        const std::size_t lineFeed = rest.find('\n', searched);
        searched = rest.size();
        length = std::min(lineFeed, rest.size());
        if (length > longestLine)
            fail(fileName_,
                 fmt::format("line {} has more than {} characters", lineNumber_ + 1, longestLine));
        ending = lineFeed == std::string_view::npos ? 0 : 1;
        if (ending == 1)
            break;
        if (fill())
            continue;
        if (rest.empty())
            return std::nullopt;
        break;
    }
    std::string_view line = std::string_view(buffer_).substr(begin_, length);
    begin_ += length + ending;
    ++lineNumber_;
    if (!line.empty() && line.back() == '\r')
        line.remove_suffix(1);
    return line;
}

bool LineReader::fill() {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    end_ -= std::exchange(begin_, 0);
    ssize_t size = 0;
    do
        size = ::read(descriptor_, buffer_.data() + end_, buffer_.size() - end_);
    while (size < 0 && errno == EINTR);
    if (size < 0)
        fail(fileName_, std::strerror(errno));
    end_ += static_cast<std::size_t>(size);
    return size > 0;
}

} // namespace bitlux
