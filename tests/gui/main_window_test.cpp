#include "gui/bench/bench_view.h"
#include "live_window.h"
#include "window_bench.h"

#include "gui/widgets/elided_label.h"

#include <QAccessible>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QMessageBox>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Texts = std::vector<std::string>;

TEST(WordEntry, TakesWordAfterWordAsPeopleWriteThem) {
    WindowBench bench;
    bench.configure("16");
    auto& entry = bench.widget<QLineEdit>("frmMain.txtHexWordToSend");
    entry.setFocus();
    const auto send = [&](const char* typed) {
        QTest::keyClicks(&entry, typed);
        QTest::keyClick(&entry, Qt::Key_Return);
        EXPECT_EQ(entry.selectedText(), entry.text());
        return entry.text().toStdString();
    };
    EXPECT_EQ(send("0xA_5"), "00A5");
    EXPECT_EQ(send("1234"), "1234");
    EXPECT_EQ(send("1234"), "1234");
    EXPECT_EQ(send("no"), "no"); // which the form refuses
    EXPECT_EQ(bench.boxes.takeTexts(), std::vector<std::string>{"Not a valid hex number!"});
    QApplication::clipboard()->setText(" 0xDE 0Xad\n");
    entry.paste();
    EXPECT_EQ(entry.text(), "DEad");
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "DEad");
    QTest::keyClick(&entry, Qt::Key_Return);

    QTest::keyClick(&entry, Qt::Key_Down);
    EXPECT_EQ(entry.text(), "DEad");
    QTest::keyClicks(&entry, "77");
    using enum Qt::Key;
    for (const auto& [key, text] :
         {row(Key_Up, "DEad"), row(Key_Up, "1234"), row(Key_Up, "00A5"), row(Key_Up, "00A5"),
          row(Key_Down, "1234"), row(Key_Down, "DEad"), row(Key_Down, "77"), row(Key_Down, "77")}) {
        QTest::keyClick(&entry, key);
        EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), text);
    }

    // What a script writes is shown as it is.
    bench.get<forms::TextBox>("frmMain.txtHexWordToSend").setText("0x1 2");
    bench.settle();
    EXPECT_EQ(entry.text(), "0x1 2");

    bench.choose("frmMain.itemPortOptions");
    bench.widget<QPushButton>("frmMain.cmdSendOnce").setFocus();
    bench.press("frmConfigureSPI.cmdOK");
    EXPECT_EQ(bench.window.focusWidget(), &entry);
    EXPECT_EQ(entry.selectedText(), "0x1 2");
}

TEST(MainWindow, MarksTheBitsOfAnAnswerThatChanged) {
    WindowBench bench("echo");
    bench.configure("9", {"optBinary"});
    bench.press("frmMain.cmdSI_single(8)");
    // Enter sends from here.
    QTest::keyClick(bench.window.focusWidget(), Qt::Key_Return);
    const auto marks = [&bench](const char* bit) {
        return bench.widget<gui::DigitsLabel>(bit).marks().toStdString();
    };
    for (const char* mark : {"*", " "}) { // the same answer again is no change
        bench.press("frmMain.cmdSendOnce");
        EXPECT_EQ(marks("frmMain.lblSO_single(8)"), mark);
        EXPECT_EQ(marks("frmMain.lblSO_single(7)"), " ");
        EXPECT_EQ(bench.widget<QLabel>("frmMain.lblSO_single(8)").text(), "1");
    }
}

TEST(MainWindow, LeavesTheFocusToTheTabsWhenAPageGoes) {
    WindowBench bench;
    bench.configure("8");
    bench.widget<QWidget>("frmMain.txtHexWordToSend").setFocus();
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.settle();
    EXPECT_EQ(bench.window.focusWidget()->objectName().toStdString(), "frmMain.TabStripMain");
}

