#include "bench/model/served_watchdog.h"

#include "platform/time_units.h"

#include <algorithm>

#include <fmt/format.h>

namespace bitlux {

void ServedWatchdog::start(std::int64_t now, std::int64_t period) {
    step_ = 0;
    startedAt_ = now;
    due_.clear();
    if (period > 0)
        due_.set(now + period);
}

ServedWatchdog::Outcome ServedWatchdog::take(std::uint64_t data, std::uint8_t code,
                                             RefreshMode mode, std::int64_t now,
                                             std::int64_t closed) {
    const auto steps = refreshSteps(mode);
    const std::uint8_t mask = steps[std::min(step_, steps.size() - 1)];
    if (((data ^ ~std::uint64_t{code}) & mask) != 0 || now - startedAt_ < closed)
        return Outcome::Wrong;
    return ++step_ < steps.size() ? Outcome::Begun : Outcome::Refreshed;
}

std::string ServedWatchdog::left(std::int64_t now) const {
    return due_.isSet() ? fmt::format("{:.1f} ms left",
                                      static_cast<double>(due_.at() - now) / double{millisecond})
                        : "off";
}

void ServedWatchdog::addPhase(Phase& phase, std::int64_t now) const {
    due_.addPhase(phase, now);
    phase.push_back(due_.isSet() ? now - startedAt_ : 0);
    phase.push_back(static_cast<std::int64_t>(step_));
}

void ServedWatchdog::skip(std::int64_t duration) {
    due_.skip(duration);
    startedAt_ += duration;
}

} // namespace bitlux
