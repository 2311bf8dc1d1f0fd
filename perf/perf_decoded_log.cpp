// Scrolling through the decoded log of 20,000 words by a row, a page and a jump: processor time of
// a frame, in which nobody else's work counts.

#include "bench/scripted_desk.h"
#include "endless_words.h"
#include "gui/desktop/theme.h"
#include "gui/window/decoded_view.h"
#include "gui/window/main_window.h"
#include "workbench/virtual_bench.h"

#include <algorithm>
#include <ctime>
#include <vector>

#include <QApplication>
#include <QPushButton>
#include <QScrollBar>

#include <fmt/format.h>

namespace {

using namespace bitlux;

constexpr int words = 20'000;
constexpr int frames = 300;
constexpr double limit = 16; // milliseconds

void send(Program& program) {
    Session& session = program.session();
    for (unsigned n = 0; n < words; ++n) {
        const unsigned word = 0x40000000U | (n % 48) << 24U | (n * 2654435761U >> 8U);
        for (unsigned bit = 0; bit < 32; ++bit)
            session.WordToSend[bit] = static_cast<std::int16_t>(word >> bit & 1U);
        program.engine().SendSPI();
    }
}

} // namespace

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    gui::applyTheme(false);
    VirtualClock busClock;
    VirtualBench bench(busClock, makeDevice("echo"));
    ScriptedDesk desk(busClock);
    Program program(bench.hardware(), desk.desk());
    bench.wireFor(program.session());
    perf::prepareForEndlessWords(program);
    program.session().WordToSend.assign(32, 0);
    gui::MainWindow window(program);
    window.resize(1600, 1000);
    window.show();
    program.decoded().names().pick("zt72516");
    send(program);
    window.findChild<QPushButton*>("decodedSingle")->click();
    auto& view = *window.findChild<gui::DecodedView*>();
    QApplication::processEvents();

    QScrollBar& bar = *view.verticalScrollBar();
    const int page = bar.pageStep();
    std::vector<double> times;
    for (int frame = 0; frame < frames; ++frame) {
        const std::clock_t start = std::clock();
        bar.setValue(frame % 3 == 0   ? frame * bar.maximum() / frames
                     : frame % 3 == 1 ? bar.value() + 1
                                      : bar.value() + page);
        view.viewport()->repaint();
        QApplication::processEvents();
        times.push_back(1e3 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC);
    }
    std::sort(times.begin(), times.end());
    const double typical = times[times.size() / 2];
    const double most = times[times.size() * 99 / 100];
    const bool right = view.model()->rowCount() >= words;
    fmt::print("decoded log: {} words of {} rows in sight scroll in {:.1f} ms a frame, 99 of 100 "
               "within {:.1f} ms (limit {:.0f} ms){}\n",
               view.model()->rowCount(), page, typical, most, limit,
               right ? "" : ", but some are missing");
    return most <= limit && right ? 0 : 1;
}
