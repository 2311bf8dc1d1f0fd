#include "gui/screens/notice_screens.h"

#include "gui/screens/bench_program.h"
#include "gui/window/main_window.h"

#include <QApplication>

namespace bitlux::gui {

namespace {

class NoticeStage : BenchProgram {
public:
    NoticeStage() : BenchProgram("echo") {
        bench_.wireFor(program_.session());
        program_.Main();
        ConfigureDialog& dialog = program_.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText("24");
        dialog.optHex.setValue(true);
        dialog.types.TabStripSPItype.click(3);
        dialog.CheckEnable72517.setValue(1);
        dialog.CheckEnable72518.setValue(1);
        dialog.cmdApply_Click();
    }

    void paint(const QString& prefix, const QString& tail) {
        MainForm& form = program_.mainForm();
        MainWindow window(program_);
        window.show();
        for (const char* name : {"Wake", "Read status", "Sleep"}) {
            form.singleWord.txtHexWordToSend.edit("A5C3F0");
            form.commands.cmbMasterQCList.edit(name);
            form.quickCommands.cmdSaveQC.click();
        }
        program_.dialog().cmdApply_Click();
        shoot(window, prefix + "-emptied", tail);
        form.tabs.TabStripMain.click(2);
        form.commands.setToSend({"Read status"});
        form.run.cmdSendOnce.click();
        shoot(window, prefix + "-missing", tail);
        form.commands.setToSend({"* Wait 1 ms", "* Set HIGH: VDD enable"});
        form.run.cmdSendOnce.click();
        shoot(window, prefix + "-pin", tail);
        form.quickCommands.itemRestoreCommands.click();
        form.tabs.TabStripMain.click(3);
        form.tabs.TabStripMain.click(1);
        shoot(window, prefix + "-lent", tail);
        form.tabs.ZT72518_windows.click();
        form.tabs.TabStripMain.click(2);
        shoot(window, prefix + "-panel", tail);
    }

private:
    static void shoot(MainWindow& window, const QString& name, const QString& tail) {
        for (const bool small : {false, true}) {
            window.binder().flush();
            QApplication::processEvents();
            window.fitToContent();
            if (small)
                window.resize(640, 480);
            QApplication::processEvents();
            window.grab().save(name + (small ? "-small" : "") + tail + ".png");
        }
    }
};

} // namespace

void paintNotices(const QString& prefix, const QString& tail) {
    NoticeStage().paint(prefix, tail);
}

} // namespace bitlux::gui
