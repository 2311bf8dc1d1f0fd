#include "gui/waveform/waveform_view.h"
#include "window_bench.h"

#include <QComboBox>
#include <QScrollBar>

#include <fmt/format.h>
#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The window with its waveform open, a word of eight bits on a loop in it.
struct WaveformWindow : WindowBench {
    WaveformWindow() {
        configure("8");
        window.findChild<QAction*>("openWaveform")->trigger();
        settle();
        sendAndLook("A5");
    }

    void sendAndLook(const std::string& word) {
        send(word);
        settle();
        EXPECT_TRUE(QTest::qWaitFor(
            [this] { return place().ends_with(fmt::format(" of {}", program.waveform().count())); },
            30000));
    }
    gui::WaveCanvas& canvas() {
        return dynamic_cast<gui::WaveCanvas&>(widget<QAbstractScrollArea>("waveform.canvas"));
    }
    std::string readout() { return widget<QLabel>("waveform.readout").text().toStdString(); }
    std::string place() { return widget<QLabel>("waveform.place").text().toStdString(); }
    void key(int key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(&canvas(), static_cast<Qt::Key>(key), modifiers);
    }
};

TEST(WaveformView, IsMadeAndRecordsOnlyWhenOpened) {
    WindowBench bench;
    bench.configure("8");
    auto* open = bench.window.findChild<QAction*>("openWaveform");
    EXPECT_EQ(bench.window.findChild<QDockWidget*>("waveform"), nullptr);
    EXPECT_EQ(&bench.program.pins().port(), &bench.port);
    open->trigger();
    bench.settle();
    EXPECT_NE(&bench.program.pins().port(), &bench.port);
    bench.send("A5");
    bench.widget<QDockWidget>("waveform").close();
    bench.settle();
    EXPECT_FALSE(open->isChecked());
    EXPECT_EQ(&bench.program.pins().port(), &bench.port);
    bench.send("77"); // while it is closed
    open->trigger();  // begins again, with the last words before
    EXPECT_TRUE(bench.widget<QDockWidget>("waveform").isVisible());
    EXPECT_EQ(bench.widget<QLabel>("waveform.place").text(), "Word 2 of 2");
    EXPECT_TRUE(bench.widget<QAbstractScrollArea>("waveform.canvas")
                    .accessibleDescription()
                    .contains("edges evenly spaced. DI 01110111 (77)"));
    open->trigger();
    bench.settle();
    bench.program.waveform().start(); // not by the window: it goes on
    for (int i = 0; i < 2; ++i)
        open->trigger();
    bench.send("3C");
    EXPECT_EQ(bench.program.waveform().count(), 3U);
}

