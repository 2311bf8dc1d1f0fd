#include "emulated_adapter.h"

#include "support/usb_descriptors.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <utility>

#include <fmt/format.h>

namespace bitlux::test {

namespace {

constexpr std::uint8_t reset = 0x00; // and to empty its buffers
constexpr std::uint8_t setBitMode = 0x0B;
constexpr int synchronous = 4;

std::string descriptorsOf(const AdapterKind& kind) {
    std::string interfaces;
    for (int i = 0; i < kind.channels; ++i) {
        std::string interface(vendorInterface);
        interface[2] = static_cast<char>(i);
        interfaces += interface;
        for (const int endpoint : {0x81 + 2 * i, 0x02 + 2 * i}) {
            std::string bulk(bulkIn);
            bulk[2] = static_cast<char>(endpoint);
            bulk[4] = static_cast<char>(kind.packet % 256);
            bulk[5] = static_cast<char>(kind.packet / 256);
            interfaces += bulk;
        }
    }
    std::string head = configuration(1, {interfaces});
    head[4] = static_cast<char>(kind.channels);
    return std::string(deviceDescriptor) + head;
}

bool isIn(const usbdevfs_urb& urb) {
    return (urb.endpoint & 0x80) != 0;
}

} // namespace

EmulatedAdapter::EmulatedAdapter(const Testbed& testbed, const TemporaryFolder& list,
                                 AdapterKind kind)
    : EmulatedUsbNode(testbed, list, kind.address, descriptorsOf(kind)),
      kind_(std::move(kind)),
      wires_([](std::uint8_t outputs) { return outputs; }),
      hasDriver_(kind_.hasDriver) {
    const std::string place = fmt::format("1-{}", kind_.address);
    plugIn(list, place, kind_.address, descriptorsOf(kind_));
    list.write(place + "/idVendor", "0403\n");
    list.write(place + "/idProduct", fmt::format("{:04x}\n", kind_.product));
    list.write(place + "/bcdDevice", fmt::format("{:04x}\n", kind_.release));
    list.write(place + "/product", kind_.name + "\n");
    if (!kind_.serial.empty())
        list.write(place + "/serial", kind_.serial + "\n");
    for (int i = 0; i < kind_.channels && hasDriver_; ++i)
        std::filesystem::create_directories(
            list.path(fmt::format("{0}/{0}:1.{1}/ttyUSB{1}", place, i)));
}

void EmulatedAdapter::recover() {
    locked([this] {
        fault_ = {};
        run();
        tellPoll();
    });
}

std::vector<std::string> EmulatedAdapter::controls() {
    return locked([this] { return std::exchange(controls_, {}); });
}

std::vector<std::vector<std::uint8_t>> EmulatedAdapter::written() {
    return locked([this] { return std::exchange(written_, {}); });
}

int EmulatedAdapter::askDrivers(unsigned long request, void* argument) {
    switch (request) {
    case USBDEVFS_GETDRIVER: {
        auto& asked = pointedTo<usbdevfs_getdriver>(argument);
        std::strcpy(asked.driver, hasDriver_ ? "ftdi_sio" : "usbfs");
        return hasDriver_ || holder_ != nullptr ? 0 : -ENODATA;
    }
    case USBDEVFS_CLAIMINTERFACE:
        return hasDriver_ ? -EBUSY : -ENOTTY;
    case USBDEVFS_DISCONNECT_CLAIM:
        if (std::exchange(hasDriver_, false))
            drivers_.push_back(fmt::format(
                "taken off {}", pointedTo<usbdevfs_disconnect_claim>(argument).interface));
        return -ENOTTY; // what comes now is a claim
    default:
        if (pointedTo<usbdevfs_ioctl>(argument).ioctl_code != USBDEVFS_CONNECT)
            return -ENOTTY;
        hasDriver_ = true;
        drivers_.push_back(fmt::format("given back {}", pointedTo<usbdevfs_ioctl>(argument).ifno));
        return 0;
    }
}

void EmulatedAdapter::takeControl(Transfer transfer) {
    const ControlQuestion asked = questionOf(transfer);
    controls_.push_back(fmt::format("{:02X} {:02X} {:04X} {:04X}", asked.type, asked.request,
                                    asked.value, asked.index));
    if (asked.request == fault_.refused)
        return end(std::move(transfer), EPIPE);
    if (asked.request == reset) {
        samples_.clear();
        clocked_ = 0;
    }
    if (asked.request == setBitMode) {
        isSynchronous_ = asked.value >> 8 == synchronous;
        mask_ = static_cast<std::uint8_t>(asked.value & 0xFF);
        latch_ = 0; // as a chip may
    }
    end(std::move(transfer));
}

void EmulatedAdapter::clearHalt(unsigned endpoint) {
    halted_.erase(static_cast<int>(endpoint));
}

void EmulatedAdapter::take(const Transfer& transfer) {
    const int endpoint = transfer.urb->endpoint;
    if (endpoint == std::exchange(fault_.stalled, fault_.stalled == endpoint ? 0 : fault_.stalled))
        halted_.insert(endpoint);
    if (!isIn(*transfer.urb)) {
        const auto* const bytes = static_cast<const std::uint8_t*>(transfer.urb->buffer);
        written_.emplace_back(bytes, bytes + transfer.urb->buffer_length);
    }
    waiting_.push_back(transfer);
    run();
}

EmulatedUsbNode::Transfer* EmulatedAdapter::first(bool in) {
    const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                    [in](const Transfer& t) { return isIn(*t.urb) == in; });
    return found == waiting_.end() ? nullptr : &*found;
}

