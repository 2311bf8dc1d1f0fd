#include "gui/screens/main_screens.h"

#include "gui/bench/bench_view.h"
#include "gui/help/help_window.h"
#include "gui/screens/bench_program.h"
#include "gui/screens/form_picture.h"
#include "gui/window/main_window.h"
#include "gui/window/recent_menu.h"

#include <array>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>

namespace bitlux::gui {

namespace {

struct State {
    const char* name;
    const char* bits;
    bool hex;
    std::vector<const char*> words; ///< hexadecimal, or a bit button to press
};

/// A program on the virtual bench, brought into a state and painted.
class MainStage : BenchProgram {
public:
    MainStage() : BenchProgram("echo") {
        bench_.wireFor(program_.session());
        program_.Main();
    }

    void bring(const State& state) {
        ConfigureDialog& dialog = program_.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText(state.bits);
        (state.hex ? dialog.optHex : dialog.optBinary).setValue(true);
        dialog.cmdApply_Click();
    }

    void paint(const QString& file, QSize size, const State* state = nullptr,
               const char* device = "echo", const QString& search = {}) {
        MainWindow window(program_);
        window.addDockWidget(Qt::BottomDockWidgetArea,
                             new BenchView(bench_, program_, device, window.binder(), &window));
        if (auto* field = window.findChild<QLineEdit*>("chip.search"))
            field->setText(search);
        if (state != nullptr)
            sendWords(*state, window);
        window.show();
        if (size.isEmpty())
            window.fitToContent();
        else
            window.resize(size);
        window.view().focusEntry();
        window.binder().flush();
        QApplication::processEvents();
        window.grab().save(file);
    }

    /// Refreshes after each word, as between two clicks of a user.
    void sendWords(const State& state, MainWindow& window) {
        for (const char* word : state.words) {
            if (state.hex)
                program_.mainForm().singleWord.txtHexWordToSend.setText(word);
            else
                program_.mainForm().singleWord.cmdSI_single(std::atoi(word)).click();
            program_.mainForm().run.cmdSendOnce.click();
            window.binder().flush();
        }
    }

    void paintDialog(const QString& prefix) {
        MainWindow window(program_);
        program_.dialog().setVisible(true);
        auto* dialog = window.findChild<QDialog*>();
        for (int page = 1; page <= program_.dialog().FrameConfig.last(); ++page) {
            program_.dialog().TabStripConfig.click(page);
            window.binder().flush();
            QApplication::processEvents();
            dialog->grab().save(prefix + QString("-%1.png").arg(page));
        }
        program_.dialog().setVisible(false);
    }

    /// The Batch page: at the start, filled, in a wait of a continuous run; and its dialogs.
    void paintBatch(const QString& prefix, const QString& tail) {
        MainForm& form = program_.mainForm();
        MainWindow window(program_);
        window.show();
        form.tabs.TabStripMain.click(2);
        window.binder().flush();
        window.fitToContent();
        savePicture(window, window, prefix + "-empty" + tail);
        fillBatch();
        savePicture(window, window, prefix + "-filled" + tail);
        form.batches.cmdSaveBatch.click();
        savePicture(window, *window.findChild<QDialog*>(), prefix + "-save" + tail);
        program_.saveBatchForm().txtBatchName.edit("Night watch");
        program_.saveBatchForm().cmdSave.click();
        form.editor.cmdAddWait.click();
        for (auto* dialog : window.findChildren<QDialog*>())
            if (dialog->isVisible())
                savePicture(window, *dialog, prefix + "-wait" + tail);
        program_.addWaitForm().cmdCancel.click();
        desk_.boxes.answer(MessageBox::Answer::Ok);
        desk_.loop.atTime(clock_.nanoseconds() + 1'300'000'000, [&] {
            savePicture(window, window, prefix + "-running" + tail);
            window.resize(640, 480);
            savePicture(window, window, prefix + "-small" + tail);
            form.run.cmdStopContinuous.click();
        });
        form.run.cmdSendContinuous.click();
    }

    void paintPartTabs(const QString& file, QSize size) {
        ConfigureDialog& dialog = program_.dialog();
        for (forms::CheckBox* part : {&dialog.CheckEnable72361, &dialog.CheckEnable72517,
                                      &dialog.CheckEnable72518, &dialog.CheckEnable72537})
            part->setValue(1);
        dialog.cmdApply_Click();
        paint(file, size);
    }

    void paintPartPages(const QString& prefix, const QString& tail) {
        ConfigureDialog& dialog = program_.dialog();
        MainWindow window(program_);
        window.show();
        for (forms::CheckBox* part :
             {&dialog.CheckEnable72361, &dialog.CheckEnable72517, &dialog.CheckEnable72518,
              &dialog.CheckEnable72537, &dialog.CheckEnable72516}) {
            part->setValue(1);
            dialog.cmdApply_Click();
            program_.mainForm().tabs.TabStripMain.click(3);
            window.resize(760, 420);
            savePicture(window, window,
                        prefix + "-" + QString::fromStdString(part->name()).right(5) + tail);
            part->setValue(0);
        }
        dialog.cmdApply_Click();
    }

