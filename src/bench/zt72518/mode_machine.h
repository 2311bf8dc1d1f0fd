#pragma once

#include "bench/zt72518/random_words.h"
#include "bench/zt72518/state.h"

#include <cstdint>
#include <limits>
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

    void timeIs(std::int64_t now);
    void addPhase(Phase& phase) const;
    void skip(std::int64_t duration);

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

    /// Time in nanoseconds until the watchdog expires; nothing when it does not run.
    [[nodiscard]] bool watchdogRuns() const { return watchdogDue_ != never; }
    [[nodiscard]] std::int64_t watchdogLeft() const { return watchdogDue_ - now_; }

private:
    static constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

    void enter(Mode mode);
    void restartWatchdog();
    void refreshed();
    void failRefresh();
    void reset();
    void expire();
    void stop(unsigned code);
    void sleep(unsigned code);
    [[nodiscard]] bool comesTooEarly() const;

    State& state_;
    RandomWords& random_;
    Mode mode_ = Mode::Init;
    std::int64_t now_ = 0;
    std::int64_t watchdogDue_ = never;
    std::int64_t wakeUpDue_ = never;
    std::int64_t resetEnds_ = never;
    std::int64_t refreshedAt_ = 0;
    std::size_t step_ = 0; ///< of a refresh in several words
    bool failedBefore_ = false;
    std::uint8_t stopCode_ = 0;
};

} // namespace bitlux::zt72518
