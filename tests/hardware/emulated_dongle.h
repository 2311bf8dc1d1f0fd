#pragma once

#include "emulated_node.h"
#include "polled_node.h"
#include "support/temporary_folder.h"
#include "support/usb_descriptors.h"

#include "platform/linux/os_descriptors.h"
#include "platform/usb_endpoint.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <sys/ioctl.h> // before the next, which does without

#include <linux/usbdevice_fs.h>

namespace bitlux::test {

/// What a dongle sends on its IN endpoint: bytes, or an error of the kernel. EPIPE halts the
/// endpoint; with ESHUTDOWN the dongle is unplugged.
struct Packet {
    std::vector<std::uint8_t> bytes{};
    int error = 0;
    std::chrono::milliseconds late{0};
};

struct DongleKind {
    std::string descriptors = dongleDescriptors();
    int address = 4;
    std::string serial{};
    AskDevice control{}; ///< answers vendor requests and descriptors; refuses them when empty
    int unanswered = 0;  ///< of the first requests of that kind
};

/// A USB device plugged in at bus 1: its folder in a list that stands for the kernel's, and its
/// node with the kernel's driver for user programs behind it, as far as programs can tell. Echoes
/// frames unless told otherwise.
class EmulatedDongle : EmulatedNode {
public:
    using EmulatedNode::node; ///< for loops of the measurements

    using Answer = std::function<std::vector<Packet>(const UsbFrame&)>;

    EmulatedDongle(const Testbed& testbed, const TemporaryFolder& list, DongleKind kind = {});
    /// Unplugs.
    ~EmulatedDongle() override;
    using EmulatedNode::isHeld;

    /// What comes back for each frame from now on.
    void answerWith(const Answer& answer) {
        locked([&] { answer_ = answer; });
    }
    /// Sends something that nobody asked for.
    void send(Packet packet);
    /// Halts the OUT endpoint when the next frame comes.
    void stallNextFrame() {
        locked([this] { stallsNextFrame_ = true; });
    }
    /// Halts the IN endpoint, and halts it again when somebody clears it.
    void stallForGood();
    void unplug();
    /// Answers `request` with an error from now on; 0 for as usual.
    void refuse(unsigned long request, int error);

    [[nodiscard]] std::vector<UsbFrame> frames() {
        return locked([this] { return frames_; });
    }
    /// How often a program asked for `request`, or for anything.
    [[nodiscard]] int count(unsigned long request);
    [[nodiscard]] int requests() {
        return locked([this] { return static_cast<int>(requests_.size()); });
    }
    /// Transfers submitted for an endpoint since it was plugged in.
    [[nodiscard]] int submitted(std::uint8_t endpoint);
    /// The types of the transfers of frames.
    [[nodiscard]] std::set<int> typesUsed() {
        return locked([this] { return types_; });
    }
    /// Transfers that wait for the device to send something.
    [[nodiscard]] int waiting() {
        return locked([this] { return static_cast<int>(waiting_.size()); });
    }

private:
    struct Transfer {
        UMockdevIoctlClient* client;
        usbdevfs_urb* urb; // in the program, which is this one
        std::chrono::steady_clock::time_point end{};
        int error = 0;
        int length = 0;
        std::vector<std::uint8_t> bytes{}; // for the program
    };

    int answer(UMockdevIoctlClient* client, unsigned long request) override;
    int answer(UMockdevIoctlClient* client, unsigned long request, void* argument);
    int claim(UMockdevIoctlClient* client);
    int submit(const Transfer& transfer);
    void takeControl(Transfer transfer);
    void takeFrame(Transfer transfer);
    void sendWaiting();
    int discard(const void* urb);
    int reap(UMockdevIoctlClient* client, void** urb);
    void end(Transfer transfer, int error = 0);
    void forget(const UMockdevIoctlClient* client) override;
    void goAway();
    void tellPoll();

    std::string folder_; // in the list
    DongleKind kind_;
    std::unique_ptr<PolledNode> polled_;
    Answer answer_;
    std::vector<Packet> unsent_;
    std::vector<Transfer> waiting_;
    std::vector<Transfer> ended_;
    bool isGone_ = false;
    bool stallsNextFrame_ = false;
    bool stallsForGood_ = false;
    bool outHalted_ = false;
    bool inHalted_ = false;
    unsigned long refused_ = 0;
    int refusal_ = 0;
    std::vector<UsbFrame> frames_;
    std::vector<std::uint8_t> submitted_;
    std::set<int> types_;
};

} // namespace bitlux::test
