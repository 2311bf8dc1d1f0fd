#pragma once

#include "panels/common/panel_part.h"
#include "platform/event.h"
#include "platform/forms/timer.h"

#include <functional>

namespace bitlux {

/// The timer `timer_auto_read`, which reads again and again while ON is chosen of a pair of
/// options. A link or a word that fails chooses OFF.
class RepeatedRead {
public:
    struct Names {
        ControlRef on;
        ControlRef off;
    };

    /// `read` is a tick; `switched` tells that the choice has changed. The context's form outlives
    /// it.
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
