#include "workbench/virtual_bench.h"

#include "workbench/bench_wiring.h"

namespace bitlux {

VirtualBench::VirtualBench(BenchClock& benchClock, const std::shared_ptr<Device>& device)
    : clock(benchClock), port(clock, device), dongle(clock, device), adapter(clock, device) {}

void VirtualBench::connect(const std::shared_ptr<Device>& device) {
    port.connect(device);
    dongle.connect(device);
    adapter.connect(device);
}

void VirtualBench::wireFor(const Session& session) {
    port.setShapeSource([&session] { return busShapeOf(session, session.SPIType); });
    adapter.setShapeSource([&session] { return busShapeOf(session, session.SPIType); });
    dongle.setWiring([&session](int type) { return busShapeOf(session, type); });
}

} // namespace bitlux
