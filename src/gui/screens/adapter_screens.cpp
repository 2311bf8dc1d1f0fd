#include "gui/screens/adapter_screens.h"

#include "gui/bench/bench_view.h"
#include "gui/screens/bench_program.h"
#include "gui/window/main_window.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>

namespace bitlux::gui {

namespace {

class AdapterStage : BenchProgram {
public:
    explicit AdapterStage(std::string serial) : BenchProgram("echo") {
        Adapter settings = bench_.adapter.settings();
        settings.serial = std::move(serial);
        bench_.adapter.setSettings(settings);
        bench_.adapter.plug();
        bench_.wireFor(program_.session());
        program_.Main();
    }

    void paint(const QString& prefix, const QString& tail) {
        MainWindow window(program_);
        addBench(window, bench_, "echo");
        window.show();
        shoot(window, window, prefix + "-start" + tail);
        paintDialog(window, prefix + "-configure", tail);
        for (const auto& [bits, word] :
             {std::pair("8", "A5"), std::pair("160", "123456789ABCDEF00FEDCBA987654321DEADBEEF")}) {
            apply(bits);
            send(word);
            shoot(window, window, prefix + "-" + bits + tail);
            window.resize(smallSize);
            shoot(window, window, prefix + "-small-" + bits + tail);
        }
        window.findChild<QCheckBox*>("bench.adapter")->click();
        send("A5");
        shoot(window, window, prefix + "-gone" + tail);
    }

    /// The dialog after the search, and its list.
    void paintDialog(MainWindow& window, const QString& prefix, const QString& tail) {
        ConfigureDialog& dialog = program_.dialog();
        program_.mainForm().itemPortOptions.click();
        dialog.Btn_ParallelPort.click();
        dialog.cmbPortsAvailable.setListIndex(1);
        window.binder().flush();
        auto& view = *window.findChild<QDialog*>();
        shoot(window, view, prefix + tail);
        auto& list = *view.findChild<QComboBox*>("frmConfigureSPI.cmbPortsAvailable");
        list.showPopup();
        shoot(window, *list.view()->window(), prefix + "-list" + tail);
        list.hidePopup();
        dialog.cmdOK.click();
    }

private:
    static constexpr QSize smallSize{800, 600};

    void apply(const char* bits) {
        ConfigureDialog& dialog = program_.dialog();
        dialog.cmbSPIWordLength.setText(bits);
        dialog.optHex.setValue(true);
        dialog.cmdApply_Click();
    }

    void send(const char* word) {
        program_.mainForm().singleWord.txtHexWordToSend.setText(word);
        program_.mainForm().run.cmdSendOnce.click();
    }

    static void shoot(MainWindow& window, QWidget& part, const QString& name) {
        window.binder().flush();
        if (&part == &window && window.size() != smallSize)
            window.fitToContent();
        QApplication::processEvents();
        part.grab().save(name + ".png");
    }
};

} // namespace

void paintAdapter(const QString& prefix, const QString& tail) {
    AdapterStage("A50285BI").paint(prefix, tail);
}

} // namespace bitlux::gui
