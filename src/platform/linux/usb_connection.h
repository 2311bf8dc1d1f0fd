#pragma once

#include "platform/linux/os_descriptors.h"
#include "platform/usb_endpoint.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <libusb.h>

namespace bitlux {

/// A device node opened through libusb. Nothing is claimed, no other device is looked at, and no
/// thread is started: whatever happens on the device happens inside wait().
class UsbConnection {
public:
    /// Opens a node such as "/dev/bus/usb/001/004"; status() is the result.
    explicit UsbConnection(const std::string& node);

    /// Success, or why the node could not be opened. Gone once the device was found to be gone.
    [[nodiscard]] UsbStatus status() const { return status_; }
    [[nodiscard]] libusb_device_handle* handle() const { return handle_.get(); }
    [[nodiscard]] libusb_context* context() const { return context_.get(); }

    /// Translates a result of libusb. Remembers that the device is gone.
    UsbStatus note(int result);

    /// Lets transfers complete; waits for one at most `microseconds`.
    UsbStatus wait(std::int64_t microseconds);

    /// Keeps something until the device is closed: memory that the kernel may still write to.
    void keepUntilClosed(std::shared_ptr<void> thing) { kept_.push_back(std::move(thing)); }

    /// Sends a request on the control pipe; the time-out is a tenth of a second. Success, Failed
    /// when the device refuses it, Gone, or NothingRead when it may answer a later request.
    UsbStatus ask(const ControlQuestion& question, std::vector<std::uint8_t>& answer);
    /// The version of USB that the device claims to follow, as 0x0201.
    [[nodiscard]] std::uint16_t usbVersion() const;

private:
    class Descriptor {
    public:
        explicit Descriptor(const std::string& node);
        ~Descriptor();
        Descriptor(const Descriptor&) = delete;
        Descriptor& operator=(const Descriptor&) = delete;
        [[nodiscard]] int number() const { return number_; }

    private:
        int number_;
    };
    template <auto End>
    struct Ending {
        template <typename Thing>
        void operator()(Thing* thing) const {
            End(thing);
        }
    };

    UsbStatus open();

    Descriptor descriptor_;
    UsbStatus status_;
    std::unique_ptr<libusb_context, Ending<&libusb_exit>> context_;
    std::vector<std::shared_ptr<void>> kept_;
    std::unique_ptr<libusb_device_handle, Ending<&libusb_close>> handle_;
};

} // namespace bitlux
