// Continuous sending without a window, every word logged, on a port of 1 microsecond an access:
// how much of the time the bus is busy; and the cost of logging a word with an empty and with a
// full log.

#include "bare_loop.h"

#include "bench/simulated_port.h"
#include "null_port.h"
#include "program_rig.h"
#include "workbench/bench_wiring.h"

#include <vector>

#include <fmt/format.h>

namespace {

using namespace bitlux;
using perf::median;

constexpr double busyLimit = 0.95;
constexpr double logLimit = 1.1; // what the noise of the machine leaves of "no more"
constexpr int wordsOfFullLog = 4000;

using Rig = perf::ProgramRig;

/// Sends until the log is full; nanoseconds.
std::int64_t fillLog(Rig& rig) {
    const std::int64_t start = rig.clock.nanoseconds();
    rig.program.mainForm().run.cmdSendContinuous_Click();
    return rig.clock.nanoseconds() - start;
}

bool measureBusy() {
    constexpr int rounds = 7;
    PacedClock paced;
    SimulatedPort port(paced, makeDevice("loopback"));
    Rig rig(port);
    port.setShapeSource(
        [&rig] { return busShapeOf(rig.program.session(), rig.program.session().SPIType); });
    // What the accesses alone take, before each run.
    perf::BareLoop bare(port, 1, true, 32);
    const auto accessesAlone = [&] {
        const std::int64_t start = rig.clock.nanoseconds();
        for (int i = 0; i < wordsOfFullLog; ++i)
            bare.send();
        return rig.clock.nanoseconds() - start;
    };
    std::vector<double> busy;
    double microseconds = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::int64_t busTime = accessesAlone();
        rig.program.mainForm().log.clear();
        const std::int64_t elapsed = fillLog(rig);
        busy.push_back(static_cast<double>(busTime) / static_cast<double>(elapsed));
        microseconds = static_cast<double>(elapsed) / wordsOfFullLog / 1000;
    }
    const double share = median(busy);
    fmt::print("continuous: {} words of 32 bits logged, {:.1f} us a word; the bus is busy {:.1f} % "
               "of the time (at least {:.0f} %)\n",
               wordsOfFullLog, microseconds, 100 * share, 100 * busyLimit);
    return share >= busyLimit;
}

/// Time for a block of words logged, on a port that costs nothing, by how full the log is.
bool measureLog() {
    constexpr int blocks = 8;
    constexpr int rounds = 41;
    const auto port = perf::makeNullPort();
    Rig rig(*port);
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        rig.program.mainForm().log.clear();
        std::vector<double> times;
        for (int block = 0; block < blocks; ++block) {
            const std::int64_t start = rig.clock.nanoseconds();
            for (int i = 0; i < wordsOfFullLog / blocks; ++i)
                rig.program.mainForm().singleWord.DoSPISingle();
            times.push_back(static_cast<double>(rig.clock.nanoseconds() - start));
        }
        ratios.push_back(times.back() / times.front());
    }
    const double ratio = median(ratios);
    fmt::print("log: a word costs {:.2f} times as much with 17500 to 20000 lines as with 0 to 2500 "
               "(at most {})\n",
               ratio, logLimit);
    return ratio <= logLimit;
}

} // namespace

int main() {
    const bool busy = measureBusy();
    const bool log = measureLog();
    return busy && log ? 0 : 1;
}
