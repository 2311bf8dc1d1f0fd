#include "apps/output_failure.h"

#include "platform/failure.h"

#include <cerrno>
#include <cstring>

#include <fmt/format.h>

namespace bitlux {

void failOutput() {
    if (errno == EPIPE)
        throw OutputClosed{};
    throw Failure(Failure::Kind::File,
                  fmt::format("The standard output cannot be written{}{}.", errno == 0 ? "" : ": ",
                              errno == 0 ? "" : std::strerror(errno)));
}

} // namespace bitlux
