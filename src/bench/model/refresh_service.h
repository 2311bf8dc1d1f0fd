#pragma once

#include "bench/deadline.h"
#include "bench/dongle_service.h"
#include "bench/model/refresh_steps.h"

#include <array>
#include <cstdint>

namespace bitlux {

/// The automatic refreshes of a chip's watchdog by the dongle; the first is sent at once. A command
/// with values outside of their lists has no effect.
class RefreshService : public DongleService {
public:
    /// The differences between chips.
    struct Chip {
        std::uint8_t command;  ///< of the dongle; its frame has the mode, and the index of the time
        std::uint8_t stop;     ///< instead of the mode
        std::uint64_t refresh; ///< word that refreshes
        std::uint64_t
            readCode; ///< word that reads the code that an enhanced refresh returns inverted
        int bits;     ///< of the words
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
