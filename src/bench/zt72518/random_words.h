#pragma once

#include <cstdint>
#include <random>

namespace bitlux::zt72518 {

/// The random words of the chip, the same sequence at every start.
class RandomWords {
public:
    RandomWords() { drawAll(); }

    [[nodiscard]] std::uint8_t special() const { return special_ & 0x3F; }
    [[nodiscard]] std::uint8_t mode() const { return mode_ & 0x07; }
    [[nodiscard]] std::uint8_t watchdog() const { return watchdog_; }

    /// A word that was answered is not used again.
    void drawSpecial() { special_ = draw(); }
    void drawMode() { mode_ = draw(); }
    void drawWatchdog() { watchdog_ = draw(); }

private:
    std::uint8_t draw() { return static_cast<std::uint8_t>(random_() >> 8U); }
    void drawAll() {
        drawSpecial();
        drawMode();
        drawWatchdog();
    }

    std::minstd_rand random_;
    std::uint8_t special_ = 0;
    std::uint8_t mode_ = 0;
    std::uint8_t watchdog_ = 0;
};

} // namespace bitlux::zt72518
