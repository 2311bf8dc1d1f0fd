// Continuous sending with the window open, every word logged, on a port of 1 microsecond an
// access: how much of the time the bus is busy, how often the log is painted, and the longest
// time between two turns of the event loop.

#include "bare_loop.h"
#include "endless_words.h"
#include "watched_loop.h"

#include "bench/scripted_desk.h"
#include "gui/desktop/theme.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <algorithm>
#include <vector>

#include <QApplication>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr double busyLimit = 0.85;
constexpr double paintsLimit = 15;
constexpr double turnLimit = 50;
constexpr int words = 4000; // fill the log
constexpr int rounds = 5;

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    gui::applyTheme(false);
    PacedClock clock;
    VirtualBench bench(clock, makeDevice("loopback"));
    ScriptedDesk desk(clock);
    perf::WatchedLoop loop;
    Program program(bench.hardware(), {.boxes = desk.boxes,
                                       .fileDialogs = desk.fileDialogs,
                                       .pointer = desk.pointer,
                                       .loop = loop});
    bench.wireFor(program.session());
    perf::prepareForEndlessWords(program);
    gui::MainWindow window(program);
    window.resize(1000, 700);
    window.show();
    QApplication::processEvents();
    const auto& log = *window.findChild<gui::LogView*>("frmMain.lstSessionLogSingle");

    perf::BareLoop bare(bench.port, 1, true, 32);
    std::vector<double> shares;
    std::int64_t elapsed = 0;
    int paints = 0;
    for (int round = 0; round < rounds; ++round) {
        const std::int64_t start = clock.nanoseconds();
        for (int i = 0; i < words; ++i)
            bare.send();
        const std::int64_t middle = clock.nanoseconds();
        program.mainForm().log.clear();
        loop.restart();
        const int before = log.paints();
        program.mainForm().run.cmdSendContinuous_Click();
        const std::int64_t end = clock.nanoseconds();
        elapsed += end - middle;
        shares.push_back(static_cast<double>(middle - start) / static_cast<double>(end - middle));
        paints += log.paints() - before;
    }
    std::nth_element(shares.begin(), shares.begin() + rounds / 2, shares.end());
    const double busy = shares[rounds / 2];
    const double paintRate = paints / (static_cast<double>(elapsed) / 1e9);
    const double longest = static_cast<double>(loop.longest) / 1e6;
    fmt::print(
        "window: bus busy {:.1f} % of the time (at least {:.0f} %), log painted {:.0f} times "
        "a second (at least {:.0f}), {:.1f} ms without a turn at most (limit {:.0f} ms)\n",
        100 * busy, 100 * busyLimit, paintRate, paintsLimit, longest, turnLimit);
    return busy >= busyLimit && paintRate >= paintsLimit && longest <= turnLimit ? 0 : 1;
}
