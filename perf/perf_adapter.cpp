// Words of 32 bits through an emulated adapter: the exchanges of a word, how many words a second
// beside those through an emulated dongle, and what the processor spends on one beside a bare loop
// of libftdi that sends the same bytes. The emulation takes most of the time.

#include "emulated_adapter.h"
#include "emulated_dongle.h"
#include "usb_rig.h"

#include "platform/linux/linux_adapter_host.h"

#include <array>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <ftdi.h>
#include <unistd.h>

#include <fmt/format.h>

namespace {

using namespace bitlux;
using namespace bitlux::perf;

constexpr double surplusLimit = 10; // microseconds
constexpr int rounds = 11;

/// What a word of 32 bits puts on the lines: selected, two levels of the clock a bit, released.
constexpr std::size_t wordBytes = 67;
using Word = std::array<std::uint8_t, wordBytes>;

Word makeWord() {
    Word bytes{};
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<std::uint8_t>(i % 4);
    return bytes;
}

/// The link of the program.
class AdapterWords {
public:
    explicit AdapterWords(const AdapterPlaces& places) : host_(places) {
        const std::vector<Adapter> found = host_.find();
        require(found.size() == 1, "one adapter");
        link_ = host_.open(found.front());
        link_->drive(0xFF);
    }

    void exchange() {
        Word samples{};
        link_->exchange(word_, samples);
        require(samples.back() == word_[wordBytes - 2], "samples");
    }

private:
    LinuxAdapterHost host_;
    std::unique_ptr<AdapterLink> link_;
    Word word_ = makeWord();
};

/// The least that can be done with libftdi.
class BareWords {
public:
    explicit BareWords(const std::string& node) : node_(::open(node.c_str(), O_RDWR | O_CLOEXEC)) {
        libusb_set_option(nullptr, LIBUSB_OPTION_NO_DEVICE_DISCOVERY);
        ftdi_ = ftdi_new();
        libusb_device_handle* handle = nullptr;
        require(libusb_wrap_sys_device(ftdi_->usb_ctx, node_, &handle) == 0, "bare open");
        libusb_set_auto_detach_kernel_driver(handle, 1);
        require(libusb_claim_interface(handle, 0) == 0, "bare claim");
        ftdi_set_usbdev(ftdi_, handle);
        ftdi_->type = TYPE_R;
        ftdi_->max_packet_size = 64;
        require(ftdi_set_bitmode(ftdi_, 0xFF, BITMODE_SYNCBB) == 0, "bare mode");
    }
    BareWords(const BareWords&) = delete;
    BareWords& operator=(const BareWords&) = delete;
    ~BareWords() {
        ftdi_free(ftdi_);
        ::close(node_);
    }

    void exchange() {
        Word samples{};
        ftdi_transfer_control* const reading =
            ftdi_read_data_submit(ftdi_, samples.data(), wordBytes);
        ftdi_transfer_control* const writing =
            ftdi_write_data_submit(ftdi_, word_.data(), wordBytes);
        require(ftdi_transfer_data_done(writing) == wordBytes, "bare write");
        require(ftdi_transfer_data_done(reading) == wordBytes, "bare read");
        require(samples.back() == word_[wordBytes - 2], "bare samples");
    }

private:
    int node_;
    ftdi_context* ftdi_;
    Word word_ = makeWord();
};

/// Transfers to and from the adapter.
int exchangesOf(test::EmulatedAdapter& adapter, AdapterWords& words) {
    const int before = adapter.submitted(0x02) + adapter.submitted(0x81);
    words.exchange();
    const int transfers = adapter.submitted(0x02) + adapter.submitted(0x81) - before;
    require(transfers % 2 == 0, "as many out as in");
    return transfers / 2;
}

} // namespace

int main() {
    const test::Testbed testbed;
    const test::TemporaryFolder list;
    const test::TemporaryFolder bareList;
    const test::TemporaryFolder dongleList;
    test::EmulatedAdapter adapter(testbed, list);
    test::EmulatedAdapter bareAdapter(testbed, bareList, {.address = 6});
    test::EmulatedDongle dongle(testbed, dongleList);
    AdapterWords words({.devices = list.path(), .nodes = "/dev/bus/usb", .settingsFiles = {}});
    BareWords bare(bareAdapter.node());
    DongleWords dongleWords({.devices = dongleList.path(),
                             .nodes = "/dev/bus/usb",
                             .numberFiles = {dongleList.write("dongles.conf", "1234:abcd\n")}});
    const int exchanges = exchangesOf(adapter, words);
    std::vector<double> speeds;
    std::vector<double> times;
    std::vector<double> processor;
    std::vector<double> surplus;
    for (int round = 0; round < rounds; ++round) {
        const Cost theirs = measure(bare);
        const Cost ours = measure(words);
        const Cost dongles = measure(dongleWords);
        speeds.push_back(1e6 / ours.elapsed);
        times.push_back(dongles.elapsed / ours.elapsed);
        processor.push_back(ours.processor);
        surplus.push_back(ours.processor - theirs.processor);
    }
    const double more = median(surplus);
    fmt::print("adapter: {} exchange a word (limit 1); {:.0f} words of 32 bits a second through "
               "the emulation, {:.2f} times the dongle's; {:.1f} us of processor time a word, "
               "{:.1f} more than a bare loop of libftdi (at most {})\n",
               exchanges, median(speeds), median(times), median(processor), more, surplusLimit);
    return exchanges == 1 && more <= surplusLimit ? 0 : 1;
}
