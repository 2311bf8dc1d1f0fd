#pragma once

#include "bench/model/mode_timers.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace bitlux {

/// The modes of a system-basis chip, and what leads from one to another: words, its watchdog,
/// wake-ups. Power comes up in Init. The first refresh leads from there, and from Normal Request,
/// to Normal. In a window the first half of the period is too early for the next one. All times in
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

    /// What the chip's registers say, and what it does beside.
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

    /// `rules` outlives this, and is asked from the first mode on, which it enters by itself.
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
    /// How often since the last refresh, as far as that is counted.
    [[nodiscard]] int failures() const { return failures_; }
    /// A word of a refresh, with the code that enhanced ones want back inverted. True when that
    /// ends the refresh, well or not; the chip draws another code then.
    bool refresh(std::uint64_t data, std::uint8_t code);
    /// A refresh has come, in whatever way.
    void refreshed();
    /// Another period begins.
    void restartWatchdog() { timers_.restartWatchdog(rules_.period(mode_)); }
    void stopWatchdog() { timers_.stopWatchdog(); }
    /// Low power from Normal, as far as it is allowed, or the way back from it.
    void select(LowPowerCode code, bool allowsVddOff);

    [[nodiscard]] Mode mode() const { return mode_; }
    [[nodiscard]] bool inLowPower() const {
        return mode_ == Mode::LowPowerOn || mode_ == Mode::LowPowerOff;
    }
    /// Without a supply, or in reset, the chip takes no word.
    [[nodiscard]] bool listens() const {
        return mode_ != Mode::LowPowerOff && mode_ != Mode::Reset;
    }
    [[nodiscard]] LowPowerCode lowPower() const { return lowPower_; } ///< that was selected last
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
