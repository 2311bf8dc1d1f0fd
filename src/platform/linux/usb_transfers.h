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

/// The buffer of one frame, which is reused. It may only be destroyed when it is not submitted.
class UsbTransfer {
public:
    UsbTransfer(libusb_device_handle* handle, const UsbPipe& pipe);
    UsbTransfer(const UsbTransfer&) = delete;
    UsbTransfer& operator=(const UsbTransfer&) = delete;

    /// Returns a result of libusb.
    int submit();
    void cancel();
    [[nodiscard]] bool isUnderWay() const { return underWay_; }
    /// The result once it has completed: Success with a whole frame, NoFrame with fewer or more
    /// bytes, NothingRead when cancelled, Gone, or Failed.
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

/// The buffers of one pipe, used as a ring: a pipe completes them in the order in which they were
/// submitted, so the oldest in use is always the next to check.
class UsbTransfers {
public:
    UsbTransfers(UsbConnection& connection, const UsbPipe& pipe, int count);
    /// Cancels what is submitted.
    ~UsbTransfers();
    UsbTransfers(const UsbTransfers&) = delete;
    UsbTransfers& operator=(const UsbTransfers&) = delete;

    /// The next buffer to fill and submit; null while all are in use.
    UsbTransfer* idle();
    /// Submits the idle buffer, which then is in use.
    UsbStatus submit();
    /// The oldest buffer in use if it has completed, else null. It stays in use until it is taken.
    UsbTransfer* ended();
    void take();

    /// Cancels all submitted buffers, and waits until they have completed. False when one has not
    /// after a second.
    bool callBack();
    /// Cancels, and clears a halt of the pipe.
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
