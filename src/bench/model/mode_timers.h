#pragma once

#include "bench/deadline.h"
#include "bench/model/served_watchdog.h"

#include <cstdint>
#include <functional>

namespace bitlux {

/// The timers that end a mode of a system-basis chip: watchdog, forced wake-up, end of a reset. All
/// times in nanoseconds.
class ModeTimers {
public:
    enum class Event : std::uint8_t { ResetEnds, WakesUp, WatchdogExpires };

    /// Advances the time to `now`. `happens` is called for each event at its moment, and begins
    /// another mode or stops the timer.
    void timeIs(std::int64_t now, const std::function<void(Event)>& happens);
    [[nodiscard]] std::int64_t now() const { return now_; }

    /// A mode begins, with a period of the watchdog, 0 for none; all other timers are off.
    void begin(std::int64_t period);
    void wakeUpIn(std::int64_t duration) { wakeUp_.set(now_ + duration); }
    void endResetIn(std::int64_t duration) { resetEnds_.set(now_ + duration); }

    /// A word of a refresh, see ServedWatchdog::take.
    ServedWatchdog::Outcome refresh(std::uint64_t data, std::uint8_t code, RefreshMode mode,
                                    std::int64_t closed) {
        return watchdog_.take(data, code, mode, now_, closed);
    }
    /// After a refresh, or at the begin of a mode: a new period.
    void restartWatchdog(std::int64_t period) { watchdog_.start(now_, period); }
    void stopWatchdog() { watchdog_.stop(); }
    [[nodiscard]] bool watchdogRuns() const { return watchdog_.due().isSet(); }
    /// As "12.5 ms left", or "off".
    [[nodiscard]] std::string watchdogLeft() const { return watchdog_.left(now_); }

    void addPhase(Phase& phase) const;
    void skip(std::int64_t duration);

private:
    std::int64_t now_ = 0;
    ServedWatchdog watchdog_;
    Deadline wakeUp_;
    Deadline resetEnds_;
};

/// The low power that five bits of a mode select: VDD on with 0x10 and more, VDD off with 0x0C to
/// 0x0F. 2 wakes the chip from the first.
struct LowPowerCode {
    std::uint64_t code;

    [[nodiscard]] bool keepsVdd() const { return (code & 0x10) != 0; }
    [[nodiscard]] bool dropsVdd() const { return (code & 0x1C) == 0x0C; }
    [[nodiscard]] bool wakes() const { return code == 2; }
    [[nodiscard]] bool wakesByTimer() const { return (code & (keepsVdd() ? 8 : 2)) != 0; }
    [[nodiscard]] bool hasWatchdog() const { return keepsVdd() && (code & 1) != 0; }
};

} // namespace bitlux
