#include "apps/progress_line.h"

namespace bitlux {

namespace {

constexpr std::int64_t delay = 500'000'000;
constexpr std::int64_t interval = 250'000'000;
constexpr const char* wipe = "\r\x1b[K";

} // namespace

ProgressLine::ProgressLine(std::ostream& terminal, bool isTerminal)
    : terminal_(terminal), next_(clock_.nanoseconds() + delay), isTerminal_(isTerminal) {}

void ProgressLine::offer(const std::function<std::string()>& text) {
    if (!isTerminal_)
        return;
    const std::int64_t now = clock_.nanoseconds();
    if (now < next_)
        return;
    next_ = now + interval;
    terminal_ << wipe << text() << std::flush;
    shown_ = true;
}

void ProgressLine::clear() {
    if (!shown_)
        return;
    terminal_ << wipe << std::flush;
    shown_ = false;
}

} // namespace bitlux
