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
    const std::string form;
    const std::string chipName;
    QDialog* panel = nullptr;
};

TEST(BytePanelsView, LeadIntoStopModeByTheKeyboardAlone) {
    ByteWindow bench("zt72537", "ZT72537");
    auto& mode = bench.widget<QWidget>(bench.named("OptMcr(1)"));
    mode.setFocus();
    QTest::keyClick(&mode, Qt::Key_Space);
    bench.settle();
    EXPECT_FALSE(bench.widget<QPushButton>(bench.named("CmdMcr")).isVisible());
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
