#pragma once

#include "apps/outlet_options.h"
#include "bench/interruptible.h"
#include "platform/desk.h"
#include "platform/hardware.h"
#include "session/session.h"
#include "workbench/virtual_bench.h"

#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace bitlux {

class LinuxHardware;

/// The destination of words: this machine, in real time, or the virtual bench, in virtual time.
class Outlet {
public:
    /// Prints problems of the lists of dongles on `errors`.
    Outlet(const OutletOptions& options, Interruption interruption, std::ostream& errors);
    ~Outlet();
    Outlet(const Outlet&) = delete;
    Outlet& operator=(const Outlet&) = delete;

    /// Raises Failure, naming the alternatives, when the chosen port, dongle or adapter does not
    /// exist.
    void demandChosen() const;
    /// Why a dongle that is there was not opened; see LinuxUsbHost.
    [[nodiscard]] std::string refusal() const;
    [[nodiscard]] Hardware hardware();
    [[nodiscard]] EventLoop& loop() { return loop_; }
    [[nodiscard]] const Clock& clock() const { return *clock_; }
    /// Wires the device of the bench as the settings in force say.
    void wireFor(const Session& session);

private:
    void setUpBench(const OutletOptions& options);
    void turnOn(const std::vector<std::string>& switches);
    void setUpMachine(const OutletOptions& options, std::ostream& errors);

    Interruption interruption_;
    std::unique_ptr<BenchClock> clock_;
    InterruptibleLoop loop_;
    std::unique_ptr<LinuxHardware> machine_;
    bool seesAdapters_ = false; ///< of the machine
    std::unique_ptr<VirtualBench> bench_;
    std::unique_ptr<InterruptibleUsbHost> usb_;
};

} // namespace bitlux
