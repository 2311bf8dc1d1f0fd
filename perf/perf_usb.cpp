// Words through an emulated dongle: how many a second, and what the processor spends on one, beside
// a bare loop that does the same transfers. The emulation takes most of the time; it is the same
// for both.

#include "emulated_dongle.h"
#include "usb_rig.h"

#include <algorithm>
#include <array>
#include <tuple>
#include <vector>

#include <fcntl.h>
#include <libusb.h>
#include <unistd.h>

#include <fmt/format.h>

namespace {

using namespace bitlux;
using namespace bitlux::perf;

constexpr double speedLimit = 0.9;
constexpr double processorLimit = 50; // microseconds: a twentieth of a USB frame
constexpr int rounds = 11;
constexpr UsbFrame word = DongleWords::word;

/// The least that can be done with libusb: one buffer out, three in.
class BareLoop {
public:
    explicit BareLoop(const std::string& node) : node_(::open(node.c_str(), O_RDWR | O_CLOEXEC)) {
        libusb_set_option(nullptr, LIBUSB_OPTION_NO_DEVICE_DISCOVERY);
        require(libusb_init(&context_) == 0, "libusb");
        require(libusb_wrap_sys_device(context_, node_, &handle_) == 0, "bare open");
        require(libusb_claim_interface(handle_, 0) == 0, "bare claim");
        fill(out_, dongleOutEndpoint);
        for (Buffer& buffer : in_) {
            fill(buffer, dongleInEndpoint);
            require(libusb_submit_transfer(buffer.transfer) == 0, "bare queue");
        }
    }
    BareLoop(const BareLoop&) = delete;
    BareLoop& operator=(const BareLoop&) = delete;
    ~BareLoop() {
        for (const Buffer& buffer : in_)
            libusb_cancel_transfer(buffer.transfer);
        while (std::any_of(in_.begin(), in_.end(), [](const Buffer& b) { return !b.isDone; }))
            libusb_handle_events(context_);
        for (const Buffer& buffer : in_)
            libusb_free_transfer(buffer.transfer);
        libusb_free_transfer(out_.transfer);
        libusb_close(handle_);
        libusb_exit(context_);
        ::close(node_);
    }

    void exchange() {
        Buffer& in = in_[next_];
        next_ = (next_ + 1) % in_.size();
        out_.frame = word;
        out_.isDone = false;
        require(libusb_submit_transfer(out_.transfer) == 0, "bare write");
        while (!in.isDone || !out_.isDone)
            libusb_handle_events(context_);
        require(in.frame == word && in.transfer->actual_length == 8, "bare echo");
        in.isDone = false;
        require(libusb_submit_transfer(in.transfer) == 0, "bare queue");
    }

private:
    struct Buffer {
        libusb_transfer* transfer = libusb_alloc_transfer(0);
        UsbFrame frame{};
        bool isDone = false;
    };

    void fill(Buffer& buffer, std::uint8_t address) {
        const auto done = [](libusb_transfer* transfer) {
            static_cast<Buffer*>(transfer->user_data)->isDone = true;
        };
        libusb_fill_bulk_transfer(buffer.transfer, handle_, address, buffer.frame.data(),
                                  int{std::tuple_size_v<UsbFrame>}, done, &buffer, 0);
    }

    int node_;
    libusb_context* context_ = nullptr;
    libusb_device_handle* handle_ = nullptr;
    Buffer out_;
    std::array<Buffer, 3> in_;
    std::size_t next_ = 0;
};

} // namespace

int main() {
    const test::Testbed testbed;
    const test::TemporaryFolder list;
    const test::TemporaryFolder bareList;
    test::EmulatedDongle dongle(testbed, list);
    test::EmulatedDongle bareDongle(testbed, bareList, {.address = 5});
    DongleWords link({.devices = list.path(),
                      .nodes = "/dev/bus/usb",
                      .numberFiles = {list.write("dongles.conf", "1234:abcd\n")}});
    BareLoop bare(bareDongle.node());
    std::vector<double> speeds;
    std::vector<double> shares;
    std::vector<double> processor;
    std::vector<double> surplus;
    for (int round = 0; round < rounds; ++round) {
        const Cost theirs = measure(bare);
        const Cost ours = measure(link);
        speeds.push_back(1e6 / ours.elapsed);
        shares.push_back(theirs.elapsed / ours.elapsed);
        processor.push_back(ours.processor);
        surplus.push_back(ours.processor - theirs.processor);
    }
    const double share = median(shares);
    const double more = median(surplus);
    fmt::print(
        "usb: {:.0f} words a second through the emulation, {:.2f} of a bare loop's (at least "
        "{}); {:.1f} us of processor time a word, {:.1f} more than the bare loop (below "
        "{})\n",
        median(speeds), share, speedLimit, median(processor), more, processorLimit);
    return share >= speedLimit && more < processorLimit ? 0 : 1;
}
