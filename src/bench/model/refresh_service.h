#pragma once

#include "bench/deadline.h"
#include "bench/dongle_service.h"
#include "bench/model/refresh_steps.h"

#include <array>
#include <cstdint>

namespace bitlux {

/// The refreshes of a chip's watchdog that the dongle sends by itself; the first comes at once. A
/// command whose values are beyond their lists changes nothing.
class RefreshService : public DongleService {
public:
    /// What differs from chip to chip.
    struct Chip {
        std::uint8_t command;   ///< of the dongle; its frame has the mode, and the time's number
        std::uint8_t stop;      ///< in place of the mode
        std::uint64_t refresh;  ///< word that refreshes
        std::uint64_t readCode; ///< word that reads what an enhanced refresh gives back inverted
        int bits;               ///< of the words
        int type;
        std::array<const char*, 4> modes;
    };

    explicit RefreshService(const Chip& chip) : chip_(chip) {}

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;
    [[nodiscard]] std::int64_t due() const override { return due_.at(); }
    void serve(DongleBus& bus) override;
    void addPhase(Phase& phase, std::int64_t now) const override { due_.addPhase(phase, now); }
    void skip(std::int64_t duration) override { due_.skip(duration); }
    /// As "Enhanced 2 every 50 ms", or "off".
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    void refresh(DongleBus& bus) const;

    const Chip chip_;
    RefreshMode mode_ = RefreshMode::Simple;
    std::int64_t period_ = 0;
    Deadline due_;
};

} // namespace bitlux
