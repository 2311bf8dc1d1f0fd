// From opening a file of 100,000 Quick Commands of 32 bits in the window to the window painted, and
// a name chosen in its list.

#include "large_file.h"

#include "bench/scripted_desk.h"
#include "gui/desktop/theme.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <filesystem>
#include <string>

#include <QApplication>
#include <QComboBox>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int commands = 100'000;
constexpr double limit = 1000; // milliseconds

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    gui::applyTheme(false);
    SystemClock clock;
    VirtualClock busClock;
    VirtualBench bench(busClock, makeDevice("loopback"));
    ScriptedDesk desk(busClock);
    Program program(bench.hardware(), desk.desk());
    program.Main();
    program.dialog().Btn_ParallelPort_Click();
    gui::MainWindow window(program);
    window.resize(1000, 700);
    window.show();
    QApplication::processEvents();
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / fmt::format("bitlux-perf-{}.spi", ::getpid());
    perf::writeLargeFile(file, commands);

    const auto passed = [&clock, start = clock.nanoseconds()] {
        return static_cast<double>(clock.nanoseconds() - start) / 1e6;
    };
    program.mainForm().files.open(file);
    const double read = passed();
    window.binder().flush();
    window.repaint();
    QApplication::processEvents();
    const double painted = passed();
    program.mainForm().commands.cmbMasterQCList.select(commands - 1);
    window.binder().flush();
    window.repaint();
    QApplication::processEvents();
    const double chosen = passed();
    std::filesystem::remove(file);
    const bool right = program.mainForm().singleWord.txtHexWordToSend.text() == "0001869F";
    fmt::print(
        "window: {} Quick Commands read after {:.0f} ms, painted after {:.0f} ms, one chosen "
        "after {:.0f} ms (limit {:.0f} ms){}\n",
        commands, read, painted, chosen, limit, right ? "" : ", but the wrong one");
    return chosen <= limit && right ? 0 : 1;
}
