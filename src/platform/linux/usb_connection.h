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
    /// Opens a node such as "/dev/bus/usb/001/004"; status() tells what came of it.
    explicit UsbConnection(const std::string& node);

    /// Success, or why the node could not be opened. Gone as soon as the device was found gone.
    [[nodiscard]] UsbStatus status() const { return status_; }
    [[nodiscard]] libusb_device_handle* handle() const { return handle_.get(); }

    /// What a result of libusb means here. Remembers that the device is gone.
    UsbStatus note(int result);

    /// Lets transfers complete; waits for one at most `microseconds`.
    UsbStatus wait(std::int64_t microseconds);

    /// Keeps something until the device is closed: what the kernel may still want to write to.
    void keepUntilClosed(std::shared_ptr<void> thing) { kept_.push_back(std::move(thing)); }

    /// Puts a question on the control pipe; waits a tenth of a second at most. Success, Failed when
    /// the device refuses it, Gone, or NothingRead when it may yet answer another time.
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
