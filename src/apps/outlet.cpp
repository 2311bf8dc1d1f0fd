#include "apps/outlet.h"

#include "bench/chip.h"
#include "bench/device.h"
#include "bench/dongle_fault.h"
#include "platform/failure.h"
#include "platform/linux/linux_hardware.h"
#include "workbench/library_chips.h"

#include <utility>

#include <fmt/format.h>
#include <fmt/ostream.h>

namespace bitlux {

namespace {

std::vector<Reply> repliesOf(const OutletOptions& options) {
    std::vector<Reply> replies;
    if (!options.replies.empty())
        for (const std::string& reply : splitAtCommas(options.replies))
            replies.push_back(replyFromHex(reply));
    return replies;
}

std::unique_ptr<BenchClock> makeClock(bool real, const Interruption& interruption) {
    if (real)
        return std::make_unique<InterruptibleRealClock>(interruption);
    return std::make_unique<InterruptibleVirtualClock>(interruption);
}

/// No dongle is opened when the port was chosen.
HardwareChoice choiceOf(const OutletOptions& options) {
    HardwareChoice choice;
    choice.serial = options.serial;
    choice.dongles = options.bus != "port";
    if (!options.port.empty())
        choice.port = portChoiceFrom(options.port);
    return choice;
}

} // namespace

Outlet::Outlet(const OutletOptions& options, Interruption interruption, std::ostream& errors)
    : interruption_(std::move(interruption)),
      clock_(makeClock(options.bench.empty(), interruption_)),
      loop_(*clock_, interruption_) {
    if (options.bench.empty())
        setUpMachine(options, errors);
    else
        setUpBench(options);
}

Outlet::~Outlet() = default;

void Outlet::setUpMachine(const OutletOptions& options, std::ostream& errors) {
    machine_ = std::make_unique<LinuxHardware>(choiceOf(options));
    usb_ = std::make_unique<InterruptibleUsbHost>(machine_->usb(), *clock_, interruption_);
    const DongleNumbers numbers(DongleNumbers::files());
    for (const std::string& problem : numbers.problems())
        fmt::print(errors, "{}\n", problem);
}

void Outlet::setUpBench(const OutletOptions& options) {
    bench_ =
        std::make_unique<VirtualBench>(*clock_, makeBenchDevice(options.bench, repliesOf(options)));
    usb_ = std::make_unique<InterruptibleUsbHost>(bench_->dongle, *clock_, interruption_);
    turnOn(options.switches);
    if (options.bus != "dongle")
        return;
    std::vector<DongleFault> faults;
    for (const std::string& fault : options.faults)
        faults.push_back(dongleFaultFrom(fault));
    bench_->dongle.setFaults(DongleFaults(std::move(faults), options.seed));
    bench_->dongle.plug();
}

void Outlet::turnOn(const std::vector<std::string>& switches) {
    Chip* chip = bench_->dongle.chip();
    if (chip == nullptr && !switches.empty())
        throw Failure(Failure::Kind::OutOfRange, "This device has no switches");
    for (const std::string& name : switches)
        chip->turn(switchNamed(*chip, name), true);
}

void Outlet::demandChosen() const {
    if (machine_)
        machine_->demandChosen(DongleLink::deviceInterfaceClass);
}

std::string Outlet::refusal() const {
    return machine_ ? machine_->usb().refusal() : "";
}

Hardware Outlet::hardware() {
    return {.port = bench_ ? static_cast<ParallelPort&>(bench_->port) : machine_->port(),
            .usb = *usb_,
            .clock = *clock_};
}

void Outlet::wireFor(const Session& session) {
    if (bench_)
        bench_->wireFor(session);
}

} // namespace bitlux
