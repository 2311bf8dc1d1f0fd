#include "platform/forms/timer.h"

namespace bitlux::forms {

void Timer::fire() {
    if (runs())
        byHand("Timer", [this] { raiseClick(); });
}

} // namespace bitlux::forms
