#include "gui/screens/waveform_screens.h"

#include "gui/bench/bench_view.h"
#include "gui/screens/bench_program.h"
#include "gui/waveform/waveform_view.h"

#include <QApplication>
#include <QThread>

namespace bitlux::gui {

namespace {

class WaveformStage : BenchProgram {
public:
    enum class Bus { Port, Dongle };

    WaveformStage(Bus bus, const char* bits) : BenchProgram("echo") {
        bench_.wireFor(program_.session());
        program_.Main();
        if (bus == Bus::Dongle) {
            bench_.dongle.plug();
            program_.mainForm().call("Start_USB");
        }
        ConfigureDialog& dialog = program_.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText(bits);
        dialog.optHex.setValue(true);
        dialog.cmdApply_Click();
    }

    /// The window with the waveform of its words, on a large and on a small screen.
    void paintWindow(const QString& prefix, const QString& tail) {
        MainWindow window(program_);
        addBench(window, bench_, "echo");
        window.show();
        window.fitToContent();
        send("A5"); // shown when the view opens
        window.findChild<QAction*>("openWaveform")->trigger();
        shoot(window, prefix + "-before" + tail);
        for (const char* word : {"3C", "7", "81"}) {
            clock_.spend(3'000'000);
            send(word);
        }
        canvas(window).setFocus();
        shoot(window, prefix + tail);
        canvas(window).setMark(canvas(window).waveform().bits.front().sampledAt);
        canvas(window).setCursor(canvas(window).waveform().bits.back().sampledAt);
        canvas(window).chooseLine(Waveform::clock);
        canvas(window).zoom(1.6);
        shoot(window, prefix + "-cursors" + tail);
        window.findChild<QPushButton*>("waveform.inRow")->click();
        shoot(window, prefix + "-row" + tail);
        canvas(window).zoom(2);
        shoot(window, prefix + "-row-zoomed" + tail);
        window.resize(800, 600);
        shoot(window, prefix + "-small" + tail);
    }

    /// Words of all eight types on one sheet.
    void paintTypes(const QString& file) {
        QWidget sheet;
        auto* grid = new QGridLayout(&sheet);
        for (int type = 1; type <= 8; ++type) {
            auto* canvas = new WaveCanvas(&sheet);
            canvas->setFixedSize(620, canvas->sizeHint().height());
            canvas->show({waveformOfType(type)});
            grid->addWidget(canvas, (type - 1) % 4, (type - 1) / 4);
        }
        sheet.grab().save(file + ".png");
    }

private:
    void send(const char* word) {
        program_.mainForm().singleWord.txtHexWordToSend.setText(word);
        program_.mainForm().run.cmdSendOnce.click();
    }

    static WaveCanvas& canvas(MainWindow& window) {
        return dynamic_cast<WaveCanvas&>(
            *window.findChild<QAbstractScrollArea*>("waveform.canvas"));
    }

    static void shoot(MainWindow& window, const QString& name) {
        window.binder().flush();
        QApplication::processEvents();
        QThread::msleep(WaveformView::refreshPause + 10);
        QApplication::processEvents();
        window.grab().save(name + ".png");
    }

    Waveform waveformOfType(int type) {
        program_.forms().get<forms::TabStrip>("frmConfigureSPI.TabStripSPItype").click(type);
        program_.dialog().cmdApply_Click();
        program_.waveform().start();
        send("A5");
        program_.waveform().stop();
        return waveformOf(program_.waveform().words().back());
    }
};

} // namespace

void paintWaveforms(const QString& prefix, const QString& tail) {
    WaveformStage port(WaveformStage::Bus::Port, "8");
    port.paintTypes(prefix + "-types" + tail);
    WaveformStage(WaveformStage::Bus::Port, "8").paintWindow(prefix + "-port", tail);
    WaveformStage(WaveformStage::Bus::Port, "160").paintWindow(prefix + "-160", tail);
    WaveformStage dongle(WaveformStage::Bus::Dongle, "8");
    dongle.paintTypes(prefix + "-types-dongle" + tail);
    WaveformStage(WaveformStage::Bus::Dongle, "8").paintWindow(prefix + "-dongle", tail);
}

} // namespace bitlux::gui
