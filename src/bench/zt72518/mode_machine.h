#pragma once

#include "bench/model/chip_modes.h"
#include "bench/zt72518/random_words.h"
#include "bench/zt72518/state.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace bitlux::zt72518 {

/// The modes of the chip and their transitions. In Init nothing expires. A reset holds the chip for
/// the time of Init Vreg, keeps the registers and ends in Normal Request.
class ModeMachine : private ChipModes::Rules {
public:
    using Mode = ChipModes::Mode;

    /// Both outlive this.
    ModeMachine(State& state, RandomWords& random);

    void timeIs(std::int64_t now) { modes_.timeIs(now); }
    void addPhase(Phase& phase) const { modes_.addPhase(phase); }
    void skip(std::int64_t duration) { modes_.skip(duration); }

    /// A write to Watchdog Refresh: a part of a refresh or a whole one.
    void refresh(std::uint8_t data);
    /// A write to Special Mode: select bits and the inverted random word.
    void special(std::uint8_t data);
    /// A write to Mode.
    void select(std::uint8_t data);
    /// The load has drawn a pulse of current, in nanoseconds, that ends now.
    void drawCurrent(std::int64_t duration);
    /// Ends a low-power mode, and does nothing in others. The flags have the cause of the wake-up.
    void wake();
    /// The command that leaves debug was read.
    void leaveDebug() { state_.set(debug, false); }

    [[nodiscard]] Mode mode() const { return modes_.mode(); }
    [[nodiscard]] std::string_view name() const;
    /// Five bits; in Stop those that the mode was selected with.
    [[nodiscard]] std::uint8_t code() const;
    /// The two select bits that Special Mode reads.
    [[nodiscard]] std::uint8_t selectBits() const;
    [[nodiscard]] bool answers() const { return modes_.listens(); }
    /// As "12.5 ms left", or "off".
    [[nodiscard]] std::string watchdogLeft() const { return modes_.watchdogLeft(); }

private:
    [[nodiscard]] std::int64_t period(Mode mode) const override;
    [[nodiscard]] RefreshMode refreshMode() const override;
    [[nodiscard]] bool hasWindow() const override;
    [[nodiscard]] std::int64_t resetTime() const override;
    [[nodiscard]] std::int64_t wakeUpTime() const override;
    void entered(Mode mode) override;
    void refreshFailed() override;
    void watchdogExpired() override;
    void woken(bool byTimer) override;

    State& state_;
    RandomWords& random_;
    ChipModes modes_{*this, Mode::NormalRequest};
};

} // namespace bitlux::zt72518
