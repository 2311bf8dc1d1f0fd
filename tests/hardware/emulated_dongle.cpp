#include "emulated_dongle.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <span>
#include <utility>

#include <fmt/format.h>

namespace bitlux::test {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::uint8_t in = 0x81;
constexpr std::uint8_t out = 0x02;

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

template <typename Value>
Value& pointedTo(void* argument) {
    return *static_cast<Value*>(argument);
}

std::vector<Packet> echo(const UsbFrame& frame) {
    return {Packet{.bytes = {frame.begin(), frame.end()}}};
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
    pointedTo<std::uint8_t>(control.data) = 1;
    return 1;
}

} // namespace

EmulatedDongle::EmulatedDongle(const Testbed& testbed, const TemporaryFolder& list, DongleKind kind)
    : EmulatedNode(testbed, nodeAt(kind.address),
                   fmt::format("P: /devices/usb{0}\nN: {1}={2}\nE: DEVNAME=/dev/{1}\n"
                               "E: SUBSYSTEM=usb\n\n",
                               kind.address, nodeAt(kind.address).substr(5),
                               hexadecimal(kind.descriptors))),
      folder_(list.path(fmt::format("1-{}", kind.address))),
      kind_(std::move(kind)),
      answer_(&echo) {
    polled_ = std::make_unique<PolledNode>(node());
    const std::string place = fmt::format("1-{}", kind_.address);
    plugIn(list, place, kind_.address, kind_.descriptors);
    if (!kind_.serial.empty())
        list.write(place + "/serial", kind_.serial + "\n");
}

EmulatedDongle::~EmulatedDongle() {
    unplug();
    detach();
    umockdev_testbed_remove_device(testbed_,
                                   fmt::format("/sys/devices/usb{}", kind_.address).c_str());
}

void EmulatedDongle::send(Packet packet) {
    locked([&] {
        unsent_.push_back(std::move(packet));
        sendWaiting();
        tellPoll();
    });
}

void EmulatedDongle::stallForGood() {
    locked([this] {
        stallsForGood_ = inHalted_ = true;
        sendWaiting();
        tellPoll();
    });
}

void EmulatedDongle::unplug() {
    locked([this] {
        if (!isGone_)
            goAway();
    });
}

void EmulatedDongle::refuse(unsigned long request, int error) {
    locked([&] {
        refused_ = request;
        refusal_ = error;
    });
}

int EmulatedDongle::count(unsigned long request) {
    return locked(
        [&] { return static_cast<int>(std::count(requests_.begin(), requests_.end(), request)); });
}

int EmulatedDongle::submitted(std::uint8_t endpoint) {
    return locked([&] {
        return static_cast<int>(std::count(submitted_.begin(), submitted_.end(), endpoint));
    });
}

int EmulatedDongle::answer(UMockdevIoctlClient* client, unsigned long request) {
    const int result = answer(client, request, argumentOf(client));
    tellPoll();
    return result;
}

int EmulatedDongle::answer(UMockdevIoctlClient* client, unsigned long request, void* argument) {
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
        pointedTo<usbdevfs_connectinfo>(argument) = {.devnum = static_cast<unsigned>(kind_.address),
                                                     .slow = 0};
        return 0;
    case USBDEVFS_CONTROL:
        return answerControl(pointedTo<usbdevfs_ctrltransfer>(argument));
    case USBDEVFS_CLAIMINTERFACE:
    case USBDEVFS_DISCONNECT_CLAIM:
        return claim(client);
    case USBDEVFS_SUBMITURB:
        return submit({.client = client, .urb = &pointedTo<usbdevfs_urb>(argument)});
    case USBDEVFS_DISCARDURB:
        return discard(argument);
    case USBDEVFS_RESET:
        inHalted_ = outHalted_ = false;
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
        (pointedTo<unsigned>(argument) == in ? inHalted_ : outHalted_) = false;
        inHalted_ = inHalted_ || stallsForGood_;
        return 0;
    default:
        return -ENOTTY;
    }
}

int EmulatedDongle::claim(UMockdevIoctlClient* client) {
    if (holder_ != nullptr && holder_ != client)
        return -EBUSY;
    holder_ = client;
    return 0;
}

