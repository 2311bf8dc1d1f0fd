#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(BytePanelsView, LeadIntoStopModeByTheKeyboardAlone) {
    PanelWindow bench("zt72537", "ZT72537");
    auto& mode = bench.widget<QWidget>("ZT72537.OptMcr(1)");
    mode.setFocus();
    QTest::keyClick(&mode, Qt::Key_Space);
    EXPECT_FALSE(bench.widget<QPushButton>("ZT72537.CmdMcr").isVisible());
    auto& interval = bench.widget<QComboBox>("ZT72537.CyclicSenseCombo");
    interval.setFocus();
    QTest::keyClick(&interval, Qt::Key_Down);
    auto& enter = bench.widget<QPushButton>("ZT72537.CmdMcr2");
    enter.setFocus();
    QTest::keyClick(&enter, Qt::Key_Space);
    EXPECT_TRUE(bench.widget<QPushButton>("ZT72537.CmdMcr").isVisible());
    EXPECT_EQ(bench.dongle.lastOut()[3], 0x09) << "Stop mode with the shutdown enabled";
}

TEST(BytePanelsView, SayThatNothingIsSentLeastSignificantBitFirst) {
    PanelWindow bench("zt72361", "ZT72361");
    const auto isTold = [&bench] {
        bench.get<forms::OptionButton>("ZT72361.OptIor(1)").setValue(true); // something to paint
        bench.get<forms::OptionButton>("ZT72361.OptIor(0)").setValue(true);
        bench.settle();
        for (const QLabel* label : inSight<QLabel>(*bench.panel))
            if (label->text().contains("least significant bit first"))
                return true;
        return false;
    };
    EXPECT_FALSE(isTold());
    bench.session().MSBFirst = ConstOff;
    EXPECT_TRUE(isTold());
}

} // namespace
} // namespace bitlux::test
