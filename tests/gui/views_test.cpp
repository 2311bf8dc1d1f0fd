#include "window_bench.h"

#include "gui/bench/bench_view.h"
#include "gui/desktop/theme.h"
#include "platform/failure.h"

#include <QDialog>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

TEST(ConfigureView, SetsAndAppliesTheDialog) {
    WindowBench bench;
    bench.choose("frmMain.itemPortOptions");
    auto& dialog = *bench.window.findChild<QDialog*>();
    EXPECT_TRUE(dialog.isVisible());
    bench.press("frmConfigureSPI.Btn_ParallelPort");
    EXPECT_EQ(bench.widget<QComboBox>("frmConfigureSPI.cmbPortsAvailable").currentText(),
              "LPT1: 0x378");

    auto& bits = bench.widget<QComboBox>("frmConfigureSPI.cmbSPIWordLength");
    bits.lineEdit()->selectAll();
    QTest::keyClicks(bits.lineEdit(), "21");
    bench.widget<QRadioButton>("frmConfigureSPI.optHex").click();
    auto& pages = bench.widget<QTabBar>("frmConfigureSPI.TabStripConfig");
    pages.setCurrentIndex(3);
    bench.widget<QCheckBox>("frmConfigureSPI.chkEnableLog").click();
    pages.setCurrentIndex(1);
    bench.widget<QComboBox>("frmConfigureSPI.cmbCS").setCurrentIndex(7);
    emit bench.widget<QComboBox>("frmConfigureSPI.cmbCS").activated(7);
    bench.widget<QRadioButton>("frmConfigureSPI.optLSBfirst").click();
    bench.widget<QTabBar>("frmConfigureSPI.TabStripSPItype").setCurrentIndex(2);
    EXPECT_TRUE(bench.widget<QWidget>("frmConfigureSPI.frameSPIpicture(3)").isVisible());
    EXPECT_FALSE(bench.widget<QWidget>("frmConfigureSPI.frameSPIpicture(1)").isVisible());
    EXPECT_FALSE(bench.widget<QRadioButton>("frmConfigureSPI.optBinary").isChecked());
    EXPECT_FALSE(bench.widget<QGroupBox>("frmConfigureSPI.frameDataLogging").isEnabled());
    bench.press("frmConfigureSPI.cmdOK");
    EXPECT_FALSE(dialog.isVisible());
    EXPECT_EQ(bench.session().SPIWordLength, 21);
    EXPECT_EQ(bench.session().CSPin, 7);
    EXPECT_EQ(bench.session().DisplayHex, 1);
    EXPECT_EQ(bench.session().MSBFirst, ConstOff);
    EXPECT_EQ(bench.session().SPIType, 3);
    EXPECT_EQ(bench.session().SessionLogEnabled, ConstOff);
}

TEST(ConfigureView, IsUsableByKeyboardAlone) {
    WindowBench bench;
    bench.choose("frmMain.itemPortOptions");
    auto& dialog = *bench.window.findChild<QDialog*>();
    auto& tabs = bench.widget<QTabBar>("frmConfigureSPI.TabStripConfig");
    const auto focused = [&dialog] {
        return dialog.focusWidget()->objectName().section('.', 1).toStdString();
    };
    EXPECT_EQ(focused(), "txtPartName");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
    bench.settle();
    bench.settle();
    EXPECT_EQ(focused(), "optMSBfirst");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_PageUp, Qt::ControlModifier);
    bench.settle();
    tabs.setFocus();
    QTest::keyClick(&tabs, Qt::Key_Backtab);
    EXPECT_EQ(focused(), "cmdApply") << "the tabs come first, the buttons last";
    tabs.setFocus();
    QTest::keyClick(&tabs, Qt::Key_Right);
    EXPECT_EQ(bench.session().ConfigTab, 2);
    bench.program.dialog().txtPartName.setText("Other");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(bench.program.dialog().visible());
    EXPECT_EQ(bench.program.dialog().txtPartName.text(), "Generic");
}

TEST(ConfigureView, SaysBesideTheFieldsWhatIsWrong) {
    WindowBench bench;
    bench.choose("frmMain.itemPortOptions");
    bench.press("frmConfigureSPI.Btn_ParallelPort");
    auto& length = bench.widget<QComboBox>("frmConfigureSPI.cmbSPIWordLength");
    auto& note = bench.widget<QLabel>("wordLengthNote");
    const auto isRed = [](const QWidget& label) {
        return label.palette().color(QPalette::WindowText) == gui::warningColor();
    };
    length.lineEdit()->selectAll();
    QTest::keyClicks(length.lineEdit(), "161");
    bench.settle();
    EXPECT_EQ(note.text(), "The port takes 1 to 160");
    EXPECT_EQ(length.accessibleDescription(), note.text());
    EXPECT_TRUE(isRed(note));
    QTest::keyClick(length.lineEdit(), Qt::Key_Backspace);
    bench.settle();
    EXPECT_EQ(note.text(), "");
    EXPECT_FALSE(isRed(note));

    bench.widget<QTabBar>("frmConfigureSPI.TabStripConfig").setCurrentIndex(1);
    auto& pin = bench.widget<QComboBox>("frmConfigureSPI.cmbDI");
    auto& clashes = bench.widget<QLabel>("pinClashes");
    const auto choosePin = [&](int index) {
        pin.setCurrentIndex(index);
        emit pin.activated(index);
        bench.settle();
    };
    choosePin(2);
    EXPECT_EQ(clashes.text(), "Pin 4 is used twice: DI, CLK");
    EXPECT_TRUE(clashes.isVisible());
    const auto& clock = bench.widget<QComboBox>("frmConfigureSPI.cmbCLK");
    const auto& select = bench.widget<QComboBox>("frmConfigureSPI.cmbCS");
    EXPECT_EQ(clock.accessibleDescription(), clashes.text());
    EXPECT_EQ(select.accessibleDescription(), "");
    const auto edge = [](QWidget& field) { return field.grab().toImage().pixelColor(1, 1); };
    EXPECT_EQ(edge(pin), gui::warningColor());
    choosePin(1);
    EXPECT_FALSE(clashes.isVisible());
    EXPECT_EQ(clock.accessibleDescription(), "");
    EXPECT_NE(edge(pin), gui::warningColor());
}