TEST(WaveformView, IsReadByKeyboardAndMouse) {
    WaveformWindow bench;
    EXPECT_EQ(bench.canvas().accessibleDescription().toStdString(),
              "Word 1: type 1, 8 bits, MSB first. DI 10100101 (A5), DO 10100101 (A5).");
    bench.key(Qt::Key_Right);
    EXPECT_EQ(bench.readout(), "0.000 µs: CS 0, CLK 0, DI 0, DO unknown");
    bench.key(Qt::Key_Right);
    bench.key(Qt::Key_Right);
    EXPECT_EQ(bench.readout(), "2.000 µs: CS 0, CLK 1, DI 1, DO 1");
    bench.key(Qt::Key_End);
    EXPECT_EQ(bench.readout(), "26.000 µs: CS 1, CLK 0, DI 0, DO 1");
    bench.key(Qt::Key_Left);
    EXPECT_EQ(bench.readout(), "25.000 µs: CS 0, CLK 0, DI 0, DO 1");
    EXPECT_TRUE(
        bench.canvas().accessibleDescription().endsWith(QString::fromStdString(bench.readout())));

    QScrollBar& bar = *bench.canvas().horizontalScrollBar();
    EXPECT_EQ(bar.maximum(), 0);
    for (int i = 0; i < 6; ++i)
        bench.key(Qt::Key_Plus);
    EXPECT_GT(bar.maximum(), 1000);
    bench.key(Qt::Key_Home); // scrolls there
    EXPECT_LT(bar.value(), bar.maximum() / 10);
    bench.key(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(bar.maximum(), 0);

    const QPoint right(bench.canvas().viewport()->width() - 2, 10);
    QTest::mouseClick(bench.canvas().viewport(), Qt::LeftButton, {}, right);
    EXPECT_TRUE(bench.readout().starts_with("27.2")) << bench.readout();
}

TEST(WaveformView, MeasuresFromTheSecondCursorAndGoesAlongALine) {
    WaveformWindow bench;
    const auto difference = [&bench] {
        return bench.widget<QLabel>("waveform.difference").text().toStdString();
    };
    auto& lines = bench.widget<QComboBox>("waveform.lines");
    bench.key(Qt::Key_Down); // CS
    bench.key(Qt::Key_Down);
    EXPECT_EQ(lines.currentText(), "CLK");
    bench.press("waveform.nextEdge");
    EXPECT_EQ(bench.readout(), "2.000 µs: CS 0, CLK 1, DI 1, DO 1");
    EXPECT_EQ(difference(), "");
    bench.key(Qt::Key_Right, Qt::ShiftModifier);
    bench.key(Qt::Key_Right, Qt::ShiftModifier);
    EXPECT_EQ(bench.canvas().mark(), 5000);
    EXPECT_EQ(difference(), "Δ -3.000 µs, 333.3 kHz");
    for (int i = 0; i < 3; ++i)
        bench.press("waveform.nextEdge");
    EXPECT_EQ(difference(), "Δ 2.000 µs, 500 kHz") << bench.readout();
    bench.press("waveform.previousEdge");
    EXPECT_EQ(difference(), "Δ 0.000 µs");
    lines.setCurrentIndex(1);
    emit lines.activated(1);
    bench.press("waveform.nextEdge");
    EXPECT_EQ(bench.readout(), "26.000 µs: CS 1, CLK 0, DI 0, DO 1");
    bench.key(Qt::Key_Escape);
    EXPECT_EQ(difference(), "");

    // With the mouse: Shift and the right button move the second cursor, a name chooses its line.
    QWidget& picture = *bench.canvas().viewport();
    QTest::mouseClick(&picture, Qt::RightButton, {}, QPoint(picture.width() - 2, 10));
    EXPECT_NEAR(static_cast<double>(bench.canvas().mark().value_or(0)), 27250, 50);
    QTest::mouseClick(&picture, Qt::LeftButton, {}, QPoint(10, 20));
    EXPECT_EQ(lines.currentText(), "All edges"); // it was CS
    QTest::mouseClick(&picture, Qt::LeftButton, {}, QPoint(10, 20));
    EXPECT_EQ(lines.currentText(), "CS");
}

TEST(WaveformView, ShowsWordsInARow) {
    WaveformWindow bench;
    bench.clock.spend(1'000'000'000);
    bench.sendAndLook("3C");
    bench.press("waveform.inRow");
    EXPECT_EQ(bench.place(), "Words 1 to 2 of 2");
    EXPECT_EQ(bench.canvas().waveform().sent, "3C");
    bench.key(Qt::Key_Home);
    EXPECT_TRUE(bench.readout().starts_with("Word 1, 0.000 µs: CS 0")) << bench.readout();
    bench.canvas().setMark(bench.canvas().cursor());
    bench.canvas().setCursor(bench.canvas().row().words[1].at + 1000);
    EXPECT_TRUE(bench.readout().starts_with("Word 2, 1.000 µs: CS 0")) << bench.readout();
    // In real time, whatever the width of the gap between the words.
    const QString difference = bench.widget<QLabel>("waveform.difference").text();
    EXPECT_TRUE(difference.startsWith("Δ 1000")) << difference.toStdString();
    EXPECT_TRUE(difference.endsWith(" Hz")) << difference.toStdString();
    for (int i = 0; i < 9; ++i)
        bench.send("77");
    bench.sendAndLook("12");
    EXPECT_EQ(bench.place(), "Words 5 to 12 of 12");
    bench.key(Qt::Key_PageUp);
    EXPECT_EQ(bench.place(), "Words 4 to 11 of 12");
    bench.press("waveform.inRow");
    EXPECT_EQ(bench.place(), "Word 11 of 12");
}

TEST(WaveformView, FollowsHoldsAndLooksBack) {
    WaveformWindow bench;
    bench.sendAndLook("3C");
    EXPECT_EQ(bench.place(), "Word 2 of 2");
    EXPECT_EQ(bench.canvas().waveform().sent, "3C");
    bench.press("waveform.hold");
    bench.sendAndLook("77");
    EXPECT_EQ(bench.place(), "Word 2 of 3");
    EXPECT_EQ(bench.canvas().waveform().sent, "3C");
    bench.press("waveform.hold");
    EXPECT_EQ(bench.canvas().waveform().sent, "77");
    bench.press("waveform.previous");
    bench.key(Qt::Key_PageUp);
    EXPECT_EQ(bench.place(), "Word 1 of 3");
    EXPECT_FALSE(bench.widget<QPushButton>("waveform.previous").isEnabled());
    EXPECT_TRUE(bench.widget<QPushButton>("waveform.hold").isChecked());
    bench.press("waveform.next");
    EXPECT_EQ(bench.canvas().waveform().sent, "3C");
}

TEST(WaveformView, SavesThroughTheFileDialogs) {
    WaveformWindow bench;
    const TemporaryFolder folder;
    bench.fileDialogs.answer(folder.path("a.vcd"));
    bench.press("waveform.saveVcd");
    bench.fileDialogs.answer(folder.path("a.sr"));
    bench.press("waveform.saveSr");
    EXPECT_TRUE(contentOf(folder.path("a.vcd")).starts_with("$version"));
    EXPECT_TRUE(contentOf(folder.path("a.sr")).starts_with("PK"));
}

} // namespace
} // namespace bitlux::test
