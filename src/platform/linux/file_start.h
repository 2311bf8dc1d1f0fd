#pragma once

#include <cstddef>
#include <string>

namespace bitlux {

/// The first bytes of a file.
struct FileStart {
    std::string bytes;
    int error = 0;       ///< errno of what failed, 0 when nothing did; `bytes` is empty then
    bool isWhole = true; ///< false where the file goes on
};

/// Reads at most `most` bytes, and never waits for a pipe or a device that has none. Files of the
/// kernel fail with an error of their own when the object they describe disappears.
FileStart readFileStart(const std::string& fileName, std::size_t most);

} // namespace bitlux
