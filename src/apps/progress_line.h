#pragma once

#include "platform/clock.h"

#include <cstdint>
#include <functional>
#include <ostream>
#include <string>

namespace bitlux {

/// A line at the bottom of a terminal with the position of a long run. It appears after half a
/// second, changes at most four times a second, and leaves no trace when it is cleared.
class ProgressLine {
public:
    /// Nothing is shown unless `terminal` is a terminal.
    ProgressLine(std::ostream& terminal, bool isTerminal);

    /// Shows the text if an update is due; the text is made only then.
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
