#pragma once

#include "platform/linux/dongle_search.h"
#include "platform/usb_endpoint.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

class OpenDongle;

/// The USB ports of a machine, reached through libusb. Nothing is opened before an endpoint needs
/// it. Between calls a search leaves no thread, no watch and no open device node.
class LinuxUsbHost : public UsbHost {
public:
    /// By default this machine's. With a serial number only the dongle that has it is found.
    explicit LinuxUsbHost(UsbPlaces places = {}, std::string serial = {});

    std::unique_ptr<UsbEndpoint> makeEndpoint() override;

    /// Why a dongle that was found was not opened since the last search: a sentence, which names
    /// the program that holds it. Empty when there is nothing to say.
    [[nodiscard]] std::string refusal() const;

private:
    class Endpoint;

    /// Counts the dongles, and keeps them for openDongle.
    int search(std::string_view deviceInterfaceClass);
    /// One of those counted last; endpoints that hold it at the same time share it.
    UsbStatus openDongle(int index, std::shared_ptr<OpenDongle>& dongle);

    struct Shared {
        UsbCandidate device;
        std::weak_ptr<OpenDongle> dongle;
    };

    DongleSearch search_;
    std::vector<UsbCandidate> found_;
    UsbCandidate wanted_; ///< the last that was to be opened
    UsbStatus result_ = UsbStatus::Success;
    std::vector<Shared> shared_;
};

} // namespace bitlux
