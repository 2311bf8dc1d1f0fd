#include "bench/simulated_adapter.h"

#include "bench/chip.h"
#include "platform/failure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <utility>

#include <fmt/format.h>

namespace bitlux {

namespace {

constexpr int firstDataPin = 2;
/// The pins of the connector by the bits of the status register; 0 for none.
constexpr std::array statusPins{0, 0, 0, 15, 13, 12, 10, 11};

[[noreturn]] void fail(const Adapter& adapter, const std::string& what) {
    throw Failure(Failure::Kind::PortUnusable,
                  fmt::format("The adapter {} {}", adapter.name(), what));
}

} // namespace

/// One opening of the adapter of the bench.
class SimulatedAdapter::Link : public AdapterLink {
public:
    Link(SimulatedAdapter& adapter, Adapter settings)
        : adapter_(adapter), settings_(std::move(settings)), plugging_(adapter.plugging_) {}
    ~Link() override {
        if (isThere() && !settings_.keepsLines)
            release();
    }
    Link(const Link&) = delete;
    Link& operator=(const Link&) = delete;

    void drive(std::uint8_t outputs) override {
        demandThere();
        adapter_.driven_ = outputs;
        adapter_.change();
    }

    void exchange(std::span<const std::uint8_t> bytes, std::span<std::uint8_t> samples) override {
        demandThere();
        const DongleFault fault = bytes.size() > 1 ? adapter_.faults_.next() : DongleFault{};
        refuse(fault);
        adapter_.lastBytes_.assign(bytes.begin(), bytes.end());
        for (std::size_t i = 0; i < bytes.size(); ++i)
            samples[i] = adapter_.put(bytes[i], std::llround(nanoseconds / rate()));
        adapter_.clock_.spend(transferTime);
        answer(fault, bytes.size());
    }

    [[nodiscard]] double rate() const override { return settings_.clock; }

private:
    static constexpr double nanoseconds = 1e9;

    [[nodiscard]] bool isThere() const {
        return adapter_.plugged() && adapter_.plugging_ == plugging_;
    }
    void demandThere() const {
        if (!isThere())
            fail(settings_, "was lost while in use: it was removed. Check that it is plugged "
                            "in, then try again.");
    }
    /// Faults that keep the bytes from the lines.
    void refuse(const DongleFault& fault) {
        if (fault.kind == DongleFault::Kind::Gone) {
            adapter_.unplug();
            if (fault.duration != 0)
                adapter_.backAt_ = adapter_.clock_.nanoseconds() + fault.duration;
            demandThere();
        }
        if (fault.kind == DongleFault::Kind::Stalled)
            fail(settings_, "has broken off the transfer. Unplug it and plug it in again, then "
                            "try again.");
    }
    /// Faults of the samples.
    void answer(const DongleFault& fault, std::size_t count) {
        const bool isSilent = fault.kind == DongleFault::Kind::Silent;
        if (isSilent || fault.kind == DongleFault::Kind::Late) {
            const std::int64_t late = isSilent ? longestWait : fault.duration;
            adapter_.clock_.idle(std::min(late, longestWait));
            if (late >= longestWait)
                fail(settings_, "does not answer. Unplug it and plug it in again, then try again.");
        }
        if (fault.kind == DongleFault::Kind::Short)
            fail(settings_,
                 fmt::format("has sent {} of {} samples and no more. Unplug it and "
                             "plug it in again, then try again.",
                             std::min(static_cast<std::size_t>(fault.bytes), count), count));
    }
    void release() {
        adapter_.driven_ = 0;
        adapter_.change();
    }

    SimulatedAdapter& adapter_;
    Adapter settings_;
    int plugging_;
};

SimulatedAdapter::SimulatedAdapter(BenchClock& clock, std::shared_ptr<Device> device)
    : clock_(clock) {
    settings_.type = "FT232R";
    settings_.serial = "BENCH";
    settings_.place = "bench";
    connect(std::move(device));
}

void SimulatedAdapter::connect(std::shared_ptr<Device> device) {
    device_ = std::move(device);
    chip_ = device_->chip();
}

void SimulatedAdapter::plug() {
    if (plugged_)
        return;
    plugged_ = true;
    ++plugging_;
    backAt_ = 0;
}

void SimulatedAdapter::unplug() {
    plugged_ = false;
    backAt_ = 0;
    driven_ = 0;
    change();
}

bool SimulatedAdapter::plugged() {
    if (backAt_ != 0 && clock_.nanoseconds() >= backAt_)
        plug();
    return plugged_;
}

std::vector<Adapter> SimulatedAdapter::find() {
    return plugged() ? std::vector{settings_} : std::vector<Adapter>{};
}

std::unique_ptr<AdapterLink> SimulatedAdapter::open(const Adapter& adapter) {
    if (!plugged())
        fail(adapter, "is not plugged in. Plug it in, then try again.");
    if (faults_.refusesOpening())
        fail(adapter, "is in use by another program. Close it, then try again.");
    return std::make_unique<Link>(*this, adapter);
}

std::uint8_t SimulatedAdapter::lines() const {
    auto levels = static_cast<std::uint8_t>((latch_ & driven_) | ~driven_);
    const std::optional<int> line =
        settings_.wiring.lineOf(statusPins.at(static_cast<std::size_t>(shape_.dataOutPin)));
    if (!line)
        return levels;
    const auto mask = static_cast<std::uint8_t>(1U << static_cast<unsigned>(*line));
    if ((driven_ & mask) == 0 && !device_->dataOut())
        levels = static_cast<std::uint8_t>(levels & ~mask);
    return levels;
}

bool SimulatedAdapter::levelOfPin(int pin) const {
    const std::optional<int> line = settings_.wiring.lineOf(pin);
    return !line || ((lines() >> *line) & 1) != 0;
}

/// The lines as they were, then the byte.
std::uint8_t SimulatedAdapter::put(std::uint8_t byte, std::int64_t pace) {
    shape_ = shapeSource_();
    const std::uint8_t before = lines();
    const bool wasHigh = levelOfPin(shape_.clockPin + firstDataPin);
    latch_ = byte;
    countSample(wasHigh);
    clock_.spend(pace);
    change();
    return before;
}

/// The adapter samples at every byte. The device gets only the samples that count, one for each
/// bit: at the edge on which data is valid where data also changes on it, else after it.
void SimulatedAdapter::countSample(bool wasHigh) {
    const bool isHigh = levelOfPin(shape_.clockPin + firstDataPin);
    const bool isValidEdge = isHigh != wasHigh && isHigh == shape_.validOnRising;
    const bool counts =
        shape_.validOnRising == shape_.toggledOnRising ? isValidEdge : clockWasValid_;
    if (counts)
        device_->sampled();
    clockWasValid_ = isValidEdge;
}

void SimulatedAdapter::change() {
    if (chip_ != nullptr)
        chip_->timeIs(clock_.nanoseconds());
    device_->inputsChanged({.chipSelect = levelOfPin(shape_.chipSelectPin + firstDataPin),
                            .clock = levelOfPin(shape_.clockPin + firstDataPin),
                            .dataIn = levelOfPin(shape_.dataInPin + firstDataPin)},
                           shape_);
}

} // namespace bitlux
