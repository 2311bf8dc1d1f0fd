#pragma once

#include "platform/forms/control.h"

namespace bitlux::forms {

/// Runs its handler NAME_Timer again and again while it is enabled, `interval` milliseconds apart;
/// with an interval of 0 never. The event loop drives it; FormSet::timerChanged tells when it
/// starts anew or stops.
class Timer : public Control {
public:
    Timer(Form& form, std::string name, int interval, bool enabled = false)
        : Control(form, Kind::Timer, std::move(name), {}), interval_(interval) {
        if (enabled)
            enabledChanged(); // controls come enabled into the world
        else
            disable();
    }
    ~Timer() override { setEnabled(false); }

    [[nodiscard]] int interval() const { return interval_; }
    void setInterval(int interval) {
        if (assign(interval_, interval))
            enabledChanged();
    }
    [[nodiscard]] bool runs() const { return enabled() && interval_ > 0; }

    /// The interval is over; a failure of the handler ends in a box. A tick that comes while the
    /// handler still runs, under a box of its own, is left out.
    void fire();

protected:
    void enabledChanged() final;

private:
    int interval_;
    bool firing_ = false;
};

} // namespace bitlux::forms
