#include "bench/zt72518/mode_machine.h"

#include "bench/zt72518/refresh_steps.h"
#include "bench/zt72518/timers.h"

#include <algorithm>

namespace bitlux::zt72518 {

namespace {

constexpr unsigned wakeCode = 0x02;

} // namespace

ModeMachine::ModeMachine(State& state, RandomWords& random) : state_(state), random_(random) {
    enter(Mode::Init);
}

std::string_view ModeMachine::name() const {
    switch (mode_) {
    case Mode::Init:
        return "Init";
    case Mode::Flash:
        return "Flash";
    case Mode::NormalRequest:
        return "Normal Request";
    case Mode::Normal:
        return "Normal";
    case Mode::Stop:
        return "Low Power Vdd On (Stop)";
    case Mode::Sleep:
        return "Low Power Vdd Off (Sleep)";
    default:
        return "Reset";
    }
}

std::uint8_t ModeMachine::code() const {
    if (!answers())
        return 0;
    return mode_ == Mode::Stop ? stopCode_ : static_cast<std::uint8_t>(mode_);
}

std::uint8_t ModeMachine::selectBits() const {
    return mode_ == Mode::Init ? 1 : mode_ == Mode::Flash ? 2 : 3;
}

void ModeMachine::enter(Mode mode) {
    mode_ = mode;
    wakeUpDue_ = resetEnds_ = never;
    step_ = 0;
    if (mode == Mode::Init || mode == Mode::Flash || mode == Mode::NormalRequest)
        state_.set(debug);
    refreshedAt_ = now_;
    restartWatchdog();
}

void ModeMachine::restartWatchdog() {
    const auto period = [this]() -> std::int64_t {
        switch (mode_) {
        case Mode::NormalRequest:
            return normalRequestPeriod;
        case Mode::Normal:
            return watchdogPeriod(state_.value(Register::Timer0));
        case Mode::Flash:
            return flashPeriod(state_.value(Register::Timer2));
        case Mode::Stop:
            return (stopCode_ & 1) != 0 ? stopPeriod(state_.value(Register::Timer2)) : 0;
        default:
            return 0;
        }
    }();
    watchdogDue_ = period > 0 ? now_ + period : never;
}

void ModeMachine::timeIs(std::int64_t now) {
    for (;;) {
        const std::int64_t due = std::min({watchdogDue_, wakeUpDue_, resetEnds_});
        if (due > now)
            break;
        now_ = std::max(now_, due);
        expire();
    }
    now_ = std::max(now_, now);
}

void ModeMachine::expire() {
    if (resetEnds_ <= now_) {
        enter(Mode::NormalRequest);
    } else if (wakeUpDue_ <= now_) {
        state_.set(wokenByTimer);
        wake();
    } else if (state_.has(noWatchdog)) {
        watchdogDue_ = never;
    } else {
        failRefresh();
    }
}

void ModeMachine::failRefresh() {
    state_.set(refreshFailed);
    if (failedBefore_)
        state_.set(resetAgain);
    failedBefore_ = true;
    reset();
}

void ModeMachine::reset() {
    enter(Mode::Reset);
    resetEnds_ = now_ + resetDuration(state_.value(Register::InitVreg));
}

bool ModeMachine::comesTooEarly() const {
    const bool window = (state_.value(Register::InitWdog) & 0x02) != 0;
    return window && mode_ == Mode::Normal &&
           now_ - refreshedAt_ < watchdogPeriod(state_.value(Register::Timer0)) / 2;
}

void ModeMachine::refresh(std::uint8_t data) {
    const auto kind = static_cast<RefreshMode>((state_.value(Register::InitWdog) >> 2) & 3);
    const auto steps = refreshSteps(kind);
    const std::uint8_t mask = steps[std::min(step_, steps.size() - 1)];
    if (((data ^ ~random_.watchdog()) & mask) != 0 || comesTooEarly()) {
        random_.drawWatchdog();
        failRefresh();
    } else if (++step_ >= steps.size()) {
        random_.drawWatchdog();
        refreshed();
    }
}

void ModeMachine::refreshed() {
    failedBefore_ = false;
    if (mode_ == Mode::Init || mode_ == Mode::NormalRequest) {
        enter(Mode::Normal);
        return;
    }
    step_ = 0;
    refreshedAt_ = now_;
    restartWatchdog();
}

void ModeMachine::special(std::uint8_t data) {
    const std::uint8_t random = random_.special();
    const auto inverse = static_cast<std::uint8_t>(~random & 0x3F);
    // In Init this word works the SAFE pin: only its lower bits are inverted.
    if (mode_ == Mode::Init && data == (inverse ^ 0x30)) {
        state_.set(safeActive);
        random_.drawSpecial();
        return;
    }
    if ((data & 0x3F) != inverse)
        return;
    random_.drawSpecial();
    switch (data >> 6) {
    case 0:
        state_.set(resetBySpi);
        reset();
        break;
    case 1:
        enter(Mode::Init);
        break;
    case 2:
        enter(Mode::Flash);
        break;
    default:
        break;
    }
}

void ModeMachine::select(std::uint8_t data) {
    const bool wantsRandom = (state_.value(Register::InitMisc) & 0x80) != 0;
    const int expected = wantsRandom ? ~random_.mode() & 7 : 0;
    if ((data & 7) != expected)
        return;
    random_.drawMode();
    const auto code = static_cast<unsigned>(data >> 3);
    const bool allowsVddOff = (state_.value(Register::Regulator) & 1) != 0;
    if (mode_ == Mode::Normal && (code & 0x10) != 0)
        stop(code);
    else if (mode_ == Mode::Normal && (code & 0x1C) == 0x0C && allowsVddOff)
        sleep(code);
    else if (mode_ == Mode::Stop && code == wakeCode) {
        state_.set(wokenByChipSelect);
        wake();
    }
}

void ModeMachine::stop(unsigned code) {
    stopCode_ = static_cast<std::uint8_t>(code);
    enter(Mode::Stop);
    if ((code & 8) != 0)
        wakeUpDue_ = now_ + forcedWakeUpPeriod(state_.value(Register::Timer2));
}

void ModeMachine::sleep(unsigned code) {
    state_.set(sleepBySpi);
    enter(Mode::Sleep);
    if ((code & 2) != 0)
        wakeUpDue_ = now_ + forcedWakeUpPeriod(state_.value(Register::Timer2));
}

void ModeMachine::wake() {
    if (mode_ == Mode::Stop)
        enter(Mode::NormalRequest);
    else if (mode_ == Mode::Sleep)
        reset(); // VDD comes up anew
}

void ModeMachine::drawCurrent(std::int64_t duration) {
    if (mode_ != Mode::Stop)
        return;
    const int action = (state_.value(Register::InitWdog) >> 5) & 3;
    const bool isLong = duration > currentLimit(state_.value(Register::Timer0));
    if (action == 2 || (action == 3 && isLong)) {
        state_.set(wokenByCurrent);
        wake();
    } else if (action == 3) {
        refreshed();
    }
}

void ModeMachine::addPhase(Phase& phase) const {
    const std::int64_t window = mode_ == Mode::Normal ? now_ - refreshedAt_ : 0;
    phase.insert(phase.end(), {static_cast<std::int64_t>(mode_), window,
                               static_cast<std::int64_t>(step_), failedBefore_ ? 1 : 0, stopCode_});
    for (const std::int64_t due : {watchdogDue_, wakeUpDue_, resetEnds_})
        phase.push_back(due == never ? never : due - now_);
}

void ModeMachine::skip(std::int64_t duration) {
    now_ += duration;
    refreshedAt_ += duration;
    for (std::int64_t* due : {&watchdogDue_, &wakeUpDue_, &resetEnds_})
        if (*due != never)
            *due += duration;
}

} // namespace bitlux::zt72518
