#include "bench/simulated_port.h"

#include "bench/chip.h"

#include <utility>

namespace bitlux {

namespace {

bool bitOf(std::uint8_t value, int bit) {
    return ((value >> bit) & 1) != 0;
}

} // namespace

SimulatedPort::SimulatedPort(BenchClock& clock, std::shared_ptr<Device> device, std::int16_t base)
    : ParallelPort(true), clock_(clock), bases_{base} {
    connect(std::move(device));
}

void SimulatedPort::connect(std::shared_ptr<Device> device) {
    device_ = std::move(device);
    chip_ = device_->chip();
}

int SimulatedPort::registerAt(std::int16_t address) const {
    for (const std::int16_t base : bases_)
        if (address >= base && address <= base + controlRegister)
            return address - base;
    return -1;
}

std::int32_t SimulatedPort::Inp(std::int16_t address) {
    clock_.spend(accessTime);
    switch (registerAt(address)) {
    case dataRegister:
        return data_;
    case controlRegister:
        return control_;
    case statusRegister: {
        const std::int32_t status = device_->dataOut() ? 1 << shape_.dataOutPin : 0;
        device_->sampled();
        return status;
    }
    default:
        return 0xFF; // nothing drives the bus there
    }
}

void SimulatedPort::Outp(std::int16_t address, std::int16_t value) {
    clock_.spend(accessTime);
    const int place = registerAt(address);
    if (place == dataRegister)
        setLines(static_cast<std::uint8_t>(value));
    else if (place == controlRegister)
        control_ = static_cast<std::uint8_t>(value);
}

std::int16_t SimulatedPort::GetLPTPortAddress(std::int16_t number) {
    const auto place = static_cast<std::size_t>(number) - 1;
    return place < bases_.size() ? bases_[place] : std::int16_t{0};
}

void SimulatedPort::setLines(std::uint8_t value) {
    shape_ = shapeSource_();
    data_ = value;
    if (chip_ != nullptr)
        chip_->timeIs(clock_.nanoseconds());
    device_->inputsChanged({.chipSelect = bitOf(value, shape_.chipSelectPin),
                            .clock = bitOf(value, shape_.clockPin),
                            .dataIn = bitOf(value, shape_.dataInPin)},
                           shape_);
}

} // namespace bitlux
