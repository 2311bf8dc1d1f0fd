#include "gui/bench/bench_view.h"
#include "gui/widgets/window_place.h"
#include "window_bench.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QComboBox>
#include <QDialog>
#include <QPointer>
#include <QProgressBar>
#include <QScrollBar>
#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The panel's window with a model of the chip behind the dongle.
struct PanelBench : PanelWindow {
    PanelBench() : PanelWindow("zt72518d", "ZT72518") {}

    void choose(const char* tabs, int tab) {
        widget<QTabBar>(tabs).setCurrentIndex(tab - 1);
        settle();
    }
    QColor color(const QString& label) {
        return widget<QLabel>(label).palette().color(QPalette::Window);
    }
};

const QColor lit(0xC0, 0xFF, 0xFF);

TEST(PanelView, OpensTheModelOfItsChipOnTheBench) {
    PanelBench hardware;
    EXPECT_EQ(hardware.window.findChild<QPushButton*>("panel.model"), nullptr);
    WindowBench bench;
    gui::addBench(bench.window, bench.bench, "loopback");
    bench.program.forms().show("ZT72518");
    bench.press("panel.model");
    EXPECT_EQ(bench.widget<QComboBox>("bench.device").currentText(), "zt72518d");
    auto& chip = bench.widget<QDockWidget>("chip");
    EXPECT_TRUE(chip.isVisible() && chip.isFloating());
    bench.widget<QComboBox>("bench.device").setCurrentText("zt72514");
    chip.close();
    EXPECT_FALSE(bench.widget<QCheckBox>("bench.chip").isChecked());
    bench.press("panel.model"); // a chip of the family stays
    EXPECT_TRUE(chip.isVisible());
    EXPECT_EQ(bench.widget<QComboBox>("bench.device").currentText(), "zt72514");
}

TEST(WindowPlace, IsBesideTheOtherIfItFitsOnTheScreen) {
    const QRect screen(0, 40, 1920, 1040);
    for (const auto& [window, other, place] : Rows<QSize, QRect, QPoint>{
             {{1000, 800}, {100, 100, 700, 600}, {800, 100}},  // right of it
             {{1000, 800}, {1100, 100, 700, 600}, {100, 100}}, // left of it
             {{1000, 300}, {600, 100, 700, 600}, {600, 700}},  // below
             {{1000, 300}, {600, 500, 700, 500}, {600, 200}},  // above
             {{1000, 800}, {100, 500, 700, 600}, {800, 280}},  // inside the screen
             {{1300, 900}, {700, 100, 700, 600}, {0, 100}},    // what covers the least
             {{3000, 2000}, {700, 100, 700, 600}, {0, 40}}})
        EXPECT_EQ(gui::placeBeside(window, other, screen), place) << window.width();
}

