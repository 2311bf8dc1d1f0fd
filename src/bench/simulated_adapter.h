#pragma once

#include "bench/bench_clock.h"
#include "bench/bus_shape.h"
#include "bench/device.h"
#include "bench/dongle_fault.h"
#include "platform/adapter.h"

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace bitlux {

/// An FT232R with a device on its lines. Lines that it does not drive are pulled up. Its user
/// cannot distinguish it from a real one.
class SimulatedAdapter : public AdapterHost {
public:
    /// Duration of an exchange beside that of its bytes, in nanoseconds: the adapter keeps samples
    /// for a frame of full-speed USB before it sends them.
    static constexpr std::int64_t transferTime = 1'000'000;
    /// How long an answer is waited for.
    static constexpr std::int64_t longestWait = 500'000'000;

    /// Starts unplugged. `clock` outlives this.
    SimulatedAdapter(BenchClock& clock, std::shared_ptr<Device> device);

    /// The wiring of the device to the pins of a port; queried at every byte.
    void setShapeSource(BusShapeSource source) { shapeSource_ = std::move(source); }
    /// Connects another device to the lines.
    void connect(std::shared_ptr<Device> device);

    void plug();
    /// Unplugs it; an open link finds it gone.
    void unplug();
    [[nodiscard]] bool plugged();
    /// What find() lists while it is plugged in.
    void setSettings(Adapter settings) { settings_ = std::move(settings); }
    [[nodiscard]] const Adapter& settings() const { return settings_; }

    /// The faults from now on, one for each exchange of more than one byte, which is a word; the
    /// count of words restarts. Silent, Late, Short, Stalled and Gone are those of the dongle, Busy
    /// refuses to be opened.
    void setFaults(DongleFaults faults) { faults_ = std::move(faults); }

    /// The levels of the lines, and which of them the adapter drives.
    [[nodiscard]] std::uint8_t lines() const;
    [[nodiscard]] std::uint8_t driven() const { return driven_; }
    /// The bytes of the last exchange.
    [[nodiscard]] const std::vector<std::uint8_t>& lastBytes() const { return lastBytes_; }

    std::vector<Adapter> find() override;
    std::unique_ptr<AdapterLink> open(const Adapter& adapter) override;

private:
    class Link;

    [[nodiscard]] bool levelOfPin(int pin) const;
    std::uint8_t put(std::uint8_t byte, std::int64_t pace);
    void change();
    void countSample(bool wasHigh);

    BenchClock& clock_;
    std::shared_ptr<Device> device_;
    Chip* chip_ = nullptr; ///< the device, when it is one
    BusShapeSource shapeSource_ = [] { return BusShape{}; };
    BusShape shape_;
    Adapter settings_;
    DongleFaults faults_;
    bool plugged_ = false;
    int plugging_ = 0;        ///< counts how often it was plugged in, so that old links stay broken
    std::int64_t backAt_ = 0; ///< when it comes back, 0 for never
    std::uint8_t latch_ = 0;  ///< what was written last
    std::uint8_t driven_ = 0;
    bool clockWasValid_ = false; ///< the last byte made the edge on which data is valid
    std::vector<std::uint8_t> lastBytes_;
};

} // namespace bitlux
