#include "emulated_dongle.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <optional>
#include <span>
#include <stdexcept>
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
    : testbed_(testbed.get()),
      folder_(list.path(fmt::format("1-{}", kind.address))),
      kind_(std::move(kind)),
      driver_(umockdev_ioctl_base_new()),
      answer_(&echo) {
    g_signal_connect_data(driver_, "handle-ioctl", reinterpret_cast<GCallback>(&onRequest), this,
                          nullptr, GConnectFlags{});
    g_signal_connect_data(driver_, "client-vanished", reinterpret_cast<GCallback>(&onVanished),
                          this, nullptr, GConnectFlags{});
    const std::string device =
        fmt::format("P: /devices/usb{0}\nN: {1}={2}\nE: DEVNAME=/dev/{1}\nE: SUBSYSTEM=usb\n\n",
                    kind_.address, node().substr(5), hexadecimal(kind_.descriptors));
    if (umockdev_testbed_add_from_string(testbed_, device.c_str(), nullptr) == FALSE ||
        umockdev_testbed_attach_ioctl(testbed_, node().c_str(), driver_, nullptr) == FALSE)
        throw std::runtime_error("no emulated " + node());
    polled_ = std::make_unique<PolledNode>(node());
    const std::string place = fmt::format("1-{}", kind_.address);
    plugIn(list, place, kind_.address, kind_.descriptors);
    if (!kind_.serial.empty())
        list.write(place + "/serial", kind_.serial + "\n");
}

EmulatedDongle::~EmulatedDongle() {
    unplug();
    umockdev_testbed_detach_ioctl(testbed_, node().c_str(), nullptr);
    umockdev_testbed_remove_device(testbed_,
                                   fmt::format("/sys/devices/usb{}", kind_.address).c_str());
    g_signal_handlers_disconnect_by_data(driver_, this);
    g_object_unref(driver_);
}

std::string EmulatedDongle::node() const {
    return fmt::format("/dev/bus/usb/001/{:03}", kind_.address);
}

void EmulatedDongle::answerWith(Answer answer) {
    const std::lock_guard lock(mutex_);
    answer_ = std::move(answer);
}

void EmulatedDongle::send(Packet packet) {
    const std::lock_guard lock(mutex_);
    unsent_.push_back(std::move(packet));
    sendWaiting();
    tellPoll();
}

void EmulatedDongle::stallNextFrame() {
    const std::lock_guard lock(mutex_);
    stallsNextFrame_ = true;
}

void EmulatedDongle::stallForGood() {
    const std::lock_guard lock(mutex_);
    stallsForGood_ = inHalted_ = true;
    sendWaiting();
    tellPoll();
}

void EmulatedDongle::unplug() {
    const std::lock_guard lock(mutex_);
    if (!isGone_)
        goAway();
}

void EmulatedDongle::refuse(unsigned long request, int error) {
    const std::lock_guard lock(mutex_);
    refused_ = request;
    refusal_ = error;
}

bool EmulatedDongle::isHeld() {
    const std::lock_guard lock(mutex_);
    return holder_ != nullptr;
}

std::vector<UsbFrame> EmulatedDongle::frames() {
    const std::lock_guard lock(mutex_);
    return frames_;
}

int EmulatedDongle::count(unsigned long request) {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(std::count(requests_.begin(), requests_.end(), request));
}

int EmulatedDongle::requests() {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(requests_.size());
}

std::set<int> EmulatedDongle::typesUsed() {
    const std::lock_guard lock(mutex_);
    return types_;
}

int EmulatedDongle::submitted(std::uint8_t endpoint) {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(std::count(submitted_.begin(), submitted_.end(), endpoint));
}

int EmulatedDongle::waiting() {
    const std::lock_guard lock(mutex_);
    return static_cast<int>(waiting_.size());
}

gboolean EmulatedDongle::onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    auto* const dongle = static_cast<EmulatedDongle*>(self);
    const std::lock_guard lock(dongle->mutex_);
    const unsigned long request = umockdev_ioctl_client_get_request(client);
    dongle->requests_.push_back(request);
    const int result = dongle->answer(client, request, argumentOf(client));
    dongle->tellPoll();
    umockdev_ioctl_client_complete(client, result < 0 ? -1 : result, result < 0 ? -result : 0);
    return TRUE;
}

void EmulatedDongle::onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self) {
    auto* const dongle = static_cast<EmulatedDongle*>(self);
    const std::lock_guard lock(dongle->mutex_);
    dongle->forget(client);
}

/// A result, or a negative error, as in the kernel.
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

/// Ends what a program has here, without a trace.
void EmulatedDongle::forget(const UMockdevIoctlClient* client) {
    const auto isTheirs = [client](const Transfer& t) { return t.client == client; };
    std::erase_if(waiting_, isTheirs);
    std::erase_if(ended_, isTheirs);
    if (holder_ == client)
        holder_ = nullptr;
}

void EmulatedDongle::goAway() {
    isGone_ = true;
    for (const Transfer& transfer : std::exchange(waiting_, {}))
        end(transfer, ESHUTDOWN);
    std::filesystem::remove_all(folder_);
    g_autofree gchar* root = umockdev_testbed_get_root_dir(testbed_);
    std::filesystem::remove(root + node());
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