TEST(MainWindow, RefreshesAtMostOnceAFrame) {
    WindowBench bench;
    bench.configure("8");
    int flushes = 0;
    const Subscription counting = bench.window.binder().flushed.follow([&flushes] { ++flushes; });
    for (int i = 0; i < 1000; ++i)
        bench.program.mainForm().labelMainTitle.setCaption(std::to_string(i));
    const auto& title = bench.widgetAsItIs<QLabel>("frmMain.labelMainTitle");
    EXPECT_EQ(title.text(), "Generic Bitlux Forge");
    EXPECT_TRUE(QTest::qWaitFor([&] { return flushes > 0; }, 30000));
    EXPECT_EQ(flushes, 1);
    EXPECT_EQ(title.text(), "999");
}

TEST(MainWindow, SuggestsRemediesInTheStatusLine) {
    WindowBench bench;
    bench.configure("24");
    const auto& text = bench.widget<QLabel>("notice.text");
    const auto& button = bench.widget<QPushButton>("notice.button");
    EXPECT_FALSE(text.isVisible());
    bench.type("frmMain.txtHexWordToSend", "A5C3F0");
    bench.get<forms::ComboBox>("frmMain.cmbMasterQCList").edit("Wake");
    bench.press("frmMain.cmdSaveQC");
    bench.click("frmConfigureSPI.cmdApply");
    bench.settle();
    EXPECT_EQ(text.text(), "Apply emptied the word of 1 Quick Command");
    EXPECT_EQ(button.text(), "Restore");
    bench.program.mainForm().call("SetSpiWordLength", 16); // what is in the way goes first
    bench.window.binder().flushSoon();
    bench.settle();
    EXPECT_EQ(button.text(), "Back to 24 bits, type 1");
    bench.press("notice.button");
    EXPECT_EQ(bench.session().SPIWordLength, 24);
    EXPECT_EQ(button.text(), "Restore");
    // Long names and a small window keep the button in sight.
    bench.window.resize(640, 480);
    bench.get<forms::TabStrip>("frmMain.TabStripMain").click(2);
    bench.program.mainForm().commands.setToSend({std::string(200, 'W')});
    bench.click("frmMain.cmdSendOnce");
    bench.program.mainForm().commands.setToSend({"Wake"});
    bench.click("frmMain.cmdSendOnce");
    bench.settle();
    EXPECT_EQ(bench.window.width(), 640);
    EXPECT_LT(button.mapTo(&bench.window, QPoint(button.width(), 0)).x(), 640);
    bench.press("notice.button");
    EXPECT_FALSE(text.isVisible());
    EXPECT_FALSE(button.isVisible());
}

TEST(MainWindow, ShowsThatTheDongleIsGoneUntilItIsFound) {
    WindowBench bench("echo");
    bench.dongle.plug();
    bench.program.mainForm().call("Start_USB");
    bench.window.activateWindow();
    auto& bus = bench.widget<gui::ElidedLabel>("bus");
    auto& notice = bench.widget<gui::ElidedLabel>("notice.text");
    EXPECT_EQ(bus.text().section("    ", 0, 0), "USB dongle");
    EXPECT_FALSE(notice.isVisible());
    bench.dongle.unplug();
    bench.program.dongle().checkPresence();
    bench.settle();
    EXPECT_EQ(bus.text().section("    ", 0, 0), "USB dongle, gone");
    EXPECT_EQ(notice.text(), "Dongle gone: plug it in, the next send looks for it");
    bench.dongle.plug();
    bench.press("frmMain.cmdSendOnce");
    EXPECT_EQ(bus.text().section("    ", 0, 0), "USB dongle");
    EXPECT_FALSE(notice.isVisible());
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
}

