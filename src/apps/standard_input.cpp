#include "apps/standard_input.h"

#include "platform/failure.h"
#include "platform/scoped_value.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <poll.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

bool canBeRead(int milliseconds) {
    pollfd input{.fd = STDIN_FILENO, .events = POLLIN, .revents = 0};
    return poll(&input, 1, milliseconds) > 0;
}

} // namespace

std::optional<std::string> StandardInput::line() {
    std::size_t looked = 0;
    for (;;) {
        const std::size_t end = buffer_.find('\n', looked);
        if (end != std::string::npos) {
            std::string line = buffer_.substr(0, end);
            buffer_.erase(0, end + 1);
            return line;
        }
        looked = buffer_.size();
        if (!ended_ && fill())
            continue;
        ended_ = true;
        return buffer_.empty() ? std::nullopt : std::optional(std::exchange(buffer_, {}));
    }
}

/// False at the end of the input.
bool StandardInput::fill() {
    constexpr int slice = 50; // milliseconds until an interruption is noticed
    {
        const ScopedValue waiting(waiting_, true);
        while (!canBeRead(slice))
            interruption_.check();
    }
    std::array<char, 4096> block{};
    const ssize_t size = read(STDIN_FILENO, block.data(), block.size());
    if (size < 0)
        throw Failure(Failure::Kind::File,
                      fmt::format("The standard input cannot be read: {}.", std::strerror(errno)));
    buffer_.append(block.data(), static_cast<std::size_t>(size));
    return size > 0;
}

} // namespace bitlux
