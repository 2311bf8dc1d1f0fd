#pragma once

#include "bench/deadline.h"
#include "bench/model/refresh_service.h"
#include "bench/zt72518/mode_machine.h"

#include <cstdint>

namespace bitlux::zt72518 {

/// The periodic actions of the dongle for a chip of the family: refreshes of the watchdog by words,
/// and pulses of current. The first of either is sent at once. A command with values outside of
/// their lists has no effect.
class WatchdogService : public DongleService {
public:
    /// `machine`, whose load draws the current, outlives this.
    explicit WatchdogService(ModeMachine& machine);

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;
    [[nodiscard]] std::int64_t due() const override;
    void serve(DongleBus& bus) override;
    void addPhase(Phase& phase, std::int64_t now) const override;
    void skip(std::int64_t duration) override;
    /// As "Enhanced 2 every 50 ms"; "off" when it does nothing.
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    void commandCurrent(const UsbFrame& frame, std::int64_t now);

    ModeMachine& machine_;
    RefreshService refreshes_;
    std::int64_t pulse_ = 0; ///< nanoseconds
    std::int64_t pause_ = 0; ///< between two pulses
    Deadline pulseEnds_;     ///< not set while they are off
};

} // namespace bitlux::zt72518
