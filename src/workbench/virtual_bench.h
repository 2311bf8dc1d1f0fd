#pragma once

#include "bench/simulated_adapter.h"
#include "bench/simulated_dongle.h"
#include "bench/simulated_port.h"
#include "platform/hardware.h"
#include "session/session.h"

#include <memory>

namespace bitlux {

/// The virtual bench: a parallel port, a dongle and an adapter, with one device on the lines of
/// all.
struct VirtualBench {
    /// Dongle and adapter are unplugged at first. `benchClock` outlives this.
    VirtualBench(BenchClock& benchClock, const std::shared_ptr<Device>& device);

    /// Puts another device on the lines.
    void connect(const std::shared_ptr<Device>& device);
    /// Wires the device as the settings in force say; the session outlives the traffic.
    void wireFor(const Session& session);

    [[nodiscard]] Hardware hardware() {
        return {.port = port, .usb = dongle, .clock = clock, .adapters = &adapter};
    }

    BenchClock& clock;
    SimulatedPort port;
    SimulatedDongle dongle;
    SimulatedAdapter adapter;
};

} // namespace bitlux
