#pragma once

#include "platform/clock.h"
#include "platform/event.h"
#include "platform/forms/form_set.h"
#include "platform/forms/timer.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace bitlux {

/// The due times of the forms' timers on a clock. The caller lets them fire.
class FormTimers {
public:
    explicit FormTimers(const Clock& clock) : clock_(clock) {}

    /// Observes the timers of these forms that start or change from now on.
    void drive(forms::FormSet& forms);

    /// Nothing when no timer runs.
    [[nodiscard]] std::optional<std::int64_t> nextDue() const;
    /// Fires the timer that is due next; of several the one that started first. A timer that was
    /// due more than once meanwhile fires once.
    void fireNext();

private:
    struct Due {
        forms::Timer* timer;
        std::int64_t time;
    };

    void follow(forms::Timer& timer);
    [[nodiscard]] std::vector<Due>::const_iterator next() const;

    const Clock& clock_;
    std::vector<Due> due_; ///< those that run, in the order in which they started
    Subscription changes_;
};

} // namespace bitlux
