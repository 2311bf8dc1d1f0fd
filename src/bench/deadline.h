#pragma once

#include "bench/cycle.h"

#include <cstdint>
#include <limits>

namespace bitlux {

/// The time of an event on the bench, in nanoseconds, or never.
class Deadline {
public:
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    void set(std::int64_t at) { at_ = at; }
    void clear() { at_ = never; }

    [[nodiscard]] bool isSet() const { return at_ != never; }
    [[nodiscard]] std::int64_t at() const { return at_; } ///< `never` when it is not set
    [[nodiscard]] bool isDue(std::int64_t now) const { return at_ <= now; }

    void addPhase(Phase& phase, std::int64_t now) const {
        phase.push_back(isSet() ? at_ - now : never);
    }
    void skip(std::int64_t duration) { at_ += isSet() ? duration : 0; }

private:
    std::int64_t at_ = never;
};

} // namespace bitlux
