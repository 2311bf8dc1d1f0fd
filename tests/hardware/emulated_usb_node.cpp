#include "emulated_usb_node.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux::test {

namespace {

using Clock = std::chrono::steady_clock;

/// The argument of a request: a pointer of the program, which is this one.
void* argumentOf(UMockdevIoctlClient* client) {
    guint8* bytes = nullptr;
    gint length = 0;
    umockdev_ioctl_data_retrieve(umockdev_ioctl_client_get_arg(client), &bytes, &length);
    void* pointer = nullptr;
    std::memcpy(&pointer, bytes, sizeof pointer);
    g_free(bytes);
    return pointer;
}

std::string hexadecimal(const std::string& bytes) {
    std::string digits;
    for (const char byte : bytes)
        digits += fmt::format("{:02X}", static_cast<unsigned char>(byte));
    return digits;
}

std::string nodeAt(int address) {
    return fmt::format("/dev/bus/usb/001/{:03}", address);
}

/// Which configuration is active, and no other question.
int answerControl(usbdevfs_ctrltransfer& control) {
    constexpr std::uint8_t getConfiguration = 8;
    if (control.bRequestType != 0x80 || control.bRequest != getConfiguration)
        return -EPIPE;
    *static_cast<std::uint8_t*>(control.data) = 1;
    return 1;
}

} // namespace

EmulatedUsbNode::EmulatedUsbNode(const Testbed& testbed, const TemporaryFolder& list, int address,
                                 const std::string& descriptors)
    : EmulatedNode(testbed, nodeAt(address),
                   fmt::format("P: /devices/usb{0}\nN: {1}={2}\nE: DEVNAME=/dev/{1}\n"
                               "E: SUBSYSTEM=usb\n\n",
                               address, nodeAt(address).substr(5), hexadecimal(descriptors))),
      address_(address),
      folder_(list.path(fmt::format("1-{}", address))) {
    polled_ = std::make_unique<PolledNode>(node());
}

void EmulatedUsbNode::remove() {
    unplug();
    detach();
    umockdev_testbed_remove_device(testbed_, fmt::format("/sys/devices/usb{}", address_).c_str());
}

void EmulatedUsbNode::unplug() {
    locked([this] {
        if (!isGone_)
            goAway();
    });
}

void EmulatedUsbNode::refuse(unsigned long request, int error) {
    locked([&] {
        refused_ = request;
        refusal_ = error;
    });
}

int EmulatedUsbNode::count(unsigned long request) {
    return locked(
        [&] { return static_cast<int>(std::count(requests_.begin(), requests_.end(), request)); });
}

int EmulatedUsbNode::submitted(std::uint8_t endpoint) {
    return locked([&] {
        return static_cast<int>(std::count(submitted_.begin(), submitted_.end(), endpoint));
    });
}

int EmulatedUsbNode::answer(UMockdevIoctlClient* client, unsigned long request) {
    const int result = answer(client, request, argumentOf(client));
    tellPoll();
    return result;
}

int EmulatedUsbNode::answer(UMockdevIoctlClient* client, unsigned long request, void* argument) {
    if (request == USBDEVFS_REAPURBNDELAY)
        return reap(client, &pointedTo<void*>(argument));
    if (isGone_)
        return -ENODEV;
    if (request == refused_ && refusal_ != 0)
        return -refusal_;
    switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
        pointedTo<std::uint32_t>(argument) = USBDEVFS_CAP_ZERO_PACKET |
                                             USBDEVFS_CAP_BULK_SCATTER_GATHER |
                                             USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
        return 0;
    case USBDEVFS_CONNECTINFO:
        pointedTo<usbdevfs_connectinfo>(argument) = {.devnum = static_cast<unsigned>(address_),
                                                     .slow = 0};
        return 0;
    case USBDEVFS_CONTROL:
        return answerControl(pointedTo<usbdevfs_ctrltransfer>(argument));
    case USBDEVFS_CLAIMINTERFACE:
    case USBDEVFS_DISCONNECT_CLAIM:
        if (const int refusal = askDrivers(request, argument); refusal != -ENOTTY)
            return refusal;
        return claim(client);
    case USBDEVFS_GETDRIVER:
    case USBDEVFS_IOCTL:
        return askDrivers(request, argument);
    case USBDEVFS_SUBMITURB:
        return submit({.client = client, .urb = &pointedTo<usbdevfs_urb>(argument)});
    case USBDEVFS_DISCARDURB:
        return discard(argument);
    case USBDEVFS_RESET:
        clearHalt(0x81);
        clearHalt(0x02);
        return 0;
    default:
        break;
    }
    if (holder_ != client)
        return -EINVAL;
    switch (request) {
    case USBDEVFS_RELEASEINTERFACE:
        forget(client);
        return 0;
    case USBDEVFS_SETINTERFACE:
        return pointedTo<usbdevfs_setinterface>(argument).altsetting == 0 ? 0 : -EINVAL;
    case USBDEVFS_CLEAR_HALT:
        clearHalt(pointedTo<unsigned>(argument));
        return 0;
    default:
        return -ENOTTY;
    }
}

