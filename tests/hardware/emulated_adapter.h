#pragma once

#include "emulated_usb_node.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <set>
#include <string>
#include <vector>

namespace bitlux::test {

struct AdapterKind {
    int product = 0x6001;
    int release = 0x0600;
    std::string name = "FT232R USB UART";
    int channels = 1;
    std::size_t packet = 64;  ///< bytes; two of them are the chip's status
    std::size_t buffer = 128; ///< samples that it keeps for the host
    std::string serial = "A50285BI";
    int address = 5;
    bool hasDriver = true; ///< the kernel's, which makes ttyUSB0 of the first channel, and so on
};

inline const AdapterKind ft232h{.product = 0x6014,
                                .release = 0x0900,
                                .name = "Single RS232-HS",
                                .packet = 512,
                                .buffer = 1024,
                                .serial = "FT0XYZ"};
inline const AdapterKind ft2232h{.product = 0x6010,
                                 .release = 0x0700,
                                 .name = "Dual RS232-HS",
                                 .channels = 2,
                                 .packet = 512,
                                 .buffer = 4096,
                                 .serial = "FT2ABC"};
inline const AdapterKind ft230x{.product = 0x6015,
                                .release = 0x1000,
                                .name = "FT230X Basic UART",
                                .buffer = 512,
                                .serial = "DN01"};

/// An adapter with an FTDI chip. In its synchronous bit-bang mode it puts out a byte at a time, and
/// stops while its buffer is full of samples that nobody fetches.
class EmulatedAdapter : public EmulatedUsbNode {
public:
    /// How the lines are while those of the outputs have these levels.
    using Wires = std::function<std::uint8_t(std::uint8_t outputs)>;

    EmulatedAdapter(const Testbed& testbed, const TemporaryFolder& list, AdapterKind kind = {});
    ~EmulatedAdapter() override { remove(); }

    struct Fault {
        int stalled = 0;             ///< an endpoint, once
        std::size_t lost = 0;        ///< samples at the end of each transfer
        std::size_t unplugAfter = 0; ///< bytes; 0 for not at all
        std::uint8_t refused = 0xFF; ///< a request on the control pipe
        bool holds = false;          ///< keeps its samples
    };
    void fail(const Fault& fault) {
        locked([&] { fault_ = fault; });
    }
    /// No fault; what it has kept goes out.
    void recover();
    void wire(const Wires& wires) {
        locked([&] { wires_ = wires; });
    }
    /// Packets of its status alone, which it sends before anything else.
    void sendStatus(int packets) {
        locked([&] { statusPackets_ = packets; });
    }

    /// The requests on the control pipe since the last call: type, request, value and index.
    std::vector<std::string> controls();
    /// The bytes of each transfer to it since the last call.
    std::vector<std::vector<std::uint8_t>> written();
    /// What became of the kernel's driver.
    std::vector<std::string> drivers() {
        return locked([this] { return drivers_; });
    }
    [[nodiscard]] std::uint8_t outputs() {
        return locked([this] { return static_cast<std::uint8_t>(latch_ & mask_); });
    }

private:
    void take(const Transfer& transfer) override;
    void takeControl(Transfer transfer) override;
    void clearHalt(unsigned endpoint) override;
    int askDrivers(unsigned long request, void* argument) override;
    void run();
    bool clockBytes();
    bool sendPacket();
    Transfer* first(bool isIn);
    void finish(Transfer* transfer, int error = 0);

    AdapterKind kind_;
    Wires wires_;
    Fault fault_;
    int statusPackets_ = 0;
    bool hasDriver_;
    std::vector<std::string> drivers_;
    std::vector<std::string> controls_;
    std::vector<std::vector<std::uint8_t>> written_;
    bool isSynchronous_ = false;
    std::uint8_t mask_ = 0;
    std::uint8_t latch_ = 0;
    std::size_t clocked_ = 0; ///< bytes of the transfer that is under way
    std::deque<std::uint8_t> samples_;
    std::set<int> halted_;
};

} // namespace bitlux::test
