#pragma once

#include "bench/dongle_service.h"
#include "bench/zt72518/refresh_steps.h"

#include <cstdint>

namespace bitlux::zt72516 {

/// The refreshes of the chip's watchdog that the dongle sends by itself; the first comes at once. A
/// command whose values are beyond their lists changes nothing.
class RefreshService : public DongleService {
public:
    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;
    [[nodiscard]] std::int64_t due() const override { return period_ > 0 ? due_ : never; }
    void serve(DongleBus& bus) override;
    void addPhase(Phase& phase, std::int64_t now) const override {
        phase.push_back(period_ > 0 ? due_ - now : never);
    }
    void skip(std::int64_t duration) override { due_ += duration; }
    /// As "Advanced 2 every 50 ms", or "off".
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    void refresh(DongleBus& bus) const;

    zt72518::RefreshMode mode_ = zt72518::RefreshMode::Simple;
    std::int64_t period_ = 0; ///< nanoseconds, 0 while it is off
    std::int64_t due_ = 0;
};

} // namespace bitlux::zt72516