TEST(PanelView, LightsBitsOfARegisterByMouseAndKeyboard) {
    PanelBench bench;
    auto& first = bench.widget<QLabel>("ZT72518.Mux_W(7)");
    const QPoint beside(-20, 5);
    QTest::mouseClick(&first, Qt::RightButton);
    QTest::mousePress(&first, Qt::LeftButton);
    QTest::mouseRelease(&first, Qt::LeftButton, {}, beside);
    bench.settle();
    EXPECT_NE(bench.color("ZT72518.Mux_W(7)"), lit) << "no click of the left button";
    QTest::mouseClick(&first, Qt::LeftButton);
    bench.settle();
    EXPECT_EQ(bench.color("ZT72518.Mux_W(7)"), lit);
    EXPECT_TRUE(bench.widget<QRadioButton>("ZT72518.R_MUX(4)").isChecked());

    bench.widget<QLabel>("ZT72518.Mux_W(7)").setFocus();
    for (int i = 0; i < 4; ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    bench.settle();
    EXPECT_EQ(bench.color("ZT72518.Mux_W(3)"), lit);
    EXPECT_TRUE(bench.widget<QCheckBox>("ZT72518.Ch_Mux(0)").isChecked());

    const auto values =
        bench.widget<QLabel>("ZT72518.Mux_W(3)").parentWidget()->findChildren<QLabel*>();
    EXPECT_TRUE(std::any_of(values.begin(), values.end(),
                            [](const QLabel* label) { return label->text() == "0x88"; }));
    bench.press("ZT72518.Cm_MUX_W");
    EXPECT_EQ(bench.label("ZT72518.Label_Liste(0)"), "Sent : 40 - 88");
}

TEST(PanelView, RequiresASecondPressForWhatCannotBeUndone) {
    PanelBench bench;
    bench.program.forms().show("TestMode");
    auto& trim = bench.widget<gui::ConfirmButton>("TestMode.trim_send");
    const auto press = [&trim] { QTest::mouseClick(&trim, Qt::LeftButton); };
    const auto timer = [&trim](const char* name) { return trim.findChild<QTimer*>(name); };
    const auto text = [&trim] { return trim.text().toStdString(); };
    const UsbFrame last = bench.bench.dongle.lastOut();
    press();
    press(); // the other half of a double click
    EXPECT_EQ(text(), "Press again: sends the trimming");
    timer("doubleClick")->stop();
    bench.get<forms::OptionButton>("TestMode.trim_fuse(3)").click();
    press();
    EXPECT_EQ(text(), "Press again: BURNS THE FUSES, for good");
    emit timer("timeOut")->timeout({});
    EXPECT_EQ(text(), "Trimming");
    EXPECT_EQ(bench.bench.dongle.lastOut(), last) << "nothing has gone out yet";
    timer("doubleClick")->stop();
    press();
    timer("doubleClick")->stop();
    press();
    EXPECT_NE(bench.bench.dongle.lastOut(), last);
    EXPECT_EQ(text(), "Trimming");
}

/// To assistive tools a bit is a check box, and one that is only shown a read-only check box.
TEST(PanelView, ExposesItsBitsToAssistiveTools) {
    PanelBench bench;
    QAccessibleInterface* bit =
        QAccessible::queryAccessibleInterface(&bench.widget<QLabel>("ZT72518.Mux_W(7)"));
    EXPECT_EQ(bit->role(), QAccessible::CheckBox);
    EXPECT_TRUE(bit->text(QAccessible::Name).startsWith("bit 7 "));
    EXPECT_EQ(bit->state().readOnly, 0U);
    EXPECT_EQ(bit->state().checked, 0U);

    bit->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    bench.settle();
    EXPECT_EQ(bit->state().checked, 1U);

    QAccessibleInterface* read =
        QAccessible::queryAccessibleInterface(&bench.widget<QLabel>("ZT72518.Mux_Rl(7)"));
    EXPECT_EQ(read->role(), QAccessible::CheckBox);
    EXPECT_EQ(read->state().readOnly, 1U);
    EXPECT_FALSE(read->actionInterface()->actionNames().contains(
        QAccessibleActionInterface::toggleAction()));
}

TEST(PanelView, MakesAPageWhenItIsFirstShown) {
    PanelBench bench;
    EXPECT_EQ(bench.window.findChild<QWidget*>("ZT72518.Can_W(0)"), nullptr);
    bench.choose("ZT72518.tab_518(1)", 14);
    EXPECT_TRUE(bench.widget<QLabel>("ZT72518.Can_W(0)").isVisible());
    EXPECT_EQ(bench.window.findChild<QWidget*>("ZT72518.wd_config(0)"), nullptr);
    bench.choose("ZT72518.tab_518(0)", 5);
    EXPECT_TRUE(bench.widget<QComboBox>("ZT72518.wd_config(0)").isVisible());
}

TEST(PanelView, MovesALineOfTheSequenceByDragging) {
    PanelBench bench;
    for (const char* button : {"ZT72518.Seq_RFl(0)", "ZT72518.Seq_RFl(1)", "ZT72518.Seq_RFl(2)"})
        bench.click(button);
    bench.choose("ZT72518.tab_518(0)", 1);
    auto& list = bench.widget<gui::LogView>("ZT72518.List_Commands");
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, list.lineRect(1).center());
    const QPoint target = list.lineRect(3).center();
    QMouseEvent move(QEvent::MouseMove, target, list.viewport()->mapToGlobal(target), Qt::NoButton,
                     Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(list.viewport(), &move);
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, target);
    bench.settle();
    const std::vector<std::string> moved{"Commands", "Regulator Read Flag Low", "CAN Read Flag Low",
                                         "Mode RM Read Flag Low"};
    EXPECT_EQ(bench.lines("ZT72518.List_Commands"), moved);

    list.setFocus();
    QTest::keyClick(&list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ(bench.lines("ZT72518.List_Commands")[2], "Mode RM Read Flag Low");
}

TEST(PanelView, ShowsTheLineThatRunsInAllLists) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 1);
    PanelSequence& sequence = bench.program.panels().touch("zt72518").sequence;
    constexpr int wait = 71;
    for (int line = 1; line <= 100; ++line)
        sequence.lists.append(line == wait ? "Wait" : "MUX Read Low", line == wait ? "5000" : "");
    std::vector<gui::LogView*> lists;
    for (const char* list :
         {"List1", "List_Commands", "List_Value", "List_Val_read1", "List_Val_read0"})
        lists.push_back(&bench.widget<gui::LogView>(QString("ZT72518.") + list));
    auto& progress = bench.widget<QProgressBar>("sequenceProgress");
    const auto& button = bench.widget<QPushButton>("ZT72518.Cm_Run_Seq");
    const QColor plain = button.palette().color(QPalette::Button);
    EXPECT_FALSE(progress.isVisible());

    bench.loop.atTime(bench.clock.nanoseconds() + 1'500'000'000, [&] {
        bench.settle();
        for (const gui::LogView* list : lists) {
            EXPECT_EQ(list->marked(), wait);
            EXPECT_EQ(list->firstVisible(), lists.front()->firstVisible());
            EXPECT_TRUE(list->viewport()->rect().contains(list->lineRect(wait + 1).center()))
                << "the arrow of the next line";
        }
        EXPECT_TRUE(progress.isVisible());
        EXPECT_TRUE(progress.text().startsWith("Line 71 of 100, 3."))
            << progress.text().toStdString();
        EXPECT_NE(button.palette().color(QPalette::Disabled, QPalette::Button), plain);
        // The user may scroll any of them meanwhile.
        lists.back()->verticalScrollBar()->setValue(5);
        for (const gui::LogView* list : lists)
            EXPECT_EQ(list->verticalScrollBar()->value(), 5);
        sequence.player.Timer1.disable();
    });
    bench.press("ZT72518.Cm_Run_Seq");
    for (const gui::LogView* list : lists)
        EXPECT_EQ(list->marked(), -1);
    EXPECT_FALSE(progress.isVisible());
    EXPECT_EQ(button.palette().color(QPalette::Disabled, QPalette::Button), plain);
}

