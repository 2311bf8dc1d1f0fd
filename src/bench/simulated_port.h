#pragma once

#include "bench/bench_clock.h"
#include "bench/bus_shape.h"
#include "bench/device.h"
#include "platform/parallel_port.h"

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace bitlux {

/// A parallel port with a device on its pins. Its user cannot distinguish it from a real one.
class SimulatedPort : public ParallelPort {
public:
    /// Duration of a register access on a real port, in nanoseconds.
    static constexpr std::int64_t accessTime = 1000;

    /// `base` is the address of LPT1, the only port at first; `clock` outlives this.
    SimulatedPort(BenchClock& clock, std::shared_ptr<Device> device,
                  std::int16_t base = address378);

    /// The wiring of the device; queried at every write of the data register.
    void setShapeSource(BusShapeSource source) { shapeSource_ = std::move(source); }

    /// Connects another device to the pins.
    void connect(std::shared_ptr<Device> device);

    /// The addresses of LPT1, LPT2 and so on; all lead to the same pins.
    void setAddresses(std::vector<std::int16_t> bases) { bases_ = std::move(bases); }

    /// The value of the data register.
    [[nodiscard]] std::uint8_t dataPins() const { return data_; }
    /// The value of the control register; bits 0, 1 and 3 are inverted on their pins.
    [[nodiscard]] std::uint8_t controlPins() const { return control_; }
    /// Level of the device's output.
    [[nodiscard]] bool dataOut() const { return device_->dataOut(); }

    std::int32_t Inp(std::int16_t address) override;
    void Outp(std::int16_t address, std::int16_t value) override;
    void EnablePorts(std::int16_t, std::int16_t) override {}
    void DisablePorts(std::int16_t, std::int16_t) override {}
    std::int16_t GetLPTPortAddress(std::int16_t number) override;

private:
    void setLines(std::uint8_t value);
    /// Which register lies at an address, -1 for none.
    [[nodiscard]] int registerAt(std::int16_t address) const;

    BenchClock& clock_;
    std::shared_ptr<Device> device_;
    Chip* chip_ = nullptr; ///< the device, when it is one
    BusShapeSource shapeSource_ = [] { return BusShape{}; };
    BusShape shape_;
    std::vector<std::int16_t> bases_;
    std::uint8_t data_ = 0;
    std::uint8_t control_ = 0;
};

} // namespace bitlux
