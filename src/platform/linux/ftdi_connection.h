#pragma once

#include "platform/linux/ftdi_chip.h"
#include "platform/linux/usb_connection.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include <ftdi.h>

namespace bitlux {

/// What one exchange carries at most.
inline constexpr std::size_t mostFtdiBytes = 4096;

/// One channel of an adapter's chip, held exclusively and used through libftdi. A driver of the
/// kernel gives it up for as long.
class FtdiConnection {
public:
    /// Opens and claims; status() is the result. `node` is as "/dev/bus/usb/001/004".
    FtdiConnection(const std::string& node, const FtdiChip& chip, int channel);
    ~FtdiConnection();
    FtdiConnection(const FtdiConnection&) = delete;
    FtdiConnection& operator=(const FtdiConnection&) = delete;

    /// Success while the channel is held, or why it is not.
    [[nodiscard]] UsbStatus status() const;

    /// Empties the chip and lets it sample its lines with each byte; all are inputs. False when the
    /// chip refuses something, as does the next.
    bool start(int baud);
    /// The lines of the mask become outputs.
    bool drive(std::uint8_t outputs);
    /// The lines are the serial port's again.
    void leave();

    /// Writes bytes and gets a sample for each, in `waits` nanoseconds at most. NothingRead when
    /// that time is up; received() is then how many samples have come.
    /// `samples` changes on success only. NoFrame when more samples came than bytes went.
    UsbStatus exchange(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> samples,
                       std::int64_t waits);
    [[nodiscard]] std::size_t received() const { return received_; }

    /// Whether the device is gone, as far as it can be asked.
    bool isGone();

private:
    struct Free {
        /// The connection has closed what it borrowed.
        void operator()(ftdi_context* context) const {
            context->usb_ctx = nullptr;
            context->usb_dev = nullptr;
            ftdi_free(context);
        }
    };

    UsbStatus claim();
    UsbStatus carry(int size, std::int64_t waits);

    // Memory that a transfer may use outlives the connection.
    std::array<std::uint8_t, mostFtdiBytes> out_{};
    std::array<std::uint8_t, mostFtdiBytes> in_{};
    std::unique_ptr<ftdi_context, Free> ftdi_; // has a buffer of its own
    UsbConnection connection_;
    UsbStatus claimed_;
    std::size_t received_ = 0;
};

} // namespace bitlux
