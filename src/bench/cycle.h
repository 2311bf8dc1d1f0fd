#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bitlux {

/// All that decides how something on the bench goes on, with times as seen from the present moment.
/// What is in the same phase twice does the same twice.
using Phase = std::vector<std::int64_t>;

/// Finds out that phases repeat themselves, so that whole cycles can be left out.
class CycleFinder {
public:
    /// Takes the phase of the moment `now`, in nanoseconds. Returns the duration of the cycle that
    /// ends with it, 0 when none is known.
    std::int64_t take(std::int64_t now, Phase phase);

private:
    Phase kept_; ///< to which the next ones are compared
    std::int64_t keptAt_ = 0;
    std::size_t taken_ = 0; ///< since then
    std::size_t patience_ = 1;
};

} // namespace bitlux
