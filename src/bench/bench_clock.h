#pragma once

#include "platform/clock.h"

#include <cstdint>

namespace bitlux {

/// A clock on which the parts of the virtual bench spend time.
class BenchClock : public Clock {
public:
    /// Lets `duration` nanoseconds pass.
    virtual void spend(std::int64_t duration) = 0;
    /// Waits for `duration` nanoseconds with nothing to do.
    virtual void idle(std::int64_t duration) = 0;
};

/// Time passes only when it is spent, so that a run gives the same times every time.
class VirtualClock : public BenchClock {
public:
    [[nodiscard]] std::int64_t nanoseconds() const override { return now_; }
    void spend(std::int64_t duration) override { now_ += duration; }
    void idle(std::int64_t duration) override { now_ += duration; }

private:
    std::int64_t now_ = 0;
};

/// Time passes as it does outside: spending it keeps the processor busy, as
/// a real port does, and being idle does not.
class PacedClock : public BenchClock {
public:
    [[nodiscard]] std::int64_t nanoseconds() const override { return system_.nanoseconds(); }
    void spend(std::int64_t duration) override;
    void idle(std::int64_t duration) override;

private:
    SystemClock system_;
};

} // namespace bitlux
