#pragma once

#include "bench/model/mode_timers.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace bitlux {

/// The modes of a system-basis chip, and the causes of transitions: words, its watchdog, wake-ups.
/// Power comes up in Init. The first refresh leads from there, and from Normal Request, to Normal.
/// With a window, the first half of a period is too early for the next refresh. All times in
/// nanoseconds.
class ChipModes {
public:
    enum class Mode : std::uint8_t {
        Init,
        Flash,
        NormalRequest,
        Normal,
        LowPowerOn,  ///< with VDD
        LowPowerOff, ///< without
        Reset,
    };

    /// Settings from the chip's registers, and its other actions.
    class Rules {
    public:
        virtual ~Rules() = default;

        /// Of the watchdog in a mode; 0 where there is none.
        [[nodiscard]] virtual std::int64_t period(Mode mode) const = 0;
        [[nodiscard]] virtual RefreshMode refreshMode() const = 0;
        [[nodiscard]] virtual bool hasWindow() const = 0;
        [[nodiscard]] virtual std::int64_t resetTime() const = 0;
        [[nodiscard]] virtual std::int64_t wakeUpTime() const = 0;

        virtual void entered(Mode mode) = 0;
        /// A refresh was wrong or came too early.
        virtual void refreshFailed() = 0;
        virtual void watchdogExpired() { refreshFailed(); }
        /// In low power, by the timer or by a word.
        virtual void woken(bool byTimer) = 0;
    };

    /// `rules` outlives this, and is called from the first mode on, which the constructor enters.
    ChipModes(Rules& rules, Mode afterReset) : rules_(rules), afterReset_(afterReset) {}

    void timeIs(std::int64_t now) {
        timers_.timeIs(now, [this](ModeTimers::Event event) { take(event); });
    }
    void addPhase(Phase& phase) const;
    void skip(std::int64_t duration) { timers_.skip(duration); }

    void enter(Mode mode);
    void reset();
    /// The watchdog resets the chip.
    void fail() {
        failures_ = std::min(failures_ + 1, mostFailures);
        reset();
    }
    /// How often since the last refresh, as far as it is counted.
    [[nodiscard]] int failures() const { return failures_; }
    /// A word of a refresh, with the code that enhanced refreshes must return inverted. True when
    /// it ends the refresh, successfully or not; the chip then draws a new code.
    bool refresh(std::uint64_t data, std::uint8_t code);
    /// A refresh of any kind has succeeded.
    void refreshed();
    /// Another period begins.
    void restartWatchdog() { timers_.restartWatchdog(rules_.period(mode_)); }
    void stopWatchdog() { timers_.stopWatchdog(); }
    /// Enters low power from Normal, if allowed, or leaves it.
    void select(LowPowerCode code, bool allowsVddOff);

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] bool inLowPower() const {
        return mode_ == Mode::LowPowerOn || mode_ == Mode::LowPowerOff;
    }
    /// Without a supply, or in reset, the chip accepts no word.
    [[nodiscard]] bool listens() const {
        return mode_ != Mode::LowPowerOff && mode_ != Mode::Reset;
    }
    [[nodiscard]] LowPowerCode lowPower() const { return lowPower_; } ///< selected last
    [[nodiscard]] bool watchdogRuns() const { return timers_.watchdogRuns(); }
    /// As "12.5 ms left", or "off".
    [[nodiscard]] std::string watchdogLeft() const { return timers_.watchdogLeft(); }

private:
    static constexpr int mostFailures = 5;

    void take(ModeTimers::Event event);

    Rules& rules_;
    const Mode afterReset_;
    Mode mode_ = Mode::Init;
    LowPowerCode lowPower_{0};
    int failures_ = 0;
    ModeTimers timers_;
};

} // namespace bitlux
