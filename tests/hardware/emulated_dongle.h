#pragma once

#include "emulated_usb_node.h"
#include "support/usb_descriptors.h"

#include "platform/usb_endpoint.h"

#include <functional>
#include <set>

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

/// A dongle. Echoes frames unless told otherwise.
class EmulatedDongle : public EmulatedUsbNode {
public:
    using Answer = std::function<std::vector<Packet>(const UsbFrame&)>;

    EmulatedDongle(const Testbed& testbed, const TemporaryFolder& list, DongleKind kind = {});
    /// Unplugs.
    ~EmulatedDongle() override { remove(); }

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

    [[nodiscard]] std::vector<UsbFrame> frames() {
        return locked([this] { return frames_; });
    }
    /// The types of the transfers of frames.
    [[nodiscard]] std::set<int> typesUsed() {
        return locked([this] { return types_; });
    }

private:
    void take(const Transfer& transfer) override;
    void takeControl(Transfer transfer) override;
    void takeFrame(Transfer transfer);
    void clearHalt(unsigned endpoint) override;
    void sendWaiting();

    DongleKind kind_;
    Answer answer_;
    std::vector<Packet> unsent_;
    bool stallsNextFrame_ = false;
    bool stallsForGood_ = false;
    bool outHalted_ = false;
    bool inHalted_ = false;
    std::vector<UsbFrame> frames_;
    std::set<int> types_;
};

} // namespace bitlux::test
