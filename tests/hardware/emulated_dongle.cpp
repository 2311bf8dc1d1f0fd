#include "emulated_dongle.h"

#include <algorithm>
#include <cerrno>
#include <span>
#include <utility>

#include <fmt/format.h>

namespace bitlux::test {

namespace {

constexpr std::uint8_t in = 0x81;
constexpr std::uint8_t out = 0x02;

std::vector<Packet> echo(const UsbFrame& frame) {
    return {Packet{.bytes = {frame.begin(), frame.end()}}};
}

} // namespace

EmulatedDongle::EmulatedDongle(const Testbed& testbed, const TemporaryFolder& list, DongleKind kind)
    : EmulatedUsbNode(testbed, list, kind.address, kind.descriptors),
      kind_(std::move(kind)),
      answer_(&echo) {
    const std::string place = fmt::format("1-{}", kind_.address);
    plugIn(list, place, kind_.address, kind_.descriptors);
    if (!kind_.serial.empty())
        list.write(place + "/serial", kind_.serial + "\n");
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

void EmulatedDongle::clearHalt(unsigned endpoint) {
    (endpoint == in ? inHalted_ : outHalted_) = false;
    inHalted_ = inHalted_ || stallsForGood_;
}

void EmulatedDongle::take(const Transfer& transfer) {
    types_.insert(transfer.urb->type);
    if (transfer.urb->endpoint == out)
        return takeFrame(transfer);
    waiting_.push_back(transfer);
    sendWaiting();
}

void EmulatedDongle::takeControl(Transfer transfer) {
    if (kind_.unanswered-- > 0) {
        waiting_.push_back(std::move(transfer)); // until it is called back
        return;
    }
    const auto given = kind_.control ? kind_.control(questionOf(transfer)) : std::nullopt;
    if (!given)
        return end(std::move(transfer), EPIPE);
    const auto* const setup = static_cast<const std::uint8_t*>(transfer.urb->buffer);
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
        transfer.end = std::chrono::steady_clock::now() + packet.late;
        end(std::move(transfer), length > room ? EOVERFLOW : packet.error);
    }
}

} // namespace bitlux::test
