#include "bench/form_timers.h"

#include "platform/time_units.h"

#include <algorithm>

namespace bitlux {

namespace {} // namespace

void FormTimers::drive(forms::FormSet& forms) {
    due_.clear();
    changes_ = forms.timerChanged.follow([this](forms::Timer& timer) { follow(timer); });
}

void FormTimers::follow(forms::Timer& timer) {
    std::erase_if(due_, [&timer](const Due& due) { return due.timer == &timer; });
    if (timer.runs())
        due_.push_back({&timer, clock_.nanoseconds() + timer.interval() * millisecond});
}

std::vector<FormTimers::Due>::const_iterator FormTimers::next() const {
    return std::min_element(due_.begin(), due_.end(),
                            [](const Due& a, const Due& b) { return a.time < b.time; });
}

std::optional<std::int64_t> FormTimers::nextDue() const {
    if (due_.empty())
        return std::nullopt;
    return next()->time;
}

void FormTimers::fireNext() {
    Due& due = due_[static_cast<std::size_t>(next() - due_.begin())];
    forms::Timer& timer = *due.timer;
    const std::int64_t interval = timer.interval() * millisecond;
    due.time += interval;
    if (due.time <= clock_.nanoseconds())
        due.time = clock_.nanoseconds() + interval;
    timer.fire();
}

} // namespace bitlux
