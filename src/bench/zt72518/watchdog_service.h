#pragma once

#include "bench/dongle_service.h"
#include "bench/zt72518/mode_machine.h"
#include "bench/zt72518/refresh_steps.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// What the dongle does for a chip of the family by itself: refreshes of the watchdog by words, and
/// pulses of current. The first of either comes at once. A command whose values are beyond their
/// lists changes nothing.
class WatchdogService : public DongleService {
public:
    /// `machine`, whose load draws the current, outlives this.
    explicit WatchdogService(ModeMachine& machine) : machine_(machine) {}

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;
    [[nodiscard]] std::int64_t due() const override;
    void serve(DongleBus& bus) override;
    void addPhase(Phase& phase, std::int64_t now) const override;
    void skip(std::int64_t duration) override;
    /// As "Enhanced 2 every 50 ms"; "off" when it does nothing.
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    void commandRefresh(const UsbFrame& frame, std::int64_t now);
    void commandCurrent(const UsbFrame& frame, std::int64_t now);
    void refresh(DongleBus& bus) const;
    [[nodiscard]] std::int64_t refreshDue() const { return period_ > 0 ? refreshDue_ : never; }
    [[nodiscard]] std::int64_t pulseDue() const { return pause_ > 0 ? pulseEnds_ : never; }

    ModeMachine& machine_;
    RefreshMode mode_ = RefreshMode::Simple;
    std::int64_t period_ = 0; ///< nanoseconds, 0 while it is off
    std::int64_t refreshDue_ = 0;
    std::int64_t pulse_ = 0; ///< nanoseconds
    std::int64_t pause_ = 0; ///< between two pulses, 0 while they are off
    std::int64_t pulseEnds_ = 0;
};

} // namespace bitlux::zt72518
