#pragma once

#include "bench/model/mode_timers.h"
#include "bench/zt72518/random_words.h"
#include "bench/zt72518/state.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace bitlux::zt72518 {

/// The modes of the chip and what leads from one to another: words, the watchdog, wake-ups. Power
/// comes up in Init, where nothing expires. The first refresh leads from there, and from Normal
/// Request, to Normal. A reset holds the chip for the time of Init Vreg, keeps the registers and
/// ends in Normal Request.
class ModeMachine {
public:
    enum class Mode : std::uint8_t { Init, Flash, NormalRequest, Normal, Stop, Sleep, Reset };

    /// Both outlive this.
    ModeMachine(State& state, RandomWords& random);

    void timeIs(std::int64_t now) {
        timers_.timeIs(now, [this](ModeTimers::Event event) { take(event); });
    }
    void addPhase(Phase& phase) const;
    void skip(std::int64_t duration) { timers_.skip(duration); }

    /// A write to Watchdog Refresh: a part of a refresh or a whole one.
    void refresh(std::uint8_t data);
    /// A write to Special Mode: select bits and the inverted random word.
    void special(std::uint8_t data);
    /// A write to Mode.
    void select(std::uint8_t data);
    /// The load has drawn a pulse of current, in nanoseconds, that ends now.
    void drawCurrent(std::int64_t duration);
    /// Ends a low-power mode, and does nothing in others. What woke the chip is in the flags.
    void wake();
    /// The command that leaves debug was read.
    void leaveDebug() { state_.set(debug, false); }

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] std::string_view name() const;
    /// Five bits; in Stop those that the mode was selected with.
    [[nodiscard]] std::uint8_t code() const;
    /// The two select bits that Special Mode reads.
    [[nodiscard]] std::uint8_t selectBits() const;
    /// Without a supply or in reset nothing answers on the bus.
    [[nodiscard]] bool answers() const { return mode_ != Mode::Sleep && mode_ != Mode::Reset; }

    /// As "12.5 ms left", or "off".
    [[nodiscard]] std::string watchdogLeft() const { return timers_.watchdogLeft(); }

private:
    void enter(Mode mode);
    void refreshed();
    void failRefresh();
    void reset();
    void take(ModeTimers::Event event);
    /// Of the watchdog in the present mode; 0 where there is none.
    [[nodiscard]] std::int64_t period() const;
    void lowPower(LowPowerCode code);
    /// From the last refresh on, in nanoseconds, in which another one comes too early.
    [[nodiscard]] std::int64_t closedWindow() const;

    State& state_;
    RandomWords& random_;
    Mode mode_ = Mode::Init;
    ModeTimers timers_;
    bool failedBefore_ = false;
    std::uint8_t stopCode_ = 0;
};

} // namespace bitlux::zt72518
