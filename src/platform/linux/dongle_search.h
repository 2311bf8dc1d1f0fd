#pragma once

#include "platform/linux/dongle_numbers.h"
#include "platform/linux/usb_devices.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bitlux {

/// The bytes of a serial number that messages show.
inline constexpr std::size_t longestSerial = 60;

/// Where a machine lists its USB devices.
struct UsbPlaces {
    std::string devices = "/sys/bus/usb/devices"; ///< the kernel's list
    std::string nodes = "/dev/bus/usb";
    std::string processes = "/proc"; ///< the kernel's folder of them
    std::vector<std::string> numberFiles = DongleNumbers::files();
};

/// Finds the dongles among the devices. A candidate is one when its numbers are in the files, or
/// when it names the device interface class itself; it is queried for that only once.
class DongleSearch {
public:
    /// With a serial number it finds the dongle that has it, and queries no other device.
    explicit DongleSearch(UsbPlaces places, std::string serial = {})
        : places_(std::move(places)), serial_(std::move(serial)) {}

    /// All dongles, in the order of the kernel's list. A device that would have to be queried but
    /// may not be opened is left out.
    std::vector<UsbCandidate> find(std::string_view deviceInterfaceClass);

    /// The device node of a candidate.
    [[nodiscard]] std::string node(const UsbCandidate& candidate) const;
    /// The programs that have a candidate open, as far as this user may see; see holdersText.
    [[nodiscard]] std::string holders(const UsbCandidate& candidate) const;

private:
    struct Answer {
        UsbCandidate device;
        std::vector<std::string> classes;
    };

    bool names(const UsbCandidate& candidate, std::string_view deviceInterfaceClass);
    const Answer* answerOf(const UsbCandidate& candidate);
    void forgetAllBut(const std::vector<UsbCandidate>& present);

    UsbPlaces places_;
    std::string serial_;
    std::vector<Answer> answers_;
};

/// Whether two candidates are one device, plugged in once.
bool isSameDevice(const UsbCandidate& one, const UsbCandidate& other);

} // namespace bitlux
