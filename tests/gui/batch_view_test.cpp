#include "window_bench.h"

#include <QComboBox>
#include <QDialog>
#include <QProgressBar>
#include <QTabBar>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

using Texts = std::vector<std::string>;

/// The window with the Quick Commands "Wake" (A5) and "Sleep" (3C), on the Batch page.
struct BatchBench : WindowBench {
    BatchBench() {
        configure("8");
        program.dialog().setVisible(false);
        window.activateWindow();
        settle();
        for (const auto& [name, word] : {std::pair("Wake", "A5"), std::pair("Sleep", "3C")})
            save(name, word);
        chooseTab(2);
    }

    void save(const char* name, const char* word) {
        type("frmMain.txtHexWordToSend", word);
        names().setFocus();
        names().lineEdit()->selectAll();
        QTest::keyClicks(&names(), name);
        settle();
        press("frmMain.cmdSaveQC");
    }
    void chooseTab(int tab) {
        widget<QTabBar>("frmMain.TabStripMain").setCurrentIndex(tab - 1);
        settle();
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        settle();
    }
    void keys(std::initializer_list<Qt::Key> several) {
        for (const Qt::Key one : several)
            key(one);
    }
    void keys(const QString& text) {
        QTest::keyClicks(QApplication::focusWidget(), text);
        settle();
    }
    void doubleClick(gui::LogView& list, int line) {
        const QPoint place = list.lineRect(line).center();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
        settle();
    }
    QComboBox& names() { return widget<QComboBox>("frmMain.cmbMasterQCList"); }
    gui::LogView& available() { return widget<gui::LogView>("frmMain.lstCommandsAvailable"); }
    gui::LogView& toSend() { return widget<gui::LogView>("frmMain.lstCommandsToSend"); }
    Texts linesToSend() { return lines("frmMain.lstCommandsToSend"); }
};

TEST(BatchView, IsUsableByKeyboardAlone) {
    BatchBench bench;
    bench.available().setFocus();
    bench.keys({Qt::Key_Down, Qt::Key_Return, Qt::Key_End, Qt::Key_Return});
    bench.keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}); // Add Wait
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "frmAddWait.txtWaitTime");
    bench.keys("250");
    bench.keys({Qt::Key_Tab, Qt::Key_Home, Qt::Key_Return}); // ms
    EXPECT_EQ(bench.linesToSend(), (Texts{"Wake", "Sleep", "* Wait 250 ms"}));

    bench.window.activateWindow();
    bench.settle();
    bench.toSend().setFocus();
    bench.keys({Qt::Key_Home, Qt::Key_Return}); // Remove
    EXPECT_EQ(bench.linesToSend(), (Texts{"Sleep", "* Wait 250 ms"}));
    bench.keys({Qt::Key_Tab, Qt::Key_Tab, Qt::Key_Space}); // Save Batch
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "frmSaveBatch.txtBatchName");
    bench.keys("Nightfall");
    bench.key(Qt::Key_Return);
    EXPECT_FALSE(bench.program.saveBatchForm().visible());
    EXPECT_EQ(bench.widget<QComboBox>("frmMain.cmbBatches").currentText(), "Nightfall");

    bench.window.activateWindow();
    auto& send = bench.widget<QPushButton>("frmMain.cmdSendOnce");
    EXPECT_EQ(send.shortcut(), QKeySequence("Alt+S"));
    send.setFocus();
    bench.key(Qt::Key_Space);
    EXPECT_EQ(bench.lines("frmMain.lstSessionLogMult"),
              (Texts{"SPI Word Sent:", "  3C", "SPI Word Received:", "  3C", " ",
                     "Waiting 250 ms ...", "Done Waiting", " "}));
    bench.key(Qt::Key_O, Qt::AltModifier);
    EXPECT_TRUE(bench.widget<QLineEdit>("frmMain.txtHexWordToSend").isVisible());
    EXPECT_FALSE(bench.toSend().isVisible());
    EXPECT_EQ(bench.boxes.takeTexts(), Texts{});
}

