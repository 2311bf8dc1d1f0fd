#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"
#include "platform/forms/timer.h"

#include <functional>

namespace bitlux {

/// The timer `timer_auto_read`, which reads repeatedly while ON of a pair of options is selected. A
/// failed link or word selects OFF.
class RepeatedRead {
public:
    struct Names {
        ControlRef on;
        ControlRef off;
    };

    /// `read` is called at each tick, `switched` when the choice has changed. The context's form
    /// outlives it.
    RepeatedRead(
        const PanelContext& context, const Names& names, std::function<void()> read,
        std::function<void(bool on)> switched = [](bool) {});

    [[nodiscard]] bool isOn() const { return on_.value(); }
    void switchOff() { off_.setValue(true); }

private:
    forms::Timer timer_;
    forms::OptionButton& on_;
    forms::OptionButton& off_;
    Subscription linkFailed_;
    Subscription sendFailed_;
};

} // namespace bitlux
