#include "platform/forms/timer.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"

namespace bitlux::forms {

void Timer::fire() {
    if (runs())
        byHand("Timer", [this] { raise(ControlEvent::Timer); });
}

void Timer::enabledChanged() {
    form().set().timerChanged.raise(*this);
}

} // namespace bitlux::forms
