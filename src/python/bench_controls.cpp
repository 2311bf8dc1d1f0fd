#include "python/bench_controls.h"

#include "bench/device.h"
#include "platform/failure.h"
#include "workbench/library_chips.h"

#include <cmath>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

BenchControls::BenchControls(VirtualBench& bench, std::string device)
    : bench_(bench), device_(std::move(device)) {}

void BenchControls::demandOpen() const {
    if (isClosed && isClosed())
        throw Failure(Failure::Kind::OutOfRange, "The bench is closed");
}

VirtualBench& BenchControls::changed() {
    demandOpen();
    return bench_;
}

void BenchControls::connect(const std::string& device) {
    changed().connect(makeBenchDevice(device, replies_));
    device_ = device;
}

void BenchControls::setReplies(std::vector<Reply> replies) {
    if (device_ != "scripted")
        throw Failure(
            Failure::Kind::OutOfRange,
            fmt::format(R"(The device "{}" answers by itself; "scripted" takes replies)", device_));
    replies_ = std::move(replies);
    connect(device_);
}

void BenchControls::setCommandReplies(std::vector<UsbFrame> replies) {
    commandReplies_ = std::move(replies);
    changed().dongle.answerCommandsWith(commandReplies_);
}

void BenchControls::plug() {
    changed().dongle.plug();
}

void BenchControls::unplug() {
    changed().dongle.unplug();
}

void BenchControls::plugAdapter() {
    changed().adapter.plug();
}

void BenchControls::unplugAdapter() {
    changed().adapter.unplug();
}

void BenchControls::setLines(bool interrupt, bool reset) {
    changed().dongle.setLines(interrupt, reset);
}

void BenchControls::setSilent(bool silent) {
    silent_ = silent;
    applyFaults();
}

void BenchControls::setLateMilliseconds(double milliseconds) {
    late_ = milliseconds;
    applyFaults();
}

void BenchControls::setFaults(const std::vector<std::string>& faults, std::uint32_t seed) {
    std::vector<DongleFault> read;
    for (const std::string& fault : faults)
        read.push_back(dongleFaultFrom(fault));
    faults_ = std::move(read);
    seed_ = seed;
    applyFaults();
}

void BenchControls::applyFaults() {
    constexpr double nanosecondsOfMillisecond = 1e6;
    std::vector<DongleFault> all;
    if (silent_)
        all.push_back({.kind = DongleFault::Kind::Silent});
    if (late_ > 0)
        all.push_back({.kind = DongleFault::Kind::Late,
                       .duration = std::llround(late_ * nanosecondsOfMillisecond)});
    all.insert(all.end(), faults_.begin(), faults_.end());
    changed().adapter.setFaults(DongleFaults(all, seed_));
    changed().dongle.setFaults(DongleFaults(std::move(all), seed_));
}

} // namespace bitlux
