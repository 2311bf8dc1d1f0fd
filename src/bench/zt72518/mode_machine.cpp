#include "bench/zt72518/mode_machine.h"

#include "bench/model/watchdog_times.h"

namespace bitlux::zt72518 {

namespace {

/// The first refresh after a reset must come within it.
constexpr std::int64_t normalRequestPeriod = 256'000'000;

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
    if (mode == Mode::Init || mode == Mode::Flash || mode == Mode::NormalRequest)
        state_.set(debug);
    timers_.begin(period());
}

std::int64_t ModeMachine::period() const {
    switch (mode_) {
    case Mode::NormalRequest:
        return normalRequestPeriod;
    case Mode::Normal:
        return watchdogPeriod(state_.value(Register::Timer0));
    case Mode::Flash:
        return flashPeriod(state_.value(Register::Timer2) >> 4U);
    case Mode::Stop:
        return LowPowerCode{stopCode_}.hasWatchdog()
                   ? lowPowerPeriod(state_.value(Register::Timer2) >> 4U)
                   : 0;
    default:
        return 0;
    }
}

void ModeMachine::take(ModeTimers::Event event) {
    if (event == ModeTimers::Event::ResetEnds) {
        enter(Mode::NormalRequest);
    } else if (event == ModeTimers::Event::WakesUp) {
        state_.set(wokenByTimer);
        wake();
    } else if (state_.has(noWatchdog)) {
        timers_.stopWatchdog();
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
    timers_.endResetIn(resetDuration(state_.value(Register::InitVreg) >> 3U));
}

std::int64_t ModeMachine::closedWindow() const {
    const bool window = (state_.value(Register::InitWdog) & 0x02) != 0;
    return window && mode_ == Mode::Normal ? watchdogPeriod(state_.value(Register::Timer0)) / 2 : 0;
}

void ModeMachine::refresh(std::uint8_t data) {
    const auto kind = static_cast<RefreshMode>((state_.value(Register::InitWdog) >> 2) & 3);
    const ServedWatchdog::Outcome outcome =
        timers_.refresh(data, random_.watchdog(), kind, closedWindow());
    if (outcome == ServedWatchdog::Outcome::Begun)
        return;
    random_.drawWatchdog();
    if (outcome == ServedWatchdog::Outcome::Wrong)
        failRefresh();
    else
        refreshed();
}

void ModeMachine::refreshed() {
    failedBefore_ = false;
    if (mode_ == Mode::Init || mode_ == Mode::NormalRequest) {
        enter(Mode::Normal);
        return;
    }
    timers_.restartWatchdog(period());
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
    const LowPowerCode code{static_cast<std::uint64_t>(data >> 3)};
    const bool allowsVddOff = (state_.value(Register::Regulator) & 1) != 0;
    if (mode_ == Mode::Normal && (code.keepsVdd() || (code.dropsVdd() && allowsVddOff)))
        lowPower(code);
    else if (mode_ == Mode::Stop && code.wakes()) {
        state_.set(wokenByChipSelect);
        wake();
    }
}

void ModeMachine::lowPower(LowPowerCode code) {
    stopCode_ = static_cast<std::uint8_t>(code.code);
    if (!code.keepsVdd())
        state_.set(sleepBySpi);
    enter(code.keepsVdd() ? Mode::Stop : Mode::Sleep);
    if (code.wakesByTimer())
        timers_.wakeUpIn(forcedWakeUpPeriod(state_.value(Register::Timer2)));
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
    const bool isLong = duration > currentLimit(state_.value(Register::Timer0) >> 5U);
    if (action == 2 || (action == 3 && isLong)) {
        state_.set(wokenByCurrent);
        wake();
    } else if (action == 3) {
        refreshed();
    }
}

void ModeMachine::addPhase(Phase& phase) const {
    phase.insert(phase.end(), {static_cast<std::int64_t>(mode_), failedBefore_ ? 1 : 0, stopCode_});
    timers_.addPhase(phase);
}

} // namespace bitlux::zt72518
