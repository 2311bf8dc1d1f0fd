#pragma once

#include "bench/deadline.h"
#include "bench/dongle_service.h"

#include <cstdint>

namespace bitlux {

/// A word of one byte that the dongle sends to a chip periodically, the first one at once. While it
/// is on, a command changes word and period; the next word is sent when it was due or one new
/// period from now, whichever is earlier. A period of 0 turns it off. A command with an unknown
/// state has no effect.
class ByteService : public DongleService {
public:
    /// The differences between chips.
    struct Chip {
        std::uint8_t number; ///< identifies the chip in the command
        std::uint8_t on;     ///< state that turns it on
        std::int64_t step;   ///< of the period, in nanoseconds
        int type;            ///< of the words
        bool stoppedByWords; ///< by a 1 in the last byte of a word's frame
    };

    explicit ByteService(const Chip& chip) : chip_(chip) {}

    std::optional<UsbFrame> take(const UsbFrame& frame, DongleBus& bus) override;
    [[nodiscard]] std::int64_t due() const override { return due_.at(); }
    void serve(DongleBus& bus) override;
    void addPhase(Phase& phase, std::int64_t now) const override;
    void skip(std::int64_t duration) override { due_.skip(duration); }
    /// As "03 every 7.5 ms", or "off".
    [[nodiscard]] std::vector<Reading> readings() const override;

private:
    void command(const UsbFrame& frame, std::int64_t now);

    const Chip chip_;
    std::uint8_t word_ = 0;
    std::int64_t period_ = 0;
    Deadline due_;
};

} // namespace bitlux
