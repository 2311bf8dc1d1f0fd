#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <QAbstractButton>
#include <QDialog>
#include <QGroupBox>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The panel of the ZT72516 in its window, and the forms beside it, with a model of the chip.
struct WideBench : WindowBench {
    WideBench() : WindowBench("zt72516") {
        bench.dongle.plug();
        program.mainForm().call("Start_USB");
        program.forms().show("ZT72516");
        panel = dialog("ZT72516");
        panel->activateWindow();
        settle();
    }

    QDialog* dialog(const char* form) {
        for (QDialog* any : window.findChildren<QDialog*>())
            if (any->windowTitle().toStdString() == program.forms().form(form).caption())
                return any;
        return nullptr;
    }
    /// Everything that can be looked at: what to say of it, and the window in which it is.
    void forEachPage(const std::function<void(const std::string&, QDialog&)>& look) {
        for (int page = 1; page <= registers.count(); ++page) {
            registers.click(page);
            settle();
            look(registers.tabs()[static_cast<std::size_t>(page - 1)].caption, *panel);
        }
        get<forms::TabStrip>("ZT72516.tab_516").click(2);
        settle();
        look("sequence", *panel);
        for (const char* form : {"ZT72516ReadFlags", "ZT72516TestMode"}) {
            program.forms().show(form);
            settle();
            look(form, *dialog(form));
        }
    }
    std::string walk(const QString& first, int steps) {
        widget<QWidget>("ZT72516." + first).setFocus();
        QStringList names{first};
        while (--steps > 0) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names << QApplication::focusWidget()->objectName().section('.', 1);
        }
        return names.join(' ').toStdString();
    }

    QDialog* panel = nullptr;
    forms::TabStrip& registers = get<forms::TabStrip>("ZT72516.RegisterTabs");
};

TEST(Zt72516View, IsReadByTheTabulatorKeyAndItsPagesByTheArrows) {
    WideBench bench;
    EXPECT_EQ(bench.walk("tab_516", 8),
              "tab_516 Btn_Read_Flags RegisterTabs WriteRAM_A RAM_A(23) HexRAM_A SetBitsRAM_A "
              "ReadRAM_A");
    auto& tabs = bench.widget<QTabBar>("ZT72516.RegisterTabs");
    tabs.setFocus();
    for (int page = 1; page < 20; ++page)
        QTest::keyClick(&tabs, Qt::Key_Down);
    bench.settle();
    EXPECT_TRUE(bench.widget<QLabel>("ZT72516.SGT_Reg(15)").isVisible());
    bench.registers.click(3);
    bench.settle();
    EXPECT_EQ(bench.walk("Btn_Write_Init_reg", 6),
              "Btn_Write_Init_reg Btn_Seq_Write_Init_reg Btn_Read_Init_reg Btn_Seq_Read_Init_reg "
              "Init_Reg(23) VAUX3_5_Option(0)");
}

TEST(Zt72516View, NamesWhatItHasApart) {
    WideBench bench;
    bench.forEachPage(
        [](const std::string& where, const QDialog& window) { expectNamesApart(where, window); });
    EXPECT_EQ(bench.widget<QRadioButton>("ZT72516.MODE_Option_VDD_ON(5)").accessibleName(),
              "FWU OFF, Periodic Sense ON, Peroidic INT OFF, Watchdog ON");
}

/// On a screen of 1024 x 600, with the words in sight.
TEST(Zt72516View, IsReadOnASmallScreen) {
    WideBench bench;
    bench.forEachPage([&bench](const std::string& where, QDialog& window) {
        window.resize(1024, 600);
        bench.settle();
        EXPECT_EQ(window.size(), QSize(1024, 600)) << where;
        expectReadable(where, window);
    });
    for (const char* word : {"ZT72516.SPIWordSent", "ZT72516.SPIWordRcvd", "ZT72516.SPI_Word(0)"})
        EXPECT_TRUE(bench.widget<QLabel>(word).isVisible());
}

TEST(Zt72516View, HidesAFormBesideThePanelWhenItsWindowIsClosed) {
    WideBench bench;
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
