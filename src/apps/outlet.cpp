#include "apps/outlet.h"

#include "bench/chip.h"
#include "bench/device.h"
#include "bench/dongle_fault.h"
#include "platform/failure.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

#include <chrono>
#include <thread>
#include <utility>

#include <CLI/CLI.hpp>
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

/// Takes what `read` reads without Failure.
CLI::Validator readable(const std::string& name, std::function<void(const std::string&)> read) {
    return {[read = std::move(read)](const std::string& text) -> std::string {
                try {
                    read(text);
                    return {};
                } catch (const Failure& failure) {
                    return failure.what();
                }
            },
            name};
}

std::unique_ptr<BenchClock> makeClock(bool real, const Interruption& interruption) {
    if (real)
        return std::make_unique<InterruptibleRealClock>(interruption);
    return std::make_unique<InterruptibleVirtualClock>(interruption);
}

} // namespace

std::vector<std::string> splitAtCommas(const std::string& text) {
    return CLI::detail::split(text, ',');
}

std::function<void()> addOutletOptions(CLI::App& command, OutletOptions& options,
                                       const std::string& busHelp) {
    command.add_option("--bench", options.bench, "Send to a device of the virtual bench")
        ->check(CLI::IsMember(deviceNames()));
    command.add_option("--bus", options.bus, busHelp)->check(CLI::IsMember({"dongle", "port"}));
    const CLI::Option* replies =
        command.add_option("--replies", options.replies, "Answers of the device scripted")
            ->check(readable("HEX,HEX,...", [](const std::string& text) {
                for (const std::string& number : splitAtCommas(text))
                    replyFromHex(number);
            }));
    const CLI::Option* faults =
        command
            .add_option("--fault", options.faults,
                        "What goes wrong with the dongle of the virtual bench: silent, late:MS, "
                        "short:BYTES, stalled, gone, gone:MS; then @FRAME, /CHANCE")
            ->check(readable("FAULT", [](const std::string& text) { dongleFaultFrom(text); }))
            ->take_all()
            ->allow_extra_args(false);
    command
        .add_option("--turn-on", options.switches,
                    "Turn on a flag, a pin or a fault of the chip on the virtual bench")
        ->type_name("SWITCH")
        ->take_all()
        ->allow_extra_args(false);
    command.add_option("--seed", options.seed, "Repeats the chances of --fault")
        ->capture_default_str();
    return [&options, replies, faults] {
        if (faults->count() > 0 && (options.bench.empty() || options.bus != "dongle"))
            throw CLI::ValidationError("--fault", "needs --bench and --bus dongle");
        if (!options.switches.empty() && options.bench.empty())
            throw CLI::ValidationError("--turn-on", "needs --bench");
        if ((options.bench == "scripted") != (replies->count() > 0))
            throw CLI::ValidationError("--replies", "belongs to --bench scripted, and it needs it");
    };
}

Interruption uninterrupted() {
    return {.check = [] {},
            .sleep =
                [](std::int64_t nanoseconds) {
                    std::this_thread::sleep_for(std::chrono::nanoseconds(nanoseconds));
                }};
}

struct Outlet::Machine {
    LinuxParallelPort port;
    LinuxUsbHost usb;
};

Outlet::Outlet(const OutletOptions& options, Interruption interruption, std::ostream& errors)
    : interruption_(std::move(interruption)),
      clock_(makeClock(options.bench.empty(), interruption_)),
      loop_(*clock_, interruption_) {
    if (options.bench.empty())
        setUpMachine(errors);
    else
        setUpBench(options);
}

Outlet::~Outlet() = default;

void Outlet::setUpMachine(std::ostream& errors) {
    machine_ = std::make_unique<Machine>();
    usb_ = std::make_unique<InterruptibleUsbHost>(machine_->usb, *clock_, interruption_);
    const DongleNumbers numbers(DongleNumbers::files());
    for (const std::string& problem : numbers.problems())
        fmt::print(errors, "{}\n", problem);
}

void Outlet::setUpBench(const OutletOptions& options) {
    bench_ = std::make_unique<VirtualBench>(*clock_, makeDevice(options.bench, repliesOf(options)));
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

Hardware Outlet::hardware() {
    return {.port = bench_ ? static_cast<ParallelPort&>(bench_->port) : machine_->port,
            .usb = *usb_,
            .clock = *clock_};
}

void Outlet::wireFor(const Session& session) {
    if (bench_)
        bench_->wireFor(session);
}

} // namespace bitlux