TEST(MainWindow, SendsThroughTheAdapterOfTheBenchAlsoAfterItWasUnplugged) {
    WindowBench bench;
    gui::addBench(bench.window, bench.bench, "loopback");
    auto& plug = bench.widget<QCheckBox>("bench.adapter");
    const auto bus = [&bench] {
        return bench.widget<QLabel>("bus").text().section("    ", 0, 0).toStdString();
    };
    const auto line = [&bench](int number) {
        const auto& level = bench.widget<QLabel>(QString("bench.line%1").arg(number));
        return (level.toolTip() + ", " + level.text()).toStdString();
    };
    EXPECT_EQ(bus(),
              "No bus: plug in a dongle. Adapter or port: Edit Configuration, Setup Parallel Port");
    plug.click();
    bench.choose("frmMain.itemPortOptions");
    bench.press("frmConfigureSPI.Btn_ParallelPort");
    auto& list = bench.widget<QComboBox>("frmConfigureSPI.cmbPortsAvailable");
    list.setCurrentText("FT232R BENCH");
    emit list.activated(list.currentIndex());
    bench.widget<QRadioButton>("frmConfigureSPI.optHex").click();
    bench.press("frmConfigureSPI.cmdOK");
    EXPECT_EQ(bus(), "Adapter FT232R BENCH, 1 MHz");
    EXPECT_EQ(line(0), "D0 CLK: driven by the adapter, 0");
    EXPECT_EQ(line(1), "D1 DI: driven by the adapter, 0");
    EXPECT_EQ(line(2), "D2 DO: input, 0");
    EXPECT_EQ(line(3), "D3 CS: driven by the adapter, 1");
    EXPECT_EQ(line(4), "D4: input, 1");

    const auto& answer = bench.widget<QLabel>("frmMain.lblHexWordReceived");
    bench.type("frmMain.txtHexWordToSend", "A5");
    bench.press("frmMain.cmdSendOnce");
    EXPECT_EQ(answer.text(), "A5");
    EXPECT_EQ(bench.widget<QLabel>("bench.bytes").text(),
              "00 02 03 00 01 02 03 00 01 00 01 02 03 00 01 02 03 00 08");
    plug.click();
    EXPECT_EQ(line(3), "D3 CS: input, 1");
    bench.type("frmMain.txtHexWordToSend", "3C");
    bench.press("frmMain.cmdSendOnce");
    EXPECT_EQ(
        bench.boxes.takeTexts(),
        Texts{"The adapter FT232R BENCH was lost while in use: it was removed. Check that it is "
              "plugged in, then try again."});
    EXPECT_EQ(bus(), "Adapter FT232R BENCH, gone");
    plug.click();
    bench.press("frmMain.cmdSendOnce");
    EXPECT_EQ(answer.text(), "3C");
    EXPECT_EQ(bus(), "Adapter FT232R BENCH, 1 MHz");
    EXPECT_TRUE(bench.boxes.takeTexts().empty());
}

TEST(MainWindow, IgnoresAClickThatCameTooLate) {
    WindowBench bench;
    bench.configure("8");
    bench.program.mainForm().run.cmdSendOnce.disable();
    QTest::mouseClick(&bench.widgetAsItIs<QPushButton>("frmMain.cmdSendOnce"), Qt::LeftButton);
    EXPECT_EQ(bench.log(), Texts{});
    EXPECT_FALSE(bench.widget<QPushButton>("frmMain.cmdSendOnce").isEnabled());
}

TEST(MainWindow, TakesAnythingInAField) {
    WindowBench bench;
    bench.configure("16");
    bench.choose("frmMain.itemPortOptions");
    QString all;
    for (char16_t c = 1; c < 0x500; ++c)
        all += QChar(c);
    for (QLineEdit* edit : bench.window.findChildren<QLineEdit*>()) {
        for (const QString& text : {QString(10000, 'F'), all, QString("\t\n\r"), QString()}) {
            edit->clear();
            edit->insert(text); // as pasting and dropping do
            bench.settle();
            bench.click("frmMain.cmdSendOnce");
            bench.settle();
        }
        edit->clear();
    }
    EXPECT_FALSE(bench.boxes.takeTexts().empty());
    bench.type("frmMain.txtHexWordToSend", "1234");
    bench.press("frmMain.cmdSendOnce");
    EXPECT_EQ(bench.widget<QLabel>("frmMain.lblHexWordReceived").text(), "1234");
}

