#include "platform/forms/timer.h"

#include "platform/forms/form.h"
#include "platform/forms/form_set.h"
#include "platform/scoped_value.h"

#include <fmt/format.h>

namespace bitlux::forms {

void Timer::fire() {
    if (!runs() || firing_)
        return;
    const ScopedValue firing(firing_, true);
    form().set().perform(fmt::format("{}_Timer", fullName()),
                         [this] { raise(ControlEvent::Timer); });
}

void Timer::enabledChanged() {
    form().set().timerChanged.raise(*this);
}

} // namespace bitlux::forms
