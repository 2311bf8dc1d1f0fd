#include "bench/zt72518/mode_machine.h"

#include "bench/model/watchdog_times.h"

namespace bitlux::zt72518 {

namespace {

/// The first refresh after a reset must come within it.
constexpr std::int64_t normalRequestPeriod = 256'000'000;

} // namespace

ModeMachine::ModeMachine(State& state, RandomWords& random) : state_(state), random_(random) {
    modes_.enter(Mode::Init);
}

std::string_view ModeMachine::name() const {
    switch (mode()) {
    case Mode::Init:
        return "Init";
    case Mode::Flash:
        return "Flash";
    case Mode::NormalRequest:
        return "Normal Request";
    case Mode::Normal:
        return "Normal";
    case Mode::LowPowerOn:
        return "Low Power Vdd On (Stop)";
    case Mode::LowPowerOff:
        return "Low Power Vdd Off (Sleep)";
    default:
        return "Reset";
    }
}

std::uint8_t ModeMachine::code() const {
    if (!answers())
        return 0;
    return static_cast<std::uint8_t>(mode() == Mode::LowPowerOn ? modes_.lowPower().code
                                                                : std::uint64_t(mode()));
}

std::uint8_t ModeMachine::selectBits() const {
    return mode() == Mode::Init ? 1 : mode() == Mode::Flash ? 2 : 3;
}

// What the registers say

std::int64_t ModeMachine::period(Mode mode) const {
    switch (mode) {
    case Mode::NormalRequest:
        return normalRequestPeriod;
    case Mode::Normal:
        return watchdogPeriod(state_.value(Register::Timer0));
    case Mode::Flash:
        return flashPeriod(state_.value(Register::Timer2) >> 4U);
    case Mode::LowPowerOn:
        return modes_.lowPower().hasWatchdog()
                   ? lowPowerPeriod(state_.value(Register::Timer2) >> 4U)
                   : 0;
    default:
        return 0;
    }
}

RefreshMode ModeMachine::refreshMode() const {
    return static_cast<RefreshMode>((state_.value(Register::InitWdog) >> 2) & 3);
}

bool ModeMachine::hasWindow() const {
    return (state_.value(Register::InitWdog) & 0x02) != 0;
}

std::int64_t ModeMachine::resetTime() const {
    return resetDuration(state_.value(Register::InitVreg) >> 3U);
}

std::int64_t ModeMachine::wakeUpTime() const {
    return forcedWakeUpPeriod(state_.value(Register::Timer2));
}

// What happens

void ModeMachine::entered(Mode mode) {
    if (mode == Mode::Init || mode == Mode::Flash || mode == Mode::NormalRequest)
        state_.set(debug);
    if (mode == Mode::LowPowerOff)
        state_.set(sleepBySpi);
}

void ModeMachine::watchdogExpired() {
    if (state_.has(noWatchdog))
        modes_.stopWatchdog();
    else
        refreshFailed();
}

void ModeMachine::refreshFailed() {
    state_.set(zt72518::refreshFailed);
    if (modes_.failures() > 0)
        state_.set(resetAgain);
    modes_.fail();
}

void ModeMachine::woken(bool byTimer) {
    state_.set(byTimer ? wokenByTimer : wokenByChipSelect);
    wake();
}

void ModeMachine::wake() {
    if (mode() == Mode::LowPowerOn)
        modes_.enter(Mode::NormalRequest);
    else if (mode() == Mode::LowPowerOff)
        modes_.reset(); // VDD is switched on again
}

// Words

void ModeMachine::refresh(std::uint8_t data) {
    if (modes_.refresh(data, random_.watchdog()))
        random_.drawWatchdog();
}

void ModeMachine::special(std::uint8_t data) {
    const std::uint8_t random = random_.special();
    const auto inverse = static_cast<std::uint8_t>(~random & 0x3F);
    // In Init this word works the SAFE pin: only its lower bits are inverted.
    if (mode() == Mode::Init && data == (inverse ^ 0x30)) {
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
        modes_.reset();
        break;
    case 1:
        modes_.enter(Mode::Init);
        break;
    case 2:
        modes_.enter(Mode::Flash);
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
    const bool allowsVddOff = (state_.value(Register::Regulator) & 1) != 0;
    modes_.select({static_cast<std::uint64_t>(data >> 3)}, allowsVddOff);
}

void ModeMachine::drawCurrent(std::int64_t duration) {
    if (mode() != Mode::LowPowerOn)
        return;
    const int action = (state_.value(Register::InitWdog) >> 5) & 3;
    const bool isLong = duration > currentLimit(state_.value(Register::Timer0) >> 5U);
    if (action == 2 || (action == 3 && isLong)) {
        state_.set(wokenByCurrent);
        wake();
    } else if (action == 3) {
        modes_.refreshed();
    }
}

} // namespace bitlux::zt72518
