#pragma once

#include <cstdint>

namespace bitlux {

/// A clock that never runs backwards. Its origin is arbitrary; only differences are meaningful.
class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual std::int64_t nanoseconds() const = 0;
};

/// The monotonic clock of the system.
class SystemClock : public Clock {
public:
    [[nodiscard]] std::int64_t nanoseconds() const override;
};

} // namespace bitlux