void EmulatedAdapter::finish(Transfer* transfer, int error) {
    end(*transfer, error);
    waiting_.erase(waiting_.begin() + (transfer - waiting_.data()));
}

void EmulatedAdapter::run() {
    while (!isGone_ && (clockBytes() || sendPacket())) {
    }
}

/// Whether a transfer has ended.
bool EmulatedAdapter::clockBytes() {
    Transfer* const transfer = first(false);
    if (transfer == nullptr || !isSynchronous_)
        return false;
    if (halted_.contains(transfer->urb->endpoint)) {
        finish(transfer, EPIPE);
        return true;
    }
    const auto* const bytes = static_cast<const std::uint8_t*>(transfer->urb->buffer);
    const auto size = static_cast<std::size_t>(transfer->urb->buffer_length);
    while (clocked_ < size && samples_.size() < kind_.buffer) {
        if (fault_.unplugAfter != 0 && clocked_ == fault_.unplugAfter) {
            goAway();
            return false;
        }
        if (clocked_ + fault_.lost < size)
            samples_.push_back(wires_(latch_ & mask_));
        latch_ = bytes[clocked_++];
    }
    if (clocked_ < size)
        return false;
    clocked_ = 0;
    transfer->length = static_cast<int>(size);
    finish(transfer);
    return true;
}

/// Whether it has sent one.
bool EmulatedAdapter::sendPacket() {
    Transfer* const transfer = first(true);
    if (transfer == nullptr)
        return false;
    if (halted_.contains(transfer->urb->endpoint)) {
        finish(transfer, EPIPE);
        return true;
    }
    constexpr std::size_t statusBytes = 2;
    const std::size_t size = std::min(samples_.size(), kind_.packet - statusBytes);
    const bool isFull = size == kind_.packet - statusBytes;
    const bool isDue =
        first(false) == nullptr && (size > 0 || !transfer->bytes.empty() || statusPackets_-- > 0);
    if (fault_.holds || (!isFull && !isDue))
        return false;
    transfer->bytes.insert(transfer->bytes.end(), {0x01, 0x60});
    transfer->bytes.insert(transfer->bytes.end(), samples_.begin(),
                           samples_.begin() + static_cast<long>(size));
    samples_.erase(samples_.begin(), samples_.begin() + static_cast<long>(size));
    transfer->length = static_cast<int>(transfer->bytes.size());
    if (!isFull || transfer->length == transfer->urb->buffer_length)
        finish(transfer);
    return true;
}

} // namespace bitlux::test
