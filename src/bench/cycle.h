#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace bitlux {

/// The complete state that determines the further behaviour of a part of the bench, with times
/// relative to now. The same phase leads to the same behaviour.
using Phase = std::vector<std::int64_t>;

/// Detects recurring phases, so that whole cycles can be skipped.
class CycleFinder {
public:
    /// Records the phase at the time `now`, in nanoseconds. Returns the duration of the cycle that
    /// ends with it, 0 if none is known.
    std::int64_t take(std::int64_t now, Phase phase);

private:
    Phase kept_; ///< the next ones are compared with it
    std::int64_t keptAt_ = 0;
    std::size_t taken_ = 0; ///< since then
    std::size_t limit_ = 1; ///< the number after which the kept one is replaced
};

} // namespace bitlux
