// A sequence of 100,000 lines in the panel's window: from loading it to the lines painted,
// scrolling to its end, and a run on the toolkit's event loop with the longest time between two of
// its turns.

#include "watched_loop.h"

#include "bench/scripted_desk.h"
#include "gui/desktop/theme.h"
#include "gui/window/main_window.h"
#include "panels/common/panel_form.h"
#include "workbench/virtual_bench.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <unistd.h>

#include <QApplication>
#include <QScrollBar>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int lines = 100'000;
constexpr double loadLimit = 300; // milliseconds, all of them
constexpr double scrollLimit = 50;
constexpr double turnLimit = 50;

void writeSequence(const std::filesystem::path& file) {
    std::ofstream stream(file, std::ios::binary);
    stream << "Command\tValue\r\nCommands\tValue in Hexa\t\r\n";
    for (int line = 0; line < lines; ++line)
        stream << (line % 2 == 0 ? "MUX Write\tA0\t\r\n" : "MUX Read Low\t\t\r\n");
}

void show(gui::MainWindow& window, QWidget& part) {
    window.binder().flush();
    part.repaint();
    QApplication::processEvents();
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    gui::applyTheme(false);
    const SystemClock clock;
    VirtualClock busClock;
    VirtualBench bench(busClock, makeDevice("zt72518d"));
    bench.dongle.plug();
    ScriptedDesk desk(busClock);
    perf::WatchedLoop loop;
    Program program(bench.hardware(), {.boxes = desk.boxes,
                                       .fileDialogs = desk.fileDialogs,
                                       .pointer = desk.pointer,
                                       .loop = loop});
    program.Main();
    gui::MainWindow window(program);
    program.forms().show("ZT72518");
    PanelForm& panel = program.panels().touch("zt72518");
    panel.outerTabs.click(1);
    window.binder().flush();
    auto& list = *window.findChild<gui::LogView*>("ZT72518.List_Commands");
    QWidget& dialog = *list.window();
    show(window, dialog);

    std::int64_t start = clock.nanoseconds();
    const auto passed = [&] { return static_cast<double>(clock.nanoseconds() - start) / 1e6; };
    const std::filesystem::path file =
        std::filesystem::temp_directory_path() / fmt::format("bitlux-perf-{}.txt", ::getpid());
    writeSequence(file);
    desk.fileDialogs.answer(file.string());
    start = clock.nanoseconds();
    panel.sequence.files.Cm_LOAD_Seq.click();
    show(window, dialog);
    const double loaded = passed();
    std::filesystem::remove(file);

    start = clock.nanoseconds();
    list.verticalScrollBar()->setValue(list.verticalScrollBar()->maximum());
    show(window, dialog);
    const double scrolled = passed();

    start = clock.nanoseconds();
    panel.sequence.player.Cm_Run_Seq.click();
    const double ran = passed();
    const double turn = static_cast<double>(loop.longest) / 1e6;
    const bool right = panel.sequence.lists.answers(1).count() == lines + 1;
    fmt::print(
        "long sequence: {} lines loaded and painted after {:.0f} ms (limit {:.0f} ms), scrolled "
        "to the end in {:.1f} ms (limit {:.0f} ms), run in {:.1f} s with at most {:.1f} ms "
        "between two turns of the event loop (limit {:.0f} ms){}\n",
        lines, loaded, loadLimit, scrolled, scrollLimit, ran / 1e3, turn, turnLimit,
        right ? "" : ", but some have no answer");
    return loaded <= loadLimit && scrolled <= scrollLimit && turn <= turnLimit && right ? 0 : 1;
}
