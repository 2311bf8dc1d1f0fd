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

/// No dongle is opened when another bus was chosen.
HardwareChoice choiceOf(const OutletOptions& options) {
    HardwareChoice choice;
    const bool onAdapter = options.chosenBus() == Bus::Adapter;
    (onAdapter ? choice.adapters.serial : choice.serial) = options.serial;
    choice.dongles = options.bus != "port" && !onAdapter;
    choice.adapters.isDemanded = onAdapter;
    choice.adapters.clock = options.adapterClock();
    choice.adapters.keepsLines = options.keepsLines;
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
    seesAdapters_ = options.bus.empty() || options.chosenBus() == Bus::Adapter;
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
    std::vector<DongleFault> texts;
    for (const std::string& fault : options.faults)
        texts.push_back(dongleFaultFrom(fault));
    DongleFaults faults(std::move(texts), options.seed);
    if (options.bus == "dongle") {
        bench_->dongle.setFaults(std::move(faults));
        bench_->dongle.plug();
    } else if (options.bus == "ftdi") {
        Adapter settings = bench_->adapter.settings();
        settings.clock = options.adapterClock().value_or(settings.clock);
        settings.keepsLines = options.keepsLines;
        bench_->adapter.setSettings(std::move(settings));
        bench_->adapter.setFaults(std::move(faults));
        bench_->adapter.plug();
    }
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
    if (bench_)
        return {.port = bench_->port, .usb = *usb_, .clock = *clock_, .adapters = &bench_->adapter};
    return {.port = machine_->port(),
            .usb = *usb_,
            .clock = *clock_,
            .adapters = seesAdapters_ ? &machine_->adapters() : nullptr};
}

void Outlet::wireFor(const Session& session) {
    if (bench_)
        bench_->wireFor(session);
}

} // namespace bitlux
