#pragma once

#include "bench/deadline.h"
#include "bench/model/refresh_steps.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace bitlux {

/// The watchdog of a chip: expires at the end of a period, unless a refresh of one or several words
/// arrived in time. All times in nanoseconds.
class ServedWatchdog {
public:
    enum class Outcome : std::uint8_t { Wrong, Begun, Refreshed };

    /// A period begins, without a refresh in progress; a period of 0 never ends.
    void start(std::int64_t now, std::int64_t period);
    void stop() { due_.clear(); }
    /// A word of a refresh with its data; `code` is the random word that enhanced refreshes must
    /// return inverted, in their bits. A word within `closed` after the start of the period is
    /// wrong.
    Outcome take(std::uint64_t data, std::uint8_t code, RefreshMode mode, std::int64_t now,
                 std::int64_t closed);

    [[nodiscard]] const Deadline& due() const { return due_; }
    /// As "12.5 ms left", or "off".
    [[nodiscard]] std::string left(std::int64_t now) const;

    void addPhase(Phase& phase, std::int64_t now) const;
    void skip(std::int64_t duration);

private:
    Deadline due_;
    std::int64_t startedAt_ = 0;
    std::size_t step_ = 0;
};

} // namespace bitlux