int EmulatedUsbNode::claim(UMockdevIoctlClient* client) {
    if (holder_ != nullptr && holder_ != client)
        return -EBUSY;
    holder_ = client;
    return 0;
}

int EmulatedUsbNode::submit(const Transfer& transfer) {
    submitted_.push_back(transfer.urb->endpoint);
    if (transfer.urb->type == USBDEVFS_URB_TYPE_CONTROL)
        takeControl(transfer);
    else if (holder_ == transfer.client)
        take(transfer);
    else
        return -EINVAL;
    return 0;
}

ControlQuestion EmulatedUsbNode::questionOf(const Transfer& transfer) {
    const auto* const setup = static_cast<const std::uint8_t*>(transfer.urb->buffer);
    const auto number = [setup](int at) {
        return static_cast<std::uint16_t>(setup[at] | setup[at + 1] << 8);
    };
    return {setup[0], setup[1], number(2), number(4), number(6)};
}

void EmulatedUsbNode::end(Transfer transfer, int error) {
    transfer.error = error;
    transfer.end = std::max(transfer.end, Clock::now());
    ended_.push_back(std::move(transfer));
}

int EmulatedUsbNode::discard(const void* urb) {
    const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                    [urb](const Transfer& t) { return t.urb == urb; });
    if (found == waiting_.end())
        return -EINVAL;
    end(*found, ENOENT);
    waiting_.erase(found);
    return 0;
}

int EmulatedUsbNode::reap(UMockdevIoctlClient* client, void** urb) {
    const auto first =
        std::min_element(ended_.begin(), ended_.end(),
                         [](const Transfer& a, const Transfer& b) { return a.end < b.end; });
    if (first == ended_.end() || first->end > Clock::now() || first->client != client)
        return isGone_ ? -ENODEV : -EAGAIN;
    usbdevfs_urb& result = *first->urb;
    result.status = -first->error;
    result.actual_length = first->length;
    const auto room = static_cast<std::size_t>(result.buffer_length);
    std::copy_n(first->bytes.begin(), std::min(first->bytes.size(), room),
                static_cast<std::uint8_t*>(result.buffer));
    *urb = first->urb;
    ended_.erase(first);
    return 0;
}

void EmulatedUsbNode::forget(const UMockdevIoctlClient* client) {
    const auto isTheirs = [client](const Transfer& t) { return t.client == client; };
    std::erase_if(waiting_, isTheirs);
    std::erase_if(ended_, isTheirs);
    EmulatedNode::forget(client);
}

void EmulatedUsbNode::goAway() {
    isGone_ = true;
    for (const Transfer& transfer : std::exchange(waiting_, {}))
        end(transfer, ESHUTDOWN);
    std::filesystem::remove_all(folder_);
    std::filesystem::remove(file());
    polled_->hangUp();
}

void EmulatedUsbNode::tellPoll() {
    if (isGone_)
        return;
    std::optional<Clock::time_point> next;
    for (const Transfer& transfer : ended_)
        next = next ? std::min(*next, transfer.end) : transfer.end;
    polled_->readyAt(next);
}

} // namespace bitlux::test
