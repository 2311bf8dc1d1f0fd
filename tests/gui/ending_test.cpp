#include "gui/desktop/termination_signals.h"
#include "gui/window/command_line.h"
#include "live_window.h"
#include "support/temporary_folder.h"

#include <csignal>
#include <functional>

#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QProcess>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

QMessageBox* question() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    return box != nullptr && box->windowTitle() == "Last Chance to Save" ? box : nullptr;
}

/// Once a box is on the screen: the question, or any other.
void whenShown(bool isQuestion, const std::function<void(QMessageBox&)>& action) {
    QTimer::singleShot(1, [isQuestion, action] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (box != nullptr && (box == question()) == isQuestion)
            action(*box);
        else
            whenShown(isQuestion, action);
    });
}
void whenAsked(const std::function<void(QMessageBox&)>& action) {
    whenShown(true, action);
}

TEST(Ending, StopsAContinuousRunAndAsksOnce) {
    LiveWindow live;
    int asked = 0;
    whenAsked([&](QMessageBox& box) {
        ++asked;
        EXPECT_FALSE(live.program.mainForm().run.cmdStopContinuous.visible());
        live.window->close();
        EXPECT_TRUE(live.window->isVisible());
        EXPECT_EQ(QApplication::activeModalWidget(), &box);
        box.button(QMessageBox::No)->click();
    });
    QTimer::singleShot(30, [&] { live.window->close(); });
    QTest::mouseClick(&live.button("frmMain.cmdSendContinuous"), Qt::LeftButton);
    EXPECT_EQ(asked, 1);
    EXPECT_FALSE(live.program.running());
    EXPECT_FALSE(live.window->isVisible());
    EXPECT_EQ(live.bench.port.dataPins(), 0x01); // idle
    live.window->close();
    EXPECT_EQ(asked, 1);
}

TEST(Ending, WaitsForASaveThatSucceedsUnlessTheSystemEnds) {
    LiveWindow live;
    Session& session = live.program.session();
    const auto yes = [](QMessageBox& box) {
        whenShown(false, [](QMessageBox& failure) { failure.close(); });
        box.button(QMessageBox::Yes)->click();
    };
    session.ConfigFileName = "/missing/x.spi";
    session.ConfigDirty = ConstOn;
    whenAsked(yes);
    live.window->close();
    EXPECT_TRUE(live.window->isVisible());
    EXPECT_TRUE(live.program.running());
    whenAsked(yes);
    const gui::TerminationSignals termination(
        [&] { live.program.close(Program::Closing::System); });
    std::raise(SIGTERM);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !live.program.running(); }, 30000));
    EXPECT_FALSE(live.window->isVisible());
}

TEST(Ending, ByExitClosesEveryWindow) {
    LiveWindow live;
    live.program.session().ConfigDirty = ConstOff;
    live.program.mainForm().itemHelpTopics.click();
    live.program.mainForm().itemAbout.click();
    live.program.dialog().setVisible(true);
    live.program.mainForm().itemExit.click();
    for (const QWidget* window : QApplication::topLevelWidgets())
        EXPECT_FALSE(window->isVisible()) << window->windowTitle().toStdString();
}

TEST(Ending, IsCancelledByClosingTheQuestion) {
    LiveWindow live;
    live.program.session().ConfigDirty = ConstOn;
    live.program.dialog().setVisible(true);
    auto& exit = *live.window->findChild<QAction*>("frmMain.itemExit");
    const auto isWhole = [&live] {
        return live.program.running() && live.window->isVisible() &&
               live.program.dialog().visible();
    };
    const std::array<std::function<void(QMessageBox&)>, 2> ways{
        [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); },
        [](QMessageBox& box) { box.close(); }};
    for (const auto& leave : ways) {
        const auto ask = [&](QMessageBox& box) {
            EXPECT_TRUE(isWhole()) << "it asks first";
            EXPECT_EQ(box.text(), "Save configuration before exiting?");
            leave(box);
        };
        whenAsked(ask);
        live.window->close();
        EXPECT_TRUE(isWhole());
        whenAsked(ask);
        exit.trigger();
        EXPECT_TRUE(isWhole());
    }
    whenAsked([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
    exit.trigger();
    EXPECT_FALSE(live.program.running()) << "and asks once";
    EXPECT_FALSE(live.window->isVisible());
}

TEST(Ending, BySignalKeepsTheWorkWithoutAQuestion) {
    const TemporaryFolder state;
    for (const bool isAsking : {false, true}) { // a question on the screen goes
        LiveWindow live;
        live.program.mainForm().unsaved.keepIn(state.path());
        live.program.dialog().txtPartName.setText("ADC");
        live.program.session().ConfigDirty = ConstOn;
        const gui::TerminationSignals termination([&] { live.program.end(); });
        if (isAsking) {
            whenAsked([](QMessageBox&) { std::raise(SIGINT); });
            live.window->close();
        } else {
            std::raise(SIGTERM);
        }
        EXPECT_TRUE(QTest::qWaitFor([&] { return !live.program.running(); }, 30000));
        EXPECT_EQ(question(), nullptr);
        EXPECT_FALSE(live.window->isVisible());
        EXPECT_TRUE(RecoveredFiles(state.path()).left());
    }
}

/// Whether a process has a handler for SIGTERM.
bool minds(qint64 process) {
    QFile status(QString("/proc/%1/status").arg(process));
    if (!status.open(QIODevice::ReadOnly))
        return false;
    const QByteArray all = status.readAll();
    const qsizetype mask = all.indexOf("SigCgt:") + 7;
    return (all.mid(mask, 17).trimmed().toULongLong(nullptr, 16) >> (SIGTERM - 1) & 1U) != 0;
}

TEST(Ending, OfTheRealProgramBySignalIsOrderly) {
    const TemporaryFolder folder; // no settings of the user's
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
        environment.insert(variable, QString::fromStdString(folder.path()));
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(BITLUX_BENCH_PROGRAM, QStringList());
    ASSERT_TRUE(process.waitForStarted());
    ASSERT_TRUE(QTest::qWaitFor([&] { return minds(process.processId()); }, 30000));
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_EQ(QDir(QString::fromStdString(folder.path("bitlux-forge"))).entryList(QDir::Files),
              QStringList{"window.conf"})
        << "no marker and no work is left";
}

TEST(CommandLine, IsOneFileName) {
    const std::array<const char*, 4> words{"bitlux-forge", "-platform", "über  uns", "\"x\".spi"};
    EXPECT_EQ(gui::commandLineOf(4, words.data()), "-platform über  uns \"x\".spi");
    EXPECT_EQ(gui::commandLineOf(1, words.data()), "");
    EXPECT_TRUE(gui::answerTo("--version", "bitlux-forge")->starts_with("bitlux-forge 0."));
    EXPECT_FALSE(gui::answerTo("--version 2.spi", "bitlux-forge"));
}

} // namespace
} // namespace bitlux::test
