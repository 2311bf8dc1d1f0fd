#pragma once

#include "bench/chip.h"
#include "bench/zt72518/refresh_steps.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <functional>
#include <string>

namespace bitlux::zt72518 {

/// What the dongle does for a chip of the family by itself: refreshes of the watchdog by words, and
/// pulses of current. The first of either comes at once.
class WatchdogService {
public:
    /// Sends a word and returns the reply.
    using Exchange = std::function<std::uint16_t(std::uint16_t word)>;

    /// Carries out a command of a frame; one that is none of its own, or whose values are beyond
    /// their lists, changes nothing. `now` in nanoseconds.
    void command(const UsbFrame& frame, std::int64_t now);

    /// Does all that is due by `until` at its time. `chip` may be null.
    void serve(std::int64_t until, Chip* chip, const Exchange& exchange);

    /// What it does, as "Enhanced 2 every 50 ms"; "off" when nothing.
    [[nodiscard]] std::string refreshText() const;
    [[nodiscard]] std::string currentText() const;

private:
    void commandRefresh(const UsbFrame& frame, std::int64_t now);
    void commandCurrent(const UsbFrame& frame, std::int64_t now);
    void refresh(const Exchange& exchange) const;

    RefreshMode mode_ = RefreshMode::Simple;
    std::int64_t period_ = 0; ///< nanoseconds, 0 while it is off
    std::int64_t refreshDue_ = 0;
    std::int64_t pulse_ = 0; ///< nanoseconds
    std::int64_t pause_ = 0; ///< between two pulses, 0 while they are off
    std::int64_t pulseEnds_ = 0;
};

} // namespace bitlux::zt72518
