#include "live_window.h"
#include "window_bench.h"

#include <optional>

#include <QAbstractEventDispatcher>
#include <QComboBox>
#include <QDialog>
#include <QProgressBar>
#include <QTabBar>
#include <QTimer>

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

TEST(BatchView, IsWorkedByTheKeyboardAlone) {
    BatchBench bench;
    bench.available().setFocus();
    bench.key(Qt::Key_Down);
    bench.key(Qt::Key_Return);
    bench.key(Qt::Key_End);
    bench.key(Qt::Key_Return);
    for (int i = 0; i < 3; ++i)
        bench.key(Qt::Key_Tab);
    bench.key(Qt::Key_Space); // Add Wait
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "frmAddWait.txtWaitTime");
    bench.keys("250");
    bench.key(Qt::Key_Tab);
    bench.key(Qt::Key_Home); // ms
    bench.key(Qt::Key_Return);
    EXPECT_EQ(bench.linesToSend(), (Texts{"Wake", "Sleep", "* Wait 250 ms"}));

    bench.window.activateWindow();
    bench.settle();
    bench.toSend().setFocus();
    bench.key(Qt::Key_Home);
    bench.key(Qt::Key_Return); // Remove
    EXPECT_EQ(bench.linesToSend(), (Texts{"Sleep", "* Wait 250 ms"}));
    bench.key(Qt::Key_Tab);
    bench.key(Qt::Key_Tab);
    bench.key(Qt::Key_Space); // Save Batch
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "frmSaveBatch.txtBatchName");
    bench.keys("Nightfall");
    bench.key(Qt::Key_Return);
    EXPECT_FALSE(bench.program.saveBatchForm().visible());
    EXPECT_EQ(bench.widget<QComboBox>("frmMain.cmbBatches").currentText(), "Nightfall");

    bench.window.activateWindow();
    bench.settle();
    bench.key(Qt::Key_S, Qt::AltModifier); // Send Once, after the look of a pressed button
    EXPECT_TRUE(QTest::qWaitFor([&] { return !bench.log().empty(); }, 30000));
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

/// Counts how often the event loop turns, from when it is made.
class Turns {
public:
    Turns() {
        QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
        QObject::connect(dispatcher, &QAbstractEventDispatcher::awake, &context_,
                         [this] { ++count_; });
        QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &context_,
                         [this] { ++count_; });
    }
    [[nodiscard]] int count() const { return count_; }

private:
    int count_ = 0;
    QObject context_;
};

TEST(BatchView, ShowsARunAndStopsItAtOnce) {
    LiveWindow live;
    CommandLists& commands = live.program.mainForm().commands;
    live.program.mainForm().tabs.TabStripMain.click(2);
    commands.addToSend("* Wait 0 ms");
    commands.addToSend("* Wait 60 s");
    live.window->binder().flush();
    auto& list = *live.window->findChild<gui::LogView*>("frmMain.lstCommandsToSend");
    int marked = -1;
    QString text;
    int ticks = 0;
    std::optional<Turns> turns;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, [&] {
        if (++ticks == 1)
            turns.emplace();
        if (ticks != 5)
            return;
        ticking.stop();
        EXPECT_LE(turns->count(), 200) << "the wait sleeps";
        marked = list.marked();
        auto* progress = live.window->findChild<QProgressBar*>("runProgress");
        ASSERT_NE(progress, nullptr);
        EXPECT_TRUE(progress->isVisible());
        text = progress->text();
        turns.emplace();
        live.button("frmMain.cmdStopContinuous").click();
        commands.clear(); // or a continuous run would be refused for no line
    });
    ticking.start(100);
    // The second pass is never begun.
    QTest::mouseClick(&live.button("frmMain.cmdSendContinuous"), Qt::LeftButton);
    EXPECT_EQ(ticks, 5);
    EXPECT_LE(turns->count(), 20) << "the rest of the minute is not waited for";
    EXPECT_EQ(marked, 1);
    EXPECT_TRUE(text.startsWith("Pass 1, line 2 of 2, 5")) << text.toStdString();
    live.window->binder().flush();
    EXPECT_EQ(list.marked(), -1);
    EXPECT_FALSE(live.window->findChild<QProgressBar*>("runProgress")->isVisible());
}

} // namespace
} // namespace bitlux::test
