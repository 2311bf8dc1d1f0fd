#pragma once

#include "platform/linux/usb_connection.h"

#include <cstdint>
#include <memory>
#include <vector>

#include <libusb.h>

namespace bitlux {

/// A pipe of a device, and how it transfers.
struct UsbPipe {
    std::uint8_t address = 0;
    libusb_transfer_type type = LIBUSB_TRANSFER_TYPE_BULK;
};

/// The buffer of one frame, which travels on a pipe again and again. It may only go when it is not
/// under way.
class UsbTransfer {
public:
    UsbTransfer(libusb_device_handle* handle, const UsbPipe& pipe);
    UsbTransfer(const UsbTransfer&) = delete;
    UsbTransfer& operator=(const UsbTransfer&) = delete;

    /// Returns a result of libusb.
    int submit();
    void cancel();
    [[nodiscard]] bool isUnderWay() const { return underWay_; }
    /// How it ended, once it is no longer under way: Success with a whole frame, NoFrame with less
    /// or with too much, NothingRead when called back, Gone, or Failed.
    [[nodiscard]] UsbStatus outcome() const;
    /// Whether it Failed because the pipe is halted.
    [[nodiscard]] bool isStalled() const { return transfer_->status == LIBUSB_TRANSFER_STALL; }

    UsbFrame frame{};

private:
    struct Free {
        void operator()(libusb_transfer* transfer) const { libusb_free_transfer(transfer); }
    };

    std::unique_ptr<libusb_transfer, Free> transfer_;
    bool underWay_ = false;
};

/// The buffers of one pipe. They go round: a pipe ends them in the order in which they were
/// submitted, so the oldest in use is always the next to look at.
class UsbTransfers {
public:
    UsbTransfers(UsbConnection& connection, const UsbPipe& pipe, int count);
    /// Calls back what is under way.
    ~UsbTransfers();
    UsbTransfers(const UsbTransfers&) = delete;
    UsbTransfers& operator=(const UsbTransfers&) = delete;

    /// The next buffer to fill and submit; null while all are in use.
    UsbTransfer* idle();
    /// Submits the idle buffer, which then is in use.
    UsbStatus submit();
    /// The oldest buffer in use if it has ended, else null. It stays in use until it is taken.
    UsbTransfer* ended();
    void take();

    /// Calls back all that are under way, and waits until they have ended, one way or the other.
    /// False when one has not after a second.
    bool callBack();
    /// Calls back, and clears a halt of the pipe.
    UsbStatus clearHalt();

private:
    [[nodiscard]] bool areUnderWay() const;

    UsbConnection& connection_;
    UsbPipe pipe_;
    std::vector<std::unique_ptr<UsbTransfer>> ring_;
    std::size_t oldest_ = 0;
    std::size_t inUse_ = 0;
};

} // namespace bitlux