TEST(BenchView, ChangesTheDeviceAndShowsThePins) {
    WindowBench bench;
    auto* view = new gui::BenchView(bench.bench, bench.program, "loopback", bench.window.binder(),
                                    &bench.window);
    bench.window.addDockWidget(Qt::BottomDockWidgetArea, view);
    bench.configure("8");
    EXPECT_EQ(bench.widget<QLabel>("bench.data0").text(), "1"); // chip select idles high
    EXPECT_EQ(bench.widget<QLabel>("bench.data2").text(), "0");
    const auto answerTo = [&bench](const std::string& word) {
        bench.send(word);
        return bench.label("frmMain.lblHexWordReceived");
    };
    auto& device = bench.widget<QComboBox>("bench.device");
    // The focus stays with it while words go, and leaves it when the form focuses another control.
    bench.type("frmMain.txtHexWordToSend", "34");
    device.setFocus();
    bench.send("35");
    bench.settle();
    EXPECT_EQ(bench.window.focusWidget(), &device);
    bench.program.mainForm().run.cmdSendOnce.setFocus();
    const auto& sendOnce = bench.widget<QPushButton>("frmMain.cmdSendOnce"); // up to date now
    EXPECT_EQ(bench.window.focusWidget(), &sendOnce);
    device.setCurrentText("stuck-high");
    EXPECT_EQ(answerTo("12"), "FF");
    device.setCurrentText("scripted");
    auto& replies = bench.widget<QLineEdit>("bench.replies");
    EXPECT_TRUE(replies.isVisibleTo(view));
    replies.setText("3c, d2");
    emit replies.editingFinished();
    EXPECT_EQ(answerTo("12"), "3C");
    EXPECT_EQ(answerTo("12"), "D2");
    // A reply that is no number is refused, and the device stays.
    replies.setText("xyz");
    emit replies.editingFinished();
    EXPECT_EQ(answerTo("12"), "D2");
}

TEST(BenchView, TurnsTheSwitchesOfAChip) {
    WindowBench bench;
    bench.configure("16");
    bench.window.addDockWidget(Qt::BottomDockWidgetArea,
                               new gui::BenchView(bench.bench, bench.program, "loopback",
                                                  bench.window.binder(), &bench.window));
    EXPECT_EQ(bench.window.findChild<QTreeWidget*>("chip.tree"), nullptr);
    auto& device = bench.widget<QComboBox>("bench.device");
    device.setCurrentText("zt72518d");
    auto& tree = bench.widget<QTreeWidget>("chip.tree");
    const auto item = [&tree](const char* name) {
        return tree.findItems(name, Qt::MatchExactly | Qt::MatchRecursive).at(0);
    };
    item("VDD OV")->setCheckState(0, Qt::Checked);
    bench.send("E500");
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "8204");
    bench.send("5A00");
    bench.settle();
    EXPECT_EQ(item("VDD OV")->checkState(0), Qt::Unchecked);
    EXPECT_EQ(item("Mode")->text(1), "Normal");
    bench.type("chip.search", " vdd ov ");
    EXPECT_TRUE(item("VDD low INT")->isHidden());
    EXPECT_TRUE(item("Safe INT")->isExpanded());
    QTest::keyClick(&bench.widget<QLineEdit>("chip.search"), Qt::Key_Down);
    EXPECT_EQ(tree.currentItem(), item("VDD OV"));
    QTest::keyClick(&tree, Qt::Key_Space);
    EXPECT_EQ(item("VDD OV")->checkState(0), Qt::Checked);
    device.setCurrentText("zt72514");
    EXPECT_EQ(item("Mode")->text(1), "Init");
    device.setCurrentText("loopback");
    EXPECT_FALSE(bench.widget<QDockWidget>("chip").isVisible());
}

TEST(Binder, DrivesTimersWhileTheyAreEnabled) {
    ScriptedBoxes boxes;
    forms::FormSet set(boxes);
    forms::Form form(set, "frmClock", "Clock");
    forms::Timer timer(form, "Timer1", 5);
    gui::Binder binder(set);
    QTimer beat;
    binder.bind(timer, beat);
    int fired = 0;
    form.procedure("Timer1_Timer", [&fired] {
        ++fired;
        throw Failure(Failure::Kind::OutOfRange, "Subscript out of range");
    });
    EXPECT_FALSE(beat.isActive());
    timer.enable();
    binder.flush();
    EXPECT_TRUE(beat.isActive());
    EXPECT_EQ(beat.interval(), 5);
    for (int i = 0; i < 3; ++i)
        emit beat.timeout({});
    EXPECT_EQ(fired, 3);
    EXPECT_EQ(boxes.takeTexts().front(), "Subscript out of range");
    timer.disable();
    binder.flush();
    EXPECT_FALSE(beat.isActive());
    timer.setInterval(0);
    timer.enable();
    binder.flush();
    EXPECT_FALSE(beat.isActive());
}

} // namespace
} // namespace bitlux::test
