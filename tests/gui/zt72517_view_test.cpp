#include "window_bench.h"

#include <algorithm>

#include <QScrollArea>
#include <QScrollBar>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The page of the ZT72517 in front, at first without a dongle.
struct PspiWindow : WindowBench {
    PspiWindow() : WindowBench("zt72517") {
        program.dialog().CheckEnable72517.setValue(1);
        program.dialog().cmdApply_Click();
        turnTo(3);
    }

    void turnTo(int tab) {
        get<forms::TabStrip>("frmMain.TabStripMain").click(tab);
        settle();
    }
    bool saysNoDongle() {
        return std::ranges::any_of(window.findChildren<QLabel*>(), [](const QLabel* label) {
            return label->text().startsWith("No dongle") && label->isVisible();
        });
    }
};

TEST(Zt72517View, ShowsWhatTheChipHas) {
    PspiWindow bench;
    EXPECT_TRUE(bench.saysNoDongle());
    auto& slope = bench.widget<QRadioButton>("frmMain.sr_opt(2)");
    QTest::mouseClick(&slope, Qt::LeftButton, {}, {8, slope.height() / 2});
    bench.settle();
    EXPECT_FALSE(slope.isChecked()) << "nothing was sent";
    bench.dongle.plug();
    bench.turnTo(1);
    bench.turnTo(3);
    EXPECT_FALSE(bench.saysNoDongle());
    QTest::mouseClick(&slope, Qt::LeftButton, {}, {8, slope.height() / 2});
    bench.settle();
    EXPECT_TRUE(slope.isChecked());
    bench.dongle.chip()->turn(switchNamed(*bench.dongle.chip(), "CANF2"), true);
    bench.press("frmMain.flag_line3_ref");
    const auto colour = [&](const QString& label) {
        return bench.widget<QLabel>("frmMain." + label).palette().color(QPalette::Window);
    };
    EXPECT_EQ(colour("flag_line3(2)"), QApplication::palette().color(QPalette::Highlight));
    EXPECT_EQ(colour("flag_line3(1)"), QApplication::palette().color(QPalette::Base));
    EXPECT_EQ(colour("can_fail_text"), QColor(255, 0, 0));
    bench.press("frmMain.mode(2)");
    EXPECT_FALSE(bench.widget<QPushButton>("frmMain.mode(2)").isEnabled());

    bench.window.resize(640, 480);
    bench.settle();
    EXPECT_EQ(bench.window.findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0);
}

} // namespace
} // namespace bitlux::test
