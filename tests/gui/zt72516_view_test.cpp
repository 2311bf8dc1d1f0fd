#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <QAbstractButton>
#include <QDialog>
#include <QGroupBox>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(Zt72516View, TurnsItsPagesByTheArrows) {
    PanelWindow bench("zt72516", "ZT72516");
    auto& tabs = bench.widget<QTabBar>("ZT72516.RegisterTabs");
    tabs.setFocus();
    for (int page = 1; page < 20; ++page)
        QTest::keyClick(&tabs, Qt::Key_Down);
    EXPECT_TRUE(bench.widget<QLabel>("ZT72516.SGT_Reg(15)").isVisible());
    bench.get<forms::TabStrip>("ZT72516.RegisterTabs").click(9);
    EXPECT_EQ(bench.widget<QRadioButton>("ZT72516.MODE_Option_VDD_ON(5)").accessibleName(),
              "FWU OFF, Periodic Sense ON, Peroidic INT OFF, Watchdog ON");
    for (const char* word : {"ZT72516.SPIWordSent", "ZT72516.SPIWordRcvd", "ZT72516.SPI_Word(0)"})
        EXPECT_TRUE(bench.widget<QLabel>(word).isVisible());
}

TEST(Zt72516View, HidesAFormBesideThePanelWhenItsWindowIsClosed) {
    PanelWindow bench("zt72516", "ZT72516");
    bench.press("ZT72516.Btn_Read_Flags");
    QDialog& flags = *bench.dialog("ZT72516ReadFlags");
    bench.press("ZT72516ReadFlags.Btn_Read_All_Flags");
    EXPECT_EQ(bench.widget<QLabel>("ZT72516.SPIWordSent").text(), "SPI Word Sent:8D00-0000");
    flags.close();
    bench.settle();
    EXPECT_FALSE(bench.program.forms().isVisible("ZT72516ReadFlags"));
    EXPECT_TRUE(bench.panel->isVisible());

    bench.press("ZT72516.Btn_Read_Flags");
    bench.panel->close();
    bench.settle();
    EXPECT_FALSE(flags.isVisible());
}

} // namespace
} // namespace bitlux::test