TEST(PanelView, ShowsTheModeThatWasRead) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 2);
    QTest::mouseClick(&bench.widget<QCheckBox>("ZT72518.pre_prog_box(10)"), Qt::LeftButton, {},
                      QPoint(5, 5));
    bench.get<forms::Timer>("ZT72518.timer_auto_pre").fire();
    bench.settle();
    EXPECT_EQ(bench.label("ZT72518.read_pre_prog(0)"), "Initialization Mode");
    EXPECT_TRUE(bench.widget<QLabel>("ZT72518.lin_pre(0)").isVisible());
    EXPECT_FALSE(bench.widget<QLabel>("ZT72518.lin_pre(4)").isVisible());
    EXPECT_EQ(bench.widget<QLabel>("ZT72518.lin_pre(0)").accessibleName(),
              "possible now: Init Mode to Normal mode");
    EXPECT_EQ(bench.widget<QLabel>("ZT72518.lin_pre(9)").accessibleName(),
              "possible now: Normal Request to Normal mode");
}

TEST(PanelView, UnloadsTheFormWhenItIsClosedAndOpensAgain) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 1);
    QTest::keyClick(bench.panel, Qt::Key_Escape);
    EXPECT_TRUE(bench.panel->isVisible());

    bench.desk.boxes.answer(MessageBox::Answer::No);
    bench.panel->close();
    EXPECT_EQ(bench.program.session().ZT72518PanelActive, 0);
    bench.window.binder().flush();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(bench.panel.isNull());

    bench.program.forms().show("ZT72518");
    EXPECT_TRUE(bench.widget<QLabel>("ZT72518.Mux_W(0)").isVisible());
}

TEST(PanelView, StaysOnTheScreenWhenItsSequenceCannotBeSaved) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 1);
    bench.desk.boxes.answer(MessageBox::Answer::Yes);
    bench.desk.fileDialogs.answer("/nowhere/a.txt");
    bench.panel->close();
    bench.settle();
    ASSERT_FALSE(bench.panel.isNull());
    EXPECT_TRUE(bench.panel->isVisible());
    EXPECT_EQ(bench.program.session().ZT72518PanelActive, 1);
}

TEST(PanelView, AsksNothingWhenTheProgramHasEnded) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 1);
    bench.program.session().ConfigDirty = ConstOff;
    bench.program.mainForm().itemExit.click();
    EXPECT_TRUE(bench.desk.boxes.shown().empty());
    EXPECT_FALSE(bench.panel->isVisible());
}

TEST(PanelView, MayBeClosedWhileASequenceRuns) {
    PanelBench bench;
    bench.choose("ZT72518.tab_518(0)", 1);
    bench.press("ZT72518.Cm_Wait");
    bench.press("ZT72518.Seq_All_RFl");
    bench.boxes.answer(MessageBox::Answer::No);
    bench.loop.atTime(bench.clock.nanoseconds() + 5'000'000, [&bench] {
        bench.panel->close();
        bench.settle();
    });
    QTest::mouseClick(&bench.widget<QPushButton>("ZT72518.Cm_Run_Seq"), Qt::LeftButton);
    bench.settle();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(bench.panel.isNull());
    EXPECT_EQ(bench.program.session().ZT72518PanelActive, 0);
}

} // namespace
} // namespace bitlux::test
