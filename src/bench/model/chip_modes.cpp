#include "bench/model/chip_modes.h"

namespace bitlux {

void ChipModes::addPhase(Phase& phase) const {
    phase.push_back(static_cast<std::int64_t>(mode_));
    phase.push_back(static_cast<std::int64_t>(lowPower_.code));
    phase.push_back(failures_);
    timers_.addPhase(phase);
}

void ChipModes::take(ModeTimers::Event event) {
    if (event == ModeTimers::Event::ResetEnds)
        enter(afterReset_);
    else if (event == ModeTimers::Event::WakesUp)
        rules_.woken(true);
    else
        rules_.watchdogExpired();
}

void ChipModes::enter(Mode mode) {
    mode_ = mode;
    rules_.entered(mode);
    timers_.begin(rules_.period(mode));
}

void ChipModes::reset() {
    enter(Mode::Reset);
    timers_.endResetIn(rules_.resetTime());
}

bool ChipModes::refresh(std::uint64_t data, std::uint8_t code) {
    using Outcome = ServedWatchdog::Outcome;
    const bool window = mode_ == Mode::Normal && rules_.hasWindow();
    const Outcome outcome =
        timers_.refresh(data, code, rules_.refreshMode(), window ? rules_.period(mode_) / 2 : 0);
    if (outcome == Outcome::Wrong)
        rules_.refreshFailed();
    else if (outcome == Outcome::Refreshed)
        refreshed();
    return outcome != Outcome::Begun;
}

void ChipModes::refreshed() {
    failures_ = 0;
    if (mode_ == Mode::Init || mode_ == Mode::NormalRequest)
        enter(Mode::Normal);
    else
        restartWatchdog();
}

void ChipModes::select(LowPowerCode code, bool allowsVddOff) {
    if (mode_ == Mode::LowPowerOn && code.wakes())
        return rules_.woken(false);
    if (mode_ != Mode::Normal || !(code.keepsVdd() || (code.dropsVdd() && allowsVddOff)))
        return;
    lowPower_ = code;
    enter(code.keepsVdd() ? Mode::LowPowerOn : Mode::LowPowerOff);
    if (code.wakesByTimer())
        timers_.wakeUpIn(rules_.wakeUpTime());
}

} // namespace bitlux