TEST(BatchView, MovesLinesByDoubleClick) {
    BatchBench bench;
    bench.doubleClick(bench.available(), 1);
    bench.doubleClick(bench.available(), 0);
    EXPECT_EQ(bench.linesToSend(), (Texts{"Sleep", "Wake"}));
    bench.doubleClick(bench.toSend(), 0);
    EXPECT_EQ(bench.linesToSend(), Texts{"Wake"});
    // Below the last line there is nothing to click.
    bench.doubleClick(bench.toSend(), 4);
    EXPECT_EQ(bench.linesToSend(), Texts{"Wake"});
}

TEST(QuickCommandRow, TakesTheNameAsItIsTyped) {
    BatchBench bench;
    bench.chooseTab(1);
    // A longer name that exists does not complete a shorter one, and a name that exists brings
    // its word only when it is chosen from the list.
    bench.save("Wak", "11");
    EXPECT_EQ(bench.lines("frmMain.lstCommandsAvailable"), (Texts{"Wake", "Sleep", "Wak"}));
    bench.boxes.answer(MessageBox::Answer::Yes);
    bench.save("Wake", "77");
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "77");
    bench.type("frmMain.txtHexWordToSend", "00");
    bench.names().setCurrentIndex(0);
    emit bench.names().activated(0);
    bench.settle();
    EXPECT_EQ(bench.text("frmMain.txtHexWordToSend"), "77");
    // The cursor stays where it is when typing deselects the entry.
    bench.names().lineEdit()->setCursorPosition(1);
    QTest::keyClicks(&bench.names(), "xy");
    bench.settle();
    QTest::keyClicks(&bench.names(), "z");
    EXPECT_EQ(bench.names().currentText(), "Wxyzake");
    // Chosen again, a double click sends it.
    emit bench.names().activated(1);
    bench.settle();
    QTest::mouseDClick(bench.names().lineEdit(), Qt::LeftButton);
    bench.settle();
    EXPECT_EQ(bench.label("frmMain.lblHexWordReceived"), "3C");
}

TEST(FormDialog, IsCancelledByEscapeAndByClosing) {
    BatchBench bench;
    bench.press("frmMain.cmdAddWait");
    bench.key(Qt::Key_Escape);
    EXPECT_FALSE(bench.program.addWaitForm().visible());
    bench.press("frmMain.cmdAddWait");
    auto* dialog = bench.widget<QLineEdit>("frmAddWait.txtWaitTime").window();
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(dialog->close());
    EXPECT_FALSE(bench.program.addWaitForm().visible());
    EXPECT_EQ(bench.linesToSend(), Texts{});
}

TEST(BatchView, ShowsARunAndStopsItAtOnce) {
    BatchBench bench;
    CommandLists& commands = bench.program.mainForm().commands;
    commands.setToSend({"* Wait 0 ms", "* Wait 60 s"});
    bench.settle();
    const auto& list = bench.toSend();
    bool seen = false;
    const std::int64_t start = bench.clock.nanoseconds();
    bench.loop.atTime(start + 5'500'000'000, [&] {
        bench.settle();
        EXPECT_EQ(list.marked(), 1);
        const auto& progress = bench.widget<QProgressBar>("runProgress");
        EXPECT_TRUE(progress.isVisible());
        EXPECT_TRUE(progress.text().startsWith("Pass 1, line 2 of 2, 54."))
            << progress.text().toStdString();
        seen = true;
        bench.press("frmMain.cmdStopContinuous");
        commands.clear(); // or a continuous run would be refused for no line
    });
    // The second pass is never begun, and the rest of the minute is not waited for.
    bench.press("frmMain.cmdSendContinuous");
    EXPECT_TRUE(seen);
    EXPECT_LT(bench.clock.nanoseconds() - start, 7'000'000'000);
    bench.settle();
    EXPECT_EQ(list.marked(), -1);
    EXPECT_FALSE(bench.widget<QProgressBar>("runProgress").isVisible());
}

} // namespace
} // namespace bitlux::test