int EmulatedDongle::submit(const Transfer& transfer) {
    const std::uint8_t endpoint = transfer.urb->endpoint;
    submitted_.push_back(endpoint);
    if (transfer.urb->type == USBDEVFS_URB_TYPE_CONTROL) {
        if (kind_.unanswered-- > 0)
            waiting_.push_back(transfer); // until it is called back
        else
            takeControl(transfer);
    } else if (holder_ != transfer.client || (endpoint != in && endpoint != out)) {
        return -EINVAL;
    } else if (types_.insert(transfer.urb->type); endpoint == out) {
        takeFrame(transfer);
    } else {
        waiting_.push_back(transfer);
        sendWaiting();
    }
    return 0;
}

void EmulatedDongle::takeControl(Transfer transfer) {
    const auto* const setup = static_cast<const std::uint8_t*>(transfer.urb->buffer);
    const auto number = [setup](int at) {
        return static_cast<std::uint16_t>(setup[at] | setup[at + 1] << 8);
    };
    const ControlQuestion question{setup[0], setup[1], number(2), number(4), number(6)};
    const auto given = kind_.control ? kind_.control(question) : std::nullopt;
    if (!given)
        return end(std::move(transfer), EPIPE);
    transfer.bytes.assign(setup, setup + 8);
    transfer.bytes.insert(transfer.bytes.end(), given->begin(), given->end());
    transfer.length = static_cast<int>(given->size());
    end(std::move(transfer));
}

void EmulatedDongle::takeFrame(Transfer transfer) {
    outHalted_ = outHalted_ || std::exchange(stallsNextFrame_, false);
    if (outHalted_)
        return end(std::move(transfer), EPIPE);
    UsbFrame frame{};
    const std::span sent(static_cast<const std::uint8_t*>(transfer.urb->buffer),
                         static_cast<std::size_t>(transfer.urb->buffer_length));
    std::copy_n(sent.begin(), std::min(sent.size(), frame.size()), frame.begin());
    frames_.push_back(frame);
    transfer.length = static_cast<int>(sent.size());
    end(std::move(transfer));
    for (Packet& packet : answer_(frame))
        unsent_.push_back(std::move(packet));
    sendWaiting();
}

/// Lets transfers end that the device has something for.
void EmulatedDongle::sendWaiting() {
    while (!waiting_.empty() && (inHalted_ || !unsent_.empty())) {
        Packet packet{.error = EPIPE};
        if (!inHalted_) {
            packet = unsent_.front();
            unsent_.erase(unsent_.begin());
        }
        if (packet.error == ESHUTDOWN)
            return goAway();
        inHalted_ = packet.error == EPIPE;
        Transfer transfer = waiting_.front();
        waiting_.erase(waiting_.begin());
        const int room = transfer.urb->buffer_length;
        const int length = static_cast<int>(packet.bytes.size());
        transfer.bytes = std::move(packet.bytes);
        transfer.length = std::min(room, length);
        transfer.end = Clock::now() + packet.late;
        end(std::move(transfer), length > room ? EOVERFLOW : packet.error);
    }
}

void EmulatedDongle::end(Transfer transfer, int error) {
    transfer.error = error;
    transfer.end = std::max(transfer.end, Clock::now());
    ended_.push_back(std::move(transfer));
}

int EmulatedDongle::discard(const void* urb) {
    const auto found = std::find_if(waiting_.begin(), waiting_.end(),
                                    [urb](const Transfer& t) { return t.urb == urb; });
    if (found == waiting_.end())
        return -EINVAL;
    end(*found, ENOENT);
    waiting_.erase(found);
    return 0;
}

int EmulatedDongle::reap(UMockdevIoctlClient* client, void** urb) {
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

void EmulatedDongle::forget(const UMockdevIoctlClient* client) {
    const auto isTheirs = [client](const Transfer& t) { return t.client == client; };
    std::erase_if(waiting_, isTheirs);
    std::erase_if(ended_, isTheirs);
    EmulatedNode::forget(client);
}

void EmulatedDongle::goAway() {
    isGone_ = true;
    for (const Transfer& transfer : std::exchange(waiting_, {}))
        end(transfer, ESHUTDOWN);
    std::filesystem::remove_all(folder_);
    std::filesystem::remove(file());
    polled_->hangUp();
}

void EmulatedDongle::tellPoll() {
    if (isGone_)
        return;
    std::optional<Clock::time_point> next;
    for (const Transfer& transfer : ended_)
        next = next ? std::min(*next, transfer.end) : transfer.end;
    polled_->readyAt(next);
}

} // namespace bitlux::test
