#include "bench/model/mode_timers.h"

#include <algorithm>

namespace bitlux {

void ModeTimers::timeIs(std::int64_t now, const std::function<void(Event)>& happens) {
    for (;;) {
        const std::int64_t due = std::min({watchdog_.due().at(), wakeUp_.at(), resetEnds_.at()});
        if (due > now)
            break;
        now_ = std::max(now_, due);
        happens(resetEnds_.isDue(now_) ? Event::ResetEnds
                : wakeUp_.isDue(now_)  ? Event::WakesUp
                                       : Event::WatchdogExpires);
    }
    now_ = std::max(now_, now);
}

void ModeTimers::begin(std::int64_t period) {
    wakeUp_.clear();
    resetEnds_.clear();
    restartWatchdog(period);
}

void ModeTimers::addPhase(Phase& phase) const {
    watchdog_.addPhase(phase, now_);
    wakeUp_.addPhase(phase, now_);
    resetEnds_.addPhase(phase, now_);
}

void ModeTimers::skip(std::int64_t duration) {
    now_ += duration;
    watchdog_.skip(duration);
    wakeUp_.skip(duration);
    resetEnds_.skip(duration);
}

} // namespace bitlux
