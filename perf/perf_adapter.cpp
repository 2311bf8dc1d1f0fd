// Words of 32 bits, sent by the engine through an emulated adapter: the exchanges of a word, how
// many words a second beside those through an emulated dongle, and what the processor spends on one
// beside a bare loop of libftdi that sends the same bytes. The emulation takes most of the time.

#include "emulated_adapter.h"
#include "emulated_dongle.h"
#include "engine_bench.h"
#include "usb_rig.h"

#include "platform/linux/linux_adapter_host.h"
#include "transfer/adapter_bus.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <ftdi.h>
#include <unistd.h>

#include <fmt/format.h>

namespace {

using namespace bitlux;
using namespace bitlux::perf;

constexpr double surplusLimit = 10; // microseconds
// Many short rounds: what disturbs one of them then disturbs few.
constexpr int rounds = 151;
constexpr int wordsOfRound = 25;

/// The program's words, from the engine down: type 1, the most significant bit first.
class AdapterWords {
public:
    explicit AdapterWords(const AdapterPlaces& places) : host_(places) {
        require(bus_.search().size() == 1, "one adapter");
        bus_.use(bus_.found().front());
        bench_.pins.rest();
    }

    void exchange() {
        bench_.engine.SendSPI();
        require(bench_.session.WordAnswered, "answer");
    }

private:
    LinuxAdapterHost host_;
    EngineBench bench_{1, true};
    AdapterBus bus_{bench_.session, bench_.pins, &host_};
};

/// The least that can be done with libftdi.
class BareWords {
public:
    /// `word` has the bytes of a word.
    BareWords(const std::string& node, std::vector<std::uint8_t> word)
        : node_(::open(node.c_str(), O_RDWR | O_CLOEXEC)),
          word_(std::move(word)),
          samples_(word_.size()) {
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
        const int size = static_cast<int>(word_.size());
        ftdi_transfer_control* const reading = ftdi_read_data_submit(ftdi_, samples_.data(), size);
        ftdi_transfer_control* const writing = ftdi_write_data_submit(ftdi_, word_.data(), size);
        require(ftdi_transfer_data_done(writing) == size, "bare write");
        require(ftdi_transfer_data_done(reading) == size, "bare read");
    }

private:
    int node_;
    ftdi_context* ftdi_;
    std::vector<std::uint8_t> word_;
    std::vector<std::uint8_t> samples_;
};

/// What a word puts on the lines, in `exchanges` transfers to the adapter and as many from it.
std::vector<std::uint8_t> bytesOf(test::EmulatedAdapter& adapter, AdapterWords& words,
                                  int& exchanges) {
    adapter.written();
    const int before = adapter.submitted(0x02) + adapter.submitted(0x81);
    words.exchange();
    const int transfers = adapter.submitted(0x02) + adapter.submitted(0x81) - before;
    require(transfers % 2 == 0, "as many out as in");
    exchanges = transfers / 2;
    return adapter.written().front();
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
    AdapterWords adapterWords(
        {.devices = list.path(), .nodes = "/dev/bus/usb", .settingsFiles = {}});
    int exchanges = 0;
    BareWords bare(bareAdapter.node(), bytesOf(adapter, adapterWords, exchanges));
    DongleWords dongleWords({.devices = dongleList.path(),
                             .nodes = "/dev/bus/usb",
                             .numberFiles = {dongleList.write("dongles.conf", "1234:abcd\n")}});
    std::vector<double> speeds;
    std::vector<double> times;
    std::vector<double> processor;
    std::vector<double> surplus;
    for (int round = 0; round < rounds; ++round) {
        const Cost theirs = measure(bare, wordsOfRound);
        const Cost ours = measure(adapterWords, wordsOfRound);
        const Cost dongles = measure(dongleWords, wordsOfRound);
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
