// Continuous sending without a window on a port of 1 microsecond an access, with and without the
// recording of the words for a waveform: the rates beside each other.

#include "bench/simulated_port.h"
#include "program_rig.h"
#include "workbench/bench_wiring.h"

#include <vector>

#include <fmt/format.h>

namespace {

using namespace bitlux;
using perf::median;

constexpr double limit = 0.9;
constexpr int rounds = 9;

/// Sends until the log is full; words a second.
double rateOf(perf::ProgramRig& rig) {
    constexpr double words = 4000;
    rig.program.mainForm().log.clear();
    const std::int64_t start = rig.clock.nanoseconds();
    rig.program.mainForm().run.cmdSendContinuous_Click();
    return words * 1e9 / static_cast<double>(rig.clock.nanoseconds() - start);
}

} // namespace

int main() {
    PacedClock paced;
    SimulatedPort port(paced, makeDevice("loopback"));
    perf::ProgramRig rig(port);
    port.setShapeSource(
        [&rig] { return busShapeOf(rig.program.session(), rig.program.session().SPIType); });
    std::vector<double> with;
    std::vector<double> without;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        without.push_back(rateOf(rig));
        rig.program.waveform().start();
        with.push_back(rateOf(rig));
        rig.program.waveform().stop();
        ratios.push_back(with.back() / without.back());
    }
    const double ratio = median(ratios);
    fmt::print("recording: {:.0f} words of 32 bits a second with, {:.0f} without, ratio {:.3f} (at "
               "least {})\n",
               median(with), median(without), ratio, limit);
    return ratio >= limit ? 0 : 1;
}
