#include "gui/waveform/waveform_view.h"
#include "gui/window/decoded_view.h"
#include "window_bench.h"
#include "window_checks.h"

#include <QAbstractItemModelTester>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>

#include <gtest/gtest.h>

namespace bitlux::test {
namespace {

/// The window with the decoded log in place of the list.
struct DecodedWindow : WindowBench {
    explicit DecodedWindow(const std::string& device = "echo") : WindowBench(device) {
        configure("32");
        settle();
        press("decodedSingle");
    }
    gui::DecodedView& table() {
        return dynamic_cast<gui::DecodedView&>(widget<QTableView>("decodedLog"));
    }
    void sendAndLook(const std::string& word) {
        send(word);
        settle();
        table().refresh();
    }
    std::string cell(int row, DecodedLog::Column column) {
        return table()
            .model()
            ->index(row, static_cast<int>(column))
            .data()
            .toString()
            .toStdString();
    }
    std::string copiedBy(Qt::Key key) {
        QTest::keyClick(&table(), key, Qt::ControlModifier | Qt::ShiftModifier);
        return QApplication::clipboard()->text().toStdString();
    }
};

TEST(DecodedView, ShowsEachWordByTheNamesOfTheChip) {
    WindowBench bench;
    EXPECT_EQ(bench.window.findChild<QTableView*>(), nullptr); // made when it is first shown
    DecodedWindow decoded;
    const QAbstractItemModelTester tester(decoded.table().model());
    EXPECT_FALSE(decoded.widget<QWidget>("frmMain.lstSessionLogSingle").isVisible());
    EXPECT_FALSE(decoded.widget<QPushButton>("exportCsv").isEnabled());
    decoded.sendAndLook("46000020");
    EXPECT_EQ(decoded.cell(0, DecodedLog::Column::Meaning), "");
    auto& chips = decoded.widget<QComboBox>("decodedChip");
    EXPECT_EQ(chips.currentText(), "No chip");
    decoded.program.decoded().names().pick("zt72516");
    EXPECT_EQ(chips.currentText(), "zt72516");
    EXPECT_EQ(decoded.cell(0, DecodedLog::Column::Meaning),
              "AMUX write: Device Selection = Voltage at SG3");
    emit chips.activated(0);
    EXPECT_EQ(decoded.cell(0, DecodedLog::Column::Meaning), "");

    const Texts before = decoded.log();
    decoded.press("decodedSingle");
    EXPECT_TRUE(decoded.widget<QWidget>("frmMain.lstSessionLogSingle").isVisible());
    EXPECT_EQ(decoded.log(), before);
    decoded.press("decodedSingle");
    decoded.press("frmMain.cmdClearLogSingle");
    decoded.table().refresh();
    EXPECT_EQ(decoded.table().model()->rowCount(), 0);
    expectReached("decoded log", decoded.window);
    expectKeysApart("decoded log", decoded.window);
}

TEST(DecodedView, FollowsTheLastWordUntilItIsScrolledBack) {
    DecodedWindow bench;
    const QAbstractItemModelTester tester(bench.table().model());
    for (int word = 0; word < 100; ++word)
        bench.send("1");
    bench.table().refresh();
    QScrollBar& bar = *bench.table().verticalScrollBar();
    EXPECT_EQ(bar.value(), bar.maximum());
    bar.setValue(50);
    const std::string inSight = bench.cell(50, DecodedLog::Column::Time);
    bench.session().SessionLogEnabled = ConstOff; // the table goes on
    bench.session().WordToSend.assign(32, 1);
    for (std::size_t word = 0; word < SentWords::most + 10; ++word)
        bench.program.engine().SendSPI();
    bench.table().refresh();
    EXPECT_GE(bench.table().model()->rowCount(), static_cast<int>(SentWords::most));
    EXPECT_EQ(bench.cell(50, DecodedLog::Column::Time), inSight); // no block has gone yet
    EXPECT_EQ(bar.value(), 50);
    for (int word = 0; word < 2000; ++word)
        bench.program.engine().SendSPI();
    bench.table().refresh();
    EXPECT_LE(bench.table().model()->rowCount(), static_cast<int>(SentWords::most) + 2048);
    EXPECT_NE(bench.cell(50, DecodedLog::Column::Time), inSight);
}

TEST(DecodedView, CopiesWordsByKeysAndMenu) {
    DecodedWindow bench;
    bench.sendAndLook("A5C3");
    bench.sendAndLook("3C");
    bench.table().selectAll();
    EXPECT_EQ(bench.copiedBy(Qt::Key_P),
              "b.transfer_many([0x0000A5C3, 0x0000003C], bits=32, type=1)\n");
    EXPECT_EQ(bench.copiedBy(Qt::Key_L),
              "bitlux send --bits 32 --type 1 --bus port 0000A5C3 0000003C\n");
    QTest::keyClick(&bench.table(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_TRUE(QApplication::clipboard()->text().contains("\tPort\t0000003C\t0000A5C3\t\t\n"));

    // The list: the line under the pointer is selected first.
    bench.press("decodedSingle");
    auto& list = dynamic_cast<gui::LogView&>(
        bench.widget<QAbstractScrollArea>("frmMain.lstSessionLogSingle"));
    const auto menuAt = [&](const QPoint& place) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, place,
                                list.viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.viewport(), &event);
        return bench.window.findChild<QMenu*>("copyMenu");
    };
    QMenu* menu = menuAt(list.lineRect(list.firstVisible()).center());
    ASSERT_NE(menu, nullptr);
    EXPECT_EQ(list.current(), list.firstVisible());
    menu->actions().back()->trigger();
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "/* 32 bits a word, SPI type 1, most significant byte first */\n"
              "static const uint8_t words[][4] = {{0x00, 0x00, 0xA5, 0xC3}};\n");
    menu->close();
}

TEST(WaveformView, DecodesWordsByTheNamesOfTheChip) {
    WindowBench bench("zt72516");
    bench.configure("32");
    bench.program.decoded().names().pick("zt72516");
    bench.send("46000020");
    bench.send("06000000");
    bench.window.findChild<QAction*>("openWaveform")->trigger();
    bench.settle();
    auto& canvas = bench.widget<QAbstractScrollArea>("waveform.canvas");
    EXPECT_TRUE(canvas.accessibleDescription().endsWith(
        " DI: AMUX read. DO: AMUX: Device Selection = Voltage at SG3, Unused, Unused, Unused."))
        << canvas.accessibleDescription().toStdString();
    bench.window.grab();                             // is painted
    bench.program.decoded().names().pick("zt72518"); // its words have 16 bits
    EXPECT_FALSE(canvas.accessibleDescription().contains("AMUX"));
}

} // namespace
} // namespace bitlux::test