    /// About, the help, and the menu of recent files.
    void paintHelp(const QString& folder, const QString& tail) {
        QTemporaryDir settings;
        UserSettings recent(settings.filePath("window.conf"));
        for (const char* file : {"/home/lab/boards/lamp & motor.spi", "/home/lab/wake up.spi"})
            recent.fileUsed(file);
        program_.session().ConfigFileName = "/home/lab/wake up.spi";
        MainWindow window(program_, recent);
        window.show();
        auto* menu = window.findChild<RecentMenu*>();
        menu->popup({40, 40});
        savePicture(window, *menu, folder + "/recent" + tail);
        menu->close();
        program_.mainForm().itemAbout.click();
        savePicture(window, *window.findChild<QDialog*>(), folder + "/about" + tail);
        program_.aboutForm().cmdOK.click();
        HelpWindow help;
        help.bringToFront();
        auto& contents = *help.findChild<QListWidget*>();
        for (int page = 0; page < contents.count(); ++page) {
            contents.setCurrentRow(page);
            savePicture(window, help, folder + QString("/help-%1").arg(page) + tail);
        }
    }

    void showExtraPins() {
        ConfigureDialog& dialog = program_.dialog();
        const std::array<std::pair<int, const char*>, 2> pins{{{0, "5"}, {1, "6"}}};
        for (const auto& [row, pin] : pins) {
            dialog.extraPins.dataPins.enable(row).setValue(1);
            dialog.extraPins.dataPins.assignment(row).setText(pin);
        }
        for (int pin = 0; pin < 9; pin += 2)
            dialog.extraPins.Check(pin).setValue(1);
        dialog.cmdApply_Click();
        program_.mainForm().extraPins.optSetHighNow(1).click();
        program_.mainForm().extraPins.TabStripLogPinsNow.click(2);
    }

    void paintChip(const QString& file, QSize size, const QString& search = {}) {
        bench_.connect(makeDevice("zt72518d"));
        Chip& chip = *bench_.dongle.chip();
        for (const char* name : {"SPI ERR", "FWU", "Lin 1/Rx High", "VDD OV", "VSUV", "I/O 0"})
            chip.turn(switchNamed(chip, name), true);
        paint(file, size, nullptr, "zt72518d", search);
    }

    void plugDongle() {
        bench_.dongle.plug();
        program_.mainForm().call("Start_USB");
    }

private:
    void fillBatch() {
        MainForm& form = program_.mainForm();
        for (const auto& [name, word] :
             {std::pair("Wake", "A5"), std::pair("Read status", "03"), std::pair("Sleep", "3C")}) {
            form.singleWord.txtHexWordToSend.edit(word);
            form.commands.cmbMasterQCList.edit(name);
            form.quickCommands.cmdSaveQC.click();
        }
        for (const char* line :
             {"Wake", "* Wait 2 s", "Read status", "* Set HIGH: D5", "* Pause", "Sleep"})
            form.commands.addToSend(line);
        form.commands.lstCommandsToSend.select(2);
        form.commands.lstCommandsAvailable.select(0);
    }
};

const State states[] = {
    {"hex-8", "8", true, {"A5", "3C", "7"}},
    {"hex-160", "160", true, {"123456789ABCDEF00FEDCBA987654321DEADBEEF", "FF"}},
    {"bits-8", "8", false, {"0", "7", "5"}},
    {"bits-16", "16", false, {"15", "3", "8"}},
    {"bits-40", "40", false, {"39", "20", "1"}},
};

} // namespace

void paintMain(const QString& folder, const QString& tail) {
    for (const State& state : states) {
        MainStage stage;
        stage.bring(state);
        stage.paint(folder + "/main-" + state.name + tail + ".png", {}, &state);
    }
    MainStage dongle;
    dongle.plugDongle();
    dongle.bring(states[0]);
    dongle.paint(folder + "/main-dongle" + tail + ".png", {}, &states[0]);
    dongle.paintDialog(folder + "/configure-dongle" + tail);
    dongle.showExtraPins();
    dongle.paint(folder + "/main-dongle-pins" + tail + ".png", {});
    dongle.paintChip(folder + "/main-chip" + tail + ".png", {});
    dongle.paintChip(folder + "/main-chip-search" + tail + ".png", QSize(640, 480), "rx");
    MainStage batch;
    batch.bring(states[0]);
    batch.paintBatch(folder + "/batch", tail);
    MainStage parts;
    parts.bring(states[0]);
    parts.paintPartTabs(folder + "/main-parts" + tail + ".png", {});
    parts.paintPartTabs(folder + "/main-parts-small" + tail + ".png", QSize(640, 480));
    parts.paintPartPages(folder + "/part", tail);
    parts.paintHelp(folder, tail);
    MainStage first;
    first.paint(folder + "/main-start" + tail + ".png", {});
    first.bring(states[4]);
    first.paint(folder + "/main-small-screen" + tail + ".png", QSize(640, 480), &states[4]);
    first.paintDialog(folder + "/configure" + tail);
    first.showExtraPins();
    first.paint(folder + "/main-pins" + tail + ".png", {});
}

} // namespace bitlux::gui
