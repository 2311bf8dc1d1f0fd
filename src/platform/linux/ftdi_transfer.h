#pragma once

#include "platform/linux/usb_connection.h"

#include <memory>

#include <ftdi.h>

namespace bitlux {

/// A transfer through libftdi. libftdi submits it again until it has all its bytes, also after a
/// failure; this one looks at how each part has ended.
class FtdiTransfer {
public:
    /// Takes what libftdi has submitted; null for nothing.
    FtdiTransfer(UsbConnection& connection, ftdi_transfer_control* control)
        : connection_(connection), control_(control) {}
    /// Calls it back where it is under way, and clears a halt of its pipe.
    ~FtdiTransfer();
    FtdiTransfer(const FtdiTransfer&) = delete;
    FtdiTransfer& operator=(const FtdiTransfer&) = delete;

    [[nodiscard]] bool isComplete() const;
    /// Success while it has not failed.
    [[nodiscard]] UsbStatus status() const;
    /// How many bytes it has moved.
    [[nodiscard]] std::size_t moved() const;

private:
    struct Free {
        void operator()(ftdi_transfer_control* control) const;
    };

    [[nodiscard]] bool callBack() const;

    UsbConnection& connection_;
    std::unique_ptr<ftdi_transfer_control, Free> control_;
};

} // namespace bitlux
