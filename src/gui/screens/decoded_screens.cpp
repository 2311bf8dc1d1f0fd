#include "gui/screens/decoded_screens.h"

#include "gui/bench/bench_view.h"
#include "gui/screens/bench_program.h"
#include "gui/waveform/waveform_view.h"
#include "gui/window/decoded_view.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPushButton>
#include <QThread>

namespace bitlux::gui {

namespace {

class DecodedStage : BenchProgram {
public:
    DecodedStage() : BenchProgram("zt72516") {
        bench_.wireFor(program_.session());
        program_.Main();
        bench_.dongle.plug();
        program_.mainForm().call("Start_USB");
        ConfigureDialog& dialog = program_.dialog();
        dialog.cmbSPIWordLength.setText("32");
        dialog.optHex.setValue(true);
        dialog.CheckEnable72516.setValue(1);
        dialog.cmdApply_Click();
    }

    void paint(const QString& prefix, const QString& tail) {
        MainWindow window(program_);
        addBench(window, bench_, "zt72516");
        window.show();
        window.fitToContent();
        auto& decoded = *window.findChild<QPushButton*>("decodedSingle");
        decoded.click();
        shoot(window, prefix + "-empty" + tail);
        for (const char* word : {"43001A2B", "03000000", "45F0001E", "05000000", "80000000",
                                 "41123456", "7F000000", "43000010", "03000000", "A0000000"}) {
            clock_.spend(1'234'567);
            send(word);
        }
        window.binder().flush();
        window.findChild<DecodedView*>()->refresh();
        window.findChild<DecodedView*>()->selectRow(2);
        shoot(window, prefix + tail);
        window.resize(800, 600);
        shoot(window, prefix + "-small" + tail);
        openMenu(window, prefix + "-menu" + tail);
        program_.mainForm().tabs.TabStripMain.click(2);
        window.binder().flush();
        window.findChild<QPushButton*>("decodedMult")->click();
        window.fitToContent();
        shoot(window, prefix + "-batch" + tail);
        program_.mainForm().tabs.TabStripMain.click(1);
        window.binder().flush();
        decoded.click();
        window.showNormal();
        window.resize(1100, 960);
        window.findChild<QAction*>("openWaveform")->trigger();
        auto& canvas =
            dynamic_cast<WaveCanvas&>(*window.findChild<QAbstractScrollArea*>("waveform.canvas"));
        send("43001A2B");
        shoot(window, prefix + "-wave" + tail);
        send("03000000");
        shoot(window, prefix + "-wave-read" + tail);
        window.findChild<QPushButton*>("waveform.inRow")->click();
        shoot(window, prefix + "-wave-row" + tail);
        canvas.zoom(8);
        window.resize(800, 600);
        shoot(window, prefix + "-wave-small" + tail);
    }

private:
    void send(const char* word) {
        program_.mainForm().singleWord.txtHexWordToSend.setText(word);
        program_.mainForm().run.cmdSendOnce.click();
    }

    static void openMenu(MainWindow& window, const QString& name) {
        QWidget& table = *window.findChild<DecodedView*>()->viewport();
        QContextMenuEvent event(QContextMenuEvent::Mouse, {60, 30},
                                table.mapToGlobal(QPoint(60, 30)));
        QApplication::sendEvent(&table, &event);
        if (auto* menu = window.findChild<QMenu*>("copyMenu")) {
            QApplication::processEvents();
            menu->grab().save(name + ".png");
            menu->close();
        }
    }

    static void shoot(MainWindow& window, const QString& name) {
        window.binder().flush();
        QApplication::processEvents();
        QThread::msleep(WaveformView::refreshPause + 10);
        QApplication::processEvents();
        window.grab().save(name + ".png");
    }
};

} // namespace

void paintDecoded(const QString& prefix, const QString& tail) {
    DecodedStage().paint(prefix, tail);
}

} // namespace bitlux::gui
