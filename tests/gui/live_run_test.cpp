// A continuous run in a window that is used meanwhile.

#include "live_window.h"

#include "gui/window/log_view.h"

#include <functional>
#include <utility>
#include <vector>

#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// Counts the samples that words take from the port.
class Samples : public WireListener {
public:
    void add(const WireAccess& access) override {
        count += access.kind == WireAccess::Kind::Read ? 1 : 0;
    }
    std::uint64_t count = 0;
};

TEST(LiveRun, GoesOnUnderAMenuAndRepaints) {
    constexpr int bits = 32;
    LiveWindow live;
    Samples samples;
    live.program.startRecording(samples);
    ContinuousCount& count = live.program.mainForm().continuousCount;
    auto& log = *live.window->findChild<gui::LogView*>("frmMain.lstSessionLogSingle");
    auto& menu = *live.window->menuBar()->actions().first()->menu();
    std::uint64_t words = 0;
    int paints = 0;
    // Each step waits for its condition, which is checked in every turn of the event loop.
    const std::vector<std::pair<std::function<bool()>, std::function<void()>>> steps{
        {[&] { return count.words() > 100; }, [&] { menu.popup(QPoint(0, 0)); }},
        {[&] { return menu.isVisible(); }, [&] { words = count.words(); }},
        {[&] { return count.words() > words + 100; },
         [&] {
             EXPECT_TRUE(menu.isVisible());
             menu.hide();
             paints = log.paints();
             words = count.words();
             live.window->resize(900, 700);
         }},
        {[&] { return log.paints() > paints && count.words() > words; },
         [&] { QTest::mouseClick(&live.button("frmMain.cmdStopContinuous"), Qt::LeftButton); }}};
    std::size_t step = 0;
    int turns = 0;
    QTimer turn;
    QObject::connect(&turn, &QTimer::timeout, [&] {
        if (++turns > 100'000)
            live.program.mainForm().run.cmdStopContinuous_Click();
        else if (step < steps.size() && steps[step].first())
            steps[step++].second();
    });
    turn.start(0);
    QTest::mouseClick(&live.button("frmMain.cmdSendContinuous"), Qt::LeftButton);
    EXPECT_EQ(step, steps.size());
    EXPECT_EQ(count.words() * bits, samples.count);
    live.program.stopRecording();
    live.window->binder().flush();
    EXPECT_TRUE(live.button("frmMain.cmdSendOnce").isEnabled());
}

} // namespace
} // namespace bitlux::test
