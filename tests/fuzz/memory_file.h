#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include <sys/mman.h>
#include <unistd.h>

#include <fmt/format.h>

namespace bitlux::fuzz {

/// A file in memory that can be opened by its name.
class MemoryFile {
public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : descriptor_(::memfd_create("input", MFD_CLOEXEC)) {
        if (::write(descriptor_, data, size) != static_cast<ssize_t>(size))
            throw std::runtime_error("no file in memory");
    }
    ~MemoryFile() { ::close(descriptor_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    [[nodiscard]] std::string name() const { return fmt::format("/proc/self/fd/{}", descriptor_); }

private:
    int descriptor_;
};

inline void require(bool condition, const char* what) {
    if (!condition) {
        fmt::print(stderr, "{}\n", what);
        std::abort();
    }
}

} // namespace bitlux::fuzz