TEST(MainWindow, ScrollsOnASmallScreen) {
    WindowBench bench;
    bench.configure("40", {"optBinary"});
    bench.window.resize(640, 480);
    bench.settle();
    auto* area = bench.window.findChild<QScrollArea*>();
    EXPECT_GT(area->horizontalScrollBar()->maximum(), 0);
    EXPECT_LE(bench.window.width(), 640);
    // At the size that it asks for nothing is out of sight, and a screen of 1366 by 768 has it.
    const QSize content = bench.window.view().minimumSizeHint();
    EXPECT_LE(content.width(), 1366 - 8);
    EXPECT_LE(content.height(), 768 - 120);
}

TEST(MainWindow, IsUsedAt800By600WithBenchAndWaveform) {
    WindowBench bench;
    gui::addBench(bench.window, bench.bench, "loopback");
    bench.configure("40");
    bench.window.resize(800, 600);
    bench.window.move(0,
                      bench.window.screen()->availableGeometry().bottom() - 599); // no room below
    bench.settle();
    for (const bool waveform : {false, true}) {
        if (waveform)
            bench.window.findChild<QAction*>("openWaveform")->trigger();
        bench.settle();
        EXPECT_EQ(bench.window.size(), QSize(800, 600)); // nothing in it needs more
        const QStatusBar& status = *bench.window.statusBar();
        EXPECT_LE(status.geometry().bottom(), 600);
        for (const char* name : {"frmMain.txtHexWordToSend", "frmMain.cmdSendOnce"}) {
            const QWidget& any = bench.widget<QWidget>(name);
            EXPECT_EQ(any.visibleRegion().boundingRect().height(), any.height())
                << name << ", waveform " << waveform;
        }
    }
    // Two docks that the user has separated share their place again in a window that becomes lower.
    const auto docks = bench.window.findChildren<QDockWidget*>();
    ASSERT_EQ(docks.size(), 2);
    bench.window.splitDockWidget(docks[1], docks[0], Qt::Vertical);
    bench.window.resize(800, 590);
    bench.settle();
    bench.settle();
    EXPECT_EQ(bench.window.tabifiedDockWidgets(docks[1]).size(), 1);
}

TEST(MainWindow, AbortsARunByShiftEscapeInADialogAndInABox) {
    for (const bool inBox : {false, true}) {
        LiveWindow live;
        MainForm& form = live.program.mainForm();
        live.program.forms().get<forms::ComboBox>("frmMain.cmbMasterQCList").edit("a");
        form.quickCommands.cmdSaveQC.click();
        form.tabs.TabStripMain.click(2);
        form.commands.setToSend({"a", "* Wait 1 hrs", "a"});
        live.program.dialog().setVisible(true);
        live.program.session().ParallelPortReady = !inBox; // the word fails, and the run goes on
        int turns = 0;
        QTimer press;
        QObject::connect(&press, &QTimer::timeout, [&] {
            QWidget* box = QApplication::activeModalWidget();
            QWidget* target = inBox ? box : live.window->findChild<gui::FormDialog*>();
            if (++turns > 10'000) { // it is not aborted
                form.multiple.abandon();
                QApplication::closeAllWindows();
            } else if (inBox ? box != nullptr : form.multiple.remainingWait() > 0) {
                target->activateWindow();
                QTest::keyClick(target, Qt::Key_Escape, Qt::ShiftModifier);
            }
        });
        press.start(1);
        form.run.cmdSendOnce.click();
        EXPECT_LE(turns, 10'000) << inBox;
        EXPECT_FALSE(form.multiple.progress());
        EXPECT_TRUE(live.program.dialog().visible());
        EXPECT_EQ(form.log.lines().size(), inBox ? 0U : 5U + 3U); // a word, and its wait
    }
}

TEST(MainWindow, ShowsABoxForAFailureAndGoesOn) {
    LiveWindow live;
    live.program.session().SPIType = 12;
    QString text;
    QString title;
    QString details;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        text = box->text();
        title = box->windowTitle();
        details = box->detailedText();
        box->accept();
    });
    QTest::mouseClick(&live.button("frmMain.cmdSendOnce"), Qt::LeftButton);
    EXPECT_EQ(text, "Subscript out of range: there is no SPI type 12");
    EXPECT_EQ(title, "Bitlux Forge");
    EXPECT_EQ(details, "frmMain.cmdSendOnce_Click");
    live.program.session().SPIType = 1;
    QTest::mouseClick(&live.button("frmMain.cmdSendOnce"), Qt::LeftButton);
    EXPECT_EQ(live.program.mainForm().singleWord.lblHexWordReceived.caption(), "000000A5");
}

