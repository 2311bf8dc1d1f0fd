#pragma once

#include "emulated_node.h"
#include "polled_node.h"
#include "support/temporary_folder.h"

#include "platform/linux/os_descriptors.h"

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <sys/ioctl.h> // before the next, which does without

#include <linux/usbdevice_fs.h>

namespace bitlux::test {

/// A USB device plugged in at bus 1: its folder in a list that stands for the kernel's, and its
/// node with the kernel's driver for user programs behind it, as far as programs can tell.
class EmulatedUsbNode : protected EmulatedNode {
public:
    using EmulatedNode::isHeld;
    using EmulatedNode::node; ///< for loops of the measurements

    void unplug();
    /// Answers `request` with an error from now on; 0 for as usual.
    void refuse(unsigned long request, int error);

    /// How often a program asked for `request`, or for anything.
    [[nodiscard]] int count(unsigned long request);
    [[nodiscard]] int requests() {
        return locked([this] { return static_cast<int>(requests_.size()); });
    }
    /// Transfers submitted for an endpoint since it was plugged in.
    [[nodiscard]] int submitted(std::uint8_t endpoint);
    /// The endpoint of the first transfer after so many.
    [[nodiscard]] int endpointAfter(int transfers) {
        return locked([=, this] { return submitted_.at(static_cast<std::size_t>(transfers)); });
    }
    [[nodiscard]] int submitted() {
        return locked([this] { return static_cast<int>(submitted_.size()); });
    }
    /// Transfers that wait for the device to send something.
    [[nodiscard]] int waiting() {
        return locked([this] { return static_cast<int>(waiting_.size()); });
    }

protected:
    struct Transfer {
        UMockdevIoctlClient* client;
        usbdevfs_urb* urb; // in the program, which is this one
        std::chrono::steady_clock::time_point end{};
        int error = 0;
        int length = 0;
        std::vector<std::uint8_t> bytes{}; // for the program
    };

    EmulatedUsbNode(const Testbed& testbed, const TemporaryFolder& list, int address,
                    const std::string& descriptors);
    /// For destructors of those who answer.
    void remove();

    /// A transfer of a program that holds the device. It is ended, or put to the waiting ones.
    virtual void take(const Transfer& transfer) = 0;
    /// A request on the control pipe; ended or put likewise.
    virtual void takeControl(Transfer transfer) = 0;
    virtual void clearHalt(unsigned endpoint) = 0;
    /// What is asked of the kernel's drivers; `argument` is as the program gave it.
    virtual int askDrivers(unsigned long /*request*/, void* /*argument*/) { return -ENOTTY; }
    virtual int claim(UMockdevIoctlClient* client);
    void forget(const UMockdevIoctlClient* client) override;

    void end(Transfer transfer, int error = 0);
    void goAway();
    void tellPoll();
    /// The question of a transfer on the control pipe.
    static ControlQuestion questionOf(const Transfer& transfer);

    template <typename Value>
    static Value& pointedTo(void* argument) {
        return *static_cast<Value*>(argument);
    }

    std::vector<Transfer> waiting_;
    bool isGone_ = false;

private:
    int answer(UMockdevIoctlClient* client, unsigned long request) override;
    int answer(UMockdevIoctlClient* client, unsigned long request, void* argument);
    int submit(const Transfer& transfer);
    int discard(const void* urb);
    int reap(UMockdevIoctlClient* client, void** urb);

    int address_;
    std::string folder_; // in the list
    std::unique_ptr<PolledNode> polled_;
    std::vector<Transfer> ended_;
    std::vector<std::uint8_t> submitted_;
    unsigned long refused_ = 0;
    int refusal_ = 0;
};

} // namespace bitlux::test
