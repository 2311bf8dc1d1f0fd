#pragma once

#include "gui/desktop/qt_desk.h"
#include "platform/clock.h"
#include "platform/desk.h"

#include <algorithm>
#include <cstdint>

namespace bitlux::perf {

/// The window's event loop, with the longest time between two of its turns.
class WatchedLoop : public EventLoop {
public:
    void turn() override {
        loop_.turn();
        const std::int64_t now = clock_.nanoseconds();
        if (last_ != 0)
            longest = std::max(longest, now - last_);
        last_ = now;
    }
    void waitForEvents(std::int64_t nanoseconds) override { loop_.waitForEvents(nanoseconds); }
    /// The time until the next turn does not count.
    void restart() { last_ = 0; }
    std::int64_t longest = 0; ///< nanoseconds

private:
    gui::QtEventLoop loop_;
    SystemClock clock_;
    std::int64_t last_ = 0;
};

} // namespace bitlux::perf
