#include "platform/linux/usb_devices.h"

#include "platform/linux/file_start.h"
#include "platform/linux/kernel_values.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <span>
#include <tuple>

#include <linux/usb/ch9.h>

#include <fmt/format.h>

namespace bitlux {

namespace {

namespace fs = std::filesystem;

/// A device with longer descriptors is no dongle.
constexpr std::size_t mostDescriptorBytes = 65536;

/// One descriptor, or several behind each other.
using DescriptorBytes = std::span<const std::uint8_t>;

std::size_t leastSize(std::uint8_t type) {
    switch (type) {
    case USB_DT_DEVICE:
        return USB_DT_DEVICE_SIZE;
    case USB_DT_CONFIG:
    case USB_DT_INTERFACE:
        static_assert(USB_DT_CONFIG_SIZE == USB_DT_INTERFACE_SIZE);
        return USB_DT_CONFIG_SIZE;
    case USB_DT_ENDPOINT:
        return USB_DT_ENDPOINT_SIZE;
    default:
        return 2;
    }
}

/// Takes the next descriptor off the front; an empty one where the bytes are damaged.
DescriptorBytes takeDescriptor(DescriptorBytes& bytes) {
    if (bytes.size() < 2 || bytes[0] > bytes.size() || bytes[0] < leastSize(bytes[1]))
        return {};
    const DescriptorBytes descriptor = bytes.first(bytes[0]);
    bytes = bytes.subspan(descriptor.size());
    return descriptor;
}

bool isA(std::uint8_t type, DescriptorBytes descriptor) {
    return !descriptor.empty() && descriptor[1] == type;
}

/// All descriptors of a configuration after its own. `active` 0 selects the first configuration.
std::optional<DescriptorBytes> configuration(DescriptorBytes bytes, std::uint8_t active) {
    if (!isA(USB_DT_DEVICE, takeDescriptor(bytes)))
        return std::nullopt;
    while (!bytes.empty()) {
        const DescriptorBytes all = bytes;
        const DescriptorBytes head = takeDescriptor(bytes);
        if (!isA(USB_DT_CONFIG, head))
            return std::nullopt;
        const std::size_t length = head[2] + std::size_t{head[3]} * 256;
        if (length < head.size() || length > all.size())
            return std::nullopt;
        if (active == 0 || head[5] == active)
            return all.subspan(head.size(), length - head.size());
        bytes = all.subspan(length);
    }
    return std::nullopt;
}

struct Pipes {
    bool isVendorSpecific = false;
    std::optional<UsbCandidate::Transfer> in;
    std::optional<UsbCandidate::Transfer> out;
};

void takeEndpoint(DescriptorBytes endpoint, Pipes& pipes) {
    const int type = endpoint[3] & USB_ENDPOINT_XFERTYPE_MASK;
    if (type != USB_ENDPOINT_XFER_BULK && type != USB_ENDPOINT_XFER_INT)
        return;
    const auto transfer = type == USB_ENDPOINT_XFER_BULK ? UsbCandidate::Transfer::Bulk
                                                         : UsbCandidate::Transfer::Interrupt;
    if (endpoint[2] == dongleInEndpoint)
        pipes.in = transfer;
    else if (endpoint[2] == dongleOutEndpoint)
        pipes.out = transfer;
}

/// Of interface 0 as it is after plugging in; nothing where the descriptors are damaged.
std::optional<Pipes> pipesOf(DescriptorBytes descriptors) {
    Pipes pipes;
    bool isTheirs = false;
    while (!descriptors.empty()) {
        const DescriptorBytes descriptor = takeDescriptor(descriptors);
        if (descriptor.empty())
            return std::nullopt;
        if (isA(USB_DT_INTERFACE, descriptor)) {
            isTheirs = descriptor[2] == 0 && descriptor[3] == 0;
            if (isTheirs)
                pipes.isVendorSpecific = descriptor[5] == USB_CLASS_VENDOR_SPEC;
        } else if (isTheirs && isA(USB_DT_ENDPOINT, descriptor)) {
            takeEndpoint(descriptor, pipes);
        }
    }
    return pipes;
}

std::optional<UsbCandidate> candidateAt(const std::string& folder) {
    const auto bus = kernelNumber<int>(folder + "/busnum", 10);
    const auto address = kernelNumber<int>(folder + "/devnum", 10);
    const auto vendor = kernelNumber<std::uint16_t>(folder + "/idVendor", 16);
    const auto product = kernelNumber<std::uint16_t>(folder + "/idProduct", 16);
    if (!bus || *bus <= 0 || !address || *address <= 0 || !vendor || !product)
        return std::nullopt;
    const std::string text = readFileStart(folder + "/descriptors", mostDescriptorBytes).bytes;
    const std::vector<std::uint8_t> bytes(text.begin(), text.end());
    // the file is empty while the device is not configured
    const auto active = kernelNumber<std::uint8_t>(folder + "/bConfigurationValue", 10);
    const std::optional<DescriptorBytes> descriptors = configuration(bytes, active.value_or(0));
    const std::optional<Pipes> pipes = descriptors ? pipesOf(*descriptors) : std::nullopt;
    if (!pipes || !pipes->isVendorSpecific || !pipes->in || !pipes->out)
        return std::nullopt;
    return UsbCandidate{.numbers = {*vendor, *product},
                        .bus = *bus,
                        .address = *address,
                        .name = kernelLine(folder + "/product"),
                        .serial = kernelLine(folder + "/serial"),
                        .folder = folder,
                        .in = *pipes->in,
                        .out = *pipes->out};
}

} // namespace

std::vector<UsbCandidate> findUsbCandidates(const std::string& devices) {
    std::vector<UsbCandidate> found;
    std::error_code error;
    for (fs::directory_iterator entry(devices, error), end; !error && entry != end;
         entry.increment(error)) {
        if (entry->path().filename().string().find(':') != std::string::npos)
            continue; // an interface
        if (std::optional<UsbCandidate> candidate = candidateAt(entry->path().string()))
            found.push_back(std::move(*candidate));
    }
    std::sort(found.begin(), found.end(), [](const UsbCandidate& a, const UsbCandidate& b) {
        return std::tie(a.bus, a.address) < std::tie(b.bus, b.address);
    });
    return found;
}

std::string usbNode(const UsbCandidate& candidate) {
    return fmt::format("/dev/bus/usb/{:03}/{:03}", candidate.bus, candidate.address);
}

} // namespace bitlux
