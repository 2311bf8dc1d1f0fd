#pragma once

#include "platform/forms/control.h"

namespace bitlux::forms {

/// Runs its handler NAME_Timer periodically while it is enabled, every `interval` milliseconds;
/// never with an interval of 0. The event loop drives it; FormSet::timerChanged is raised when it
/// restarts or stops.
class Timer : public Control {
public:
    Timer(Form& form, std::string name, int interval, bool enabled = false)
        : Control(form, Kind::Timer, std::move(name), {}), interval_(interval) {
        if (enabled)
            enabledChanged(); // controls are enabled at first
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

    /// The interval is over; a failure of the handler ends in a box. A tick during its own handler,
    /// for example under a box, is dropped.
    void fire();

protected:
    void enabledChanged() final;

private:
    int interval_;
    bool firing_ = false;
};

} // namespace bitlux::forms
