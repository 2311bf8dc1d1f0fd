#include "panels/common/panel_form.h"
#include "window_bench.h"
#include "window_checks.h"

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The windows of the panels whose words are bytes, with a model of one of the chips.
struct ByteWindow : WindowBench {
    explicit ByteWindow(std::string chip, const std::string& name)
        : WindowBench(chip), form(name), chipName(std::move(chip)) {
        bench.dongle.plug();
        program.mainForm().call("Start_USB");
        program.forms().show(form);
        for (QDialog* any : window.findChildren<QDialog*>())
            if (any->windowTitle().toStdString() == program.forms().form(form).caption())
                panel = any;
        panel->activateWindow();
        settle();
    }

    QString named(const QString& control) { return QString::fromStdString(form) + "." + control; }
    std::string walk(const QString& first, int steps) {
        widget<QWidget>(named(first)).setFocus();
        QStringList names{first};
        while (--steps > 0) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names << QApplication::focusWidget()->objectName().section('.', 1);
        }
        return names.join(' ').toStdString();
    }

    const std::string form;
    const std::string chipName;
    QDialog* panel = nullptr;
};

TEST(BytePanelsView, AreReadOnASmallScreenAndNameWhatTheyHaveApart) {
    for (const auto& [chip, form] :
         {std::pair("zt72537", "ZT72537"), std::pair("zt72361", "ZT72361")}) {
        ByteWindow bench(chip, form);
        forms::TabStrip& pages = bench.program.panels().touch(chip).registerTabs;
        bench.panel->resize(1024, 600);
        for (int page = 1; page <= pages.count(); ++page) {
            pages.click(page);
            bench.settle();
            EXPECT_EQ(bench.panel->size(), QSize(1024, 600));
            const std::string where =
                pages.tabs()[static_cast<std::size_t>(page - 1)].caption + " of " + form;
            expectReadable(where, *bench.panel);
            expectNamesApart(where, *bench.panel);
        }
        bench.get<forms::TabStrip>(form + std::string(".PanelTabs")).click(2);
        bench.settle();
        EXPECT_EQ(bench.panel->size(), QSize(1024, 600));
    }
}

TEST(BytePanelsView, LeadIntoStopModeByTheKeyboardAlone) {
    ByteWindow bench("zt72537", "ZT72537");
    EXPECT_EQ(bench.walk("SSTab2", 11),
              "SSTab2 CmdMcr Seq_MCR_W OptMcr(0) OptMcr(1) OptMcr(2) OptMcr(3) OptMcr(4) "
              "OptMcr(5) CmdReadAll CmdReadReg2(1)");
    auto& mode = bench.widget<QWidget>(bench.named("OptMcr(1)"));
    mode.setFocus();
    QTest::keyClick(&mode, Qt::Key_Space);
    bench.settle();
    EXPECT_FALSE(bench.widget<QPushButton>(bench.named("CmdMcr")).isVisible());
    EXPECT_EQ(bench.walk("CmdSelectWakeUp", 7),
              "CmdSelectWakeUp CmdSelectWDClear WakeUpModeOpt(0) WakeUpModeOpt(1) "
              "WakeUpModeOpt(2) CyclicSenseCombo WakeUpModeCheck(0)");
    EXPECT_EQ(bench.walk("WakeUpModeCheck(5)", 4),
              "WakeUpModeCheck(5) Command6 CmdMcr2 CmdReadAll");
    auto& interval = bench.widget<QComboBox>(bench.named("CyclicSenseCombo"));
    interval.setFocus();
    QTest::keyClick(&interval, Qt::Key_Down);
    auto& enter = bench.widget<QPushButton>(bench.named("CmdMcr2"));
    enter.setFocus();
    QTest::keyClick(&enter, Qt::Key_Space);
    bench.settle();
    EXPECT_TRUE(bench.widget<QPushButton>(bench.named("CmdMcr")).isVisible());
    EXPECT_EQ(bench.dongle.lastOut()[3], 0x09) << "Stop mode with the shutdown enabled";
}

TEST(BytePanelsView, SayThatNothingIsSentLeastSignificantBitFirst) {
    ByteWindow bench("zt72361", "ZT72361");
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