TEST(MainWindow, EnterGivesThePresetAnswerOfABox) {
    LiveWindow live;
    for (const auto preset : {MessageBox::Answer::Yes, MessageBox::Answer::No}) {
        QTimer::singleShot(
            0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
        EXPECT_EQ(live.desk.boxes.show(
                      {.text = "Sure?", .buttons = MessageBox::Buttons::YesNo, .preset = preset}),
                  preset);
    }
}

TEST(LogView, IsAListOfTheVisibleLines) {
    WindowBench bench;
    bench.configure("8");
    for (int i = 0; i < 40; ++i)
        bench.send("A5");
    auto& log = bench.widget<gui::LogView>("frmMain.lstSessionLogSingle");
    QAccessibleInterface* list = QAccessible::queryAccessibleInterface(&log);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->role(), QAccessible::List);
    EXPECT_EQ(list->text(QAccessible::Name), "Session Log");
    ASSERT_GT(list->childCount(), 3);
    ASSERT_LT(list->childCount(), 200);
    const int last = list->childCount() - 1;
    EXPECT_EQ(list->child(last)->text(QAccessible::Name), " ");
    EXPECT_TRUE(list->child(last)->state().selected);
    EXPECT_EQ(list->child(last - 1)->text(QAccessible::Name), "  A5");
    EXPECT_EQ(list->indexOfChild(list->child(2)), 2);
    QTest::keyClick(&log, Qt::Key_Home);
    bench.settle();
    EXPECT_EQ(log.current(), 0);
    EXPECT_EQ(log.firstVisible(), 0);
    EXPECT_EQ(list->child(0)->text(QAccessible::Name), "SPI Word Sent:");
    // An item can be chosen, and reports that it has the focus.
    list->child(2)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    bench.window.activateWindow();
    log.setFocus();
    bench.settle();
    EXPECT_EQ(log.current(), 2);
    EXPECT_TRUE(list->child(2)->state().focused);
}

TEST(MainWindow, StaysItsSizeWithNamesOfAnyLength) {
    WindowBench bench;
    const int width = bench.window.view().minimumSizeHint().width();
    ConfigureDialog& dialog = bench.program.dialog();
    dialog.txtPartName.setText(repeated(10'000, 'W'));
    dialog.extraPins.dataPins.enable(0).setValue(1);
    dialog.extraPins.dataPins.name(0).setText(repeated(10'000, 'W'));
    dialog.extraPins.dataPins.assignment(0).setText("5");
    bench.configure("8", {"optBinary"});
    bench.get<forms::TabStrip>("frmMain.TabStripLogPinsNow").click(2);
    bench.settle();
    EXPECT_LE(bench.window.view().minimumSizeHint().width(), width);
}

TEST(MainWindow, PaintsBeforeItHasNoticedThatLinesAreGone) {
    WindowBench bench;
    bench.configure("8");
    for (int word = 0; word < 50; ++word)
        bench.send("A5");
    bench.settle();
    bench.program.mainForm().log.clear();
    auto& log = bench.widgetAsItIs<gui::LogView>("frmMain.lstSessionLogSingle");
    EXPECT_FALSE(log.grab().isNull());
    EXPECT_EQ(log.line(0), "");
}

} // namespace
} // namespace bitlux::test
