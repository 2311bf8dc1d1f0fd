#pragma once

#include "bench/interruptible.h"
#include "platform/desk.h"
#include "platform/hardware.h"
#include "session/session.h"
#include "workbench/virtual_bench.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace bitlux {

/// Where a command sends to.
struct OutletOptions {
    std::string bench;               ///< a device of the virtual bench, empty for this machine
    std::string bus;                 ///< "dongle", "port" or empty
    std::vector<std::string> faults; ///< of the dongle on the virtual bench
    std::uint32_t seed = 1;
    std::string replies;               ///< hexadecimal numbers between commas
    std::vector<std::string> switches; ///< of the chip on the virtual bench, turned on
};

/// Adds the options to a command; `busHelp` is what --bus does there. The result raises
/// CLI::ValidationError for options that do not go together; to be called when all are parsed.
[[nodiscard]] std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                                     const std::string& busHelp);

/// Texts between commas.
std::vector<std::string> splitAtCommas(const std::string& text);

/// Nobody interrupts.
Interruption uninterrupted();

/// What the words go out on: this machine, in real time, or the virtual bench, in virtual time.
class Outlet {
public:
    /// Prints on `errors` what is wrong with the lists of dongles.
    Outlet(const OutletOptions& options, Interruption interruption, std::ostream& errors);
    ~Outlet();
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;

    [[nodiscard]] Hardware hardware();
    [[nodiscard]] EventLoop& loop() { return loop_; }
    [[nodiscard]] const Clock& clock() const { return *clock_; }
    /// Wires the device of the bench as the settings in force tell.
    void wireFor(const Session& session);

private:
    struct Machine;

    void setUpBench(const OutletOptions& options);
    void turnOn(const std::vector<std::string>& switches);
    void setUpMachine(std::ostream& errors);

    Interruption interruption_;
    std::unique_ptr<BenchClock> clock_;
    InterruptibleLoop loop_;
    std::unique_ptr<Machine> machine_;
    std::unique_ptr<VirtualBench> bench_;
    std::unique_ptr<InterruptibleUsbHost> usb_;
};

} // namespace bitlux
