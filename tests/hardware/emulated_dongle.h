#pragma once

#include "polled_node.h"
#include "support/temporary_folder.h"
#include "support/usb_descriptors.h"
#include "testbed.h"

#include "platform/linux/os_descriptors.h"
#include "platform/usb_endpoint.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
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
class EmulatedDongle {
public:
    using Answer = std::function<std::vector<Packet>(const UsbFrame&)>;

    EmulatedDongle(const Testbed& testbed, const TemporaryFolder& list, DongleKind kind = {});
    /// Unplugs.
    ~EmulatedDongle();
    EmulatedDongle(const EmulatedDongle&) = delete;
    EmulatedDongle& operator=(const EmulatedDongle&) = delete;

    /// What comes back for each frame from now on.
    void answerWith(Answer answer);
    /// Sends something that nobody asked for.
    void send(Packet packet);
    /// Halts the OUT endpoint when the next frame comes.
    void stallNextFrame();
    /// Halts the IN endpoint, and halts it again when somebody clears it.
    void stallForGood();
    void unplug();
    /// Answers `request` with an error from now on; 0 for as usual.
    void refuse(unsigned long request, int error);

    [[nodiscard]] std::string node() const;
    [[nodiscard]] bool isHeld();
    [[nodiscard]] std::vector<UsbFrame> frames();
    /// How often a program asked for `request`, or for anything.
    [[nodiscard]] int count(unsigned long request);
    [[nodiscard]] int requests();
    /// Transfers submitted for an endpoint since it was plugged in.
    [[nodiscard]] int submitted(std::uint8_t endpoint);
    /// The types of the transfers of frames.
    [[nodiscard]] std::set<int> typesUsed();
    /// Transfers that wait for the device to send something.
    [[nodiscard]] int waiting();

private:
    struct Transfer {
        UMockdevIoctlClient* client;
        usbdevfs_urb* urb; // in the program, which is this one
        std::chrono::steady_clock::time_point end{};
        int error = 0;
        int length = 0;
        std::vector<std::uint8_t> bytes{}; // for the program
    };

    static gboolean onRequest(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);
    static void onVanished(UMockdevIoctlBase*, UMockdevIoctlClient* client, gpointer self);
    int answer(UMockdevIoctlClient* client, unsigned long request, void* argument);
    int claim(UMockdevIoctlClient* client);
    int submit(const Transfer& transfer);
    void takeControl(Transfer transfer);
    void takeFrame(Transfer transfer);
    void sendWaiting();
    int discard(const void* urb);
    int reap(UMockdevIoctlClient* client, void** urb);
    void end(Transfer transfer, int error = 0);
    void forget(const UMockdevIoctlClient* client);
    void goAway();
    void tellPoll();

    UMockdevTestbed* testbed_;
    std::string folder_; // in the list
    DongleKind kind_;
    UMockdevIoctlBase* driver_;
    std::unique_ptr<PolledNode> polled_;
    std::mutex mutex_; // requests arrive on a thread of the test bed
    UMockdevIoctlClient* holder_ = nullptr;
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
    std::vector<unsigned long> requests_;
    std::vector<std::uint8_t> submitted_;
    std::set<int> types_;
};

} // namespace bitlux::test
