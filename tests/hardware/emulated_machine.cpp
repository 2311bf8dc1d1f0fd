// Preloaded into a program: gives it a dongle that echoes, a parallel port and an adapter. What the
// program sends is written to the file that the variable BITLUX_WIRE names: a frame as it comes,
// the bytes for the port and the adapter at the end.

#include "emulated_adapter.h"
#include "emulated_dongle.h"
#include "emulated_parport.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <fmt/ostream.h>
#include <fmt/ranges.h>

namespace bitlux::test {

namespace {

class EmulatedMachine {
public:
    EmulatedMachine() {
        namespace fs = std::filesystem;
        const std::string system = root() + "/sys/bus/usb/devices";
        fs::create_directories(system);
        for (const char* place : {"1-4", "1-5"})
            fs::create_directory_symlink(list_.path(place), system + "/" + place);
        const std::string parport = root() + "/proc/sys/dev/parport/parport0";
        fs::create_directories(parport);
        std::ofstream(parport + "/base-addr") << "888\t1912\n";
        dongle_.answerWith([this](const UsbFrame& frame) {
            fmt::print(wire_, "{:02X}\n", fmt::join(frame, " "));
            wire_.flush();
            return std::vector{Packet{.bytes = {frame.begin(), frame.end()}}};
        });
    }
    ~EmulatedMachine() {
        for (const Written& access : port_.wires.written)
            fmt::print(wire_, "{} {:02X}\n", access.first, access.second);
        for (const std::vector<std::uint8_t>& bytes : adapter_.written())
            fmt::print(wire_, "D {:02X}\n", fmt::join(bytes, " "));
    }
    EmulatedMachine(const EmulatedMachine&) = delete;
    EmulatedMachine& operator=(const EmulatedMachine&) = delete;

private:
    [[nodiscard]] std::string root() const {
        g_autofree gchar* name = umockdev_testbed_get_root_dir(testbed_.get());
        return name;
    }
    static std::string wireFile() {
        const char* name = std::getenv("BITLUX_WIRE");
        return name != nullptr ? name : throw std::runtime_error("BITLUX_WIRE names no file");
    }

    std::ofstream wire_{wireFile()};
    Testbed testbed_;
    TemporaryFolder list_;
    EmulatedDongle dongle_{testbed_, list_};
    EmulatedParport port_{testbed_, 0};
    EmulatedAdapter adapter_{testbed_, list_};
};

const EmulatedMachine machine;

} // namespace

} // namespace bitlux::test
