// Instructions of continuous sending without a window on the simulated port, whose accesses cost
// less than those of a real one, words logged and shown: with and without what a waveform keeps of
// the last words, each between two dumps of callgrind's counter. To be run under callgrind with
// collection off at start; perf/run reads the dumps.

#include "bench/simulated_port.h"
#include "program_rig.h"
#include "workbench/bench_wiring.h"

#include <valgrind/callgrind.h>

namespace {

using namespace bitlux;

/// Sends until the log is full.
void count(perf::ProgramRig& rig, const char* name) {
    rig.program.mainForm().log.clear();
    CALLGRIND_ZERO_STATS;
    CALLGRIND_TOGGLE_COLLECT;
    rig.program.mainForm().run.cmdSendContinuous_Click();
    CALLGRIND_TOGGLE_COLLECT;
    CALLGRIND_DUMP_STATS_AT(name);
}

} // namespace

int main() {
    VirtualClock clock;
    SimulatedPort port(clock, makeDevice("loopback"));
    perf::ProgramRig rig(port);
    port.setShapeSource(
        [&rig] { return busShapeOf(rig.program.session(), rig.program.session().SPIType); });
    count(rig, "sending first"); // what happens once does not count
    count(rig, "sending without");
    rig.program.waveform().keepLast();
    count(rig, "sending first");
    count(rig, "sending with");
}
