#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

namespace bitlux {

/// A line at the bottom of a terminal that tells where a long run is. It comes after half a second,
/// changes at most four times a second, and leaves nothing behind when it is cleared.
class ProgressLine {
public:
    /// Nothing is ever shown unless `terminal` is one.
    ProgressLine(std::ostream& terminal, bool isTerminal);

    /// Shows the text when it is time to; it is made only then.
    void offer(const std::function<std::string()>& text);
    void clear();

private:
    std::ostream& terminal_;
    SystemClock clock_;
    std::int64_t next_;
    bool isTerminal_;
    bool shown_ = false;
};

} // namespace bitlux
