#pragma once

#include "support/test_bench.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bitlux::test {

constexpr std::int64_t millisecond = 1'000'000;

/// The five run buttons: + visible and enabled, - visible and disabled, . hidden; in the order
/// Send Once, Cancel, Send Continuously, Stop, Abort.
inline std::string runButtons(TestBench& bench) {
    std::string state;
    for (const char* name :
         {"cmdSendOnce", "cmdCancelSingle", "cmdSendContinuous", "cmdStopContinuous", "cmdAbort"}) {
        const forms::Control& button = bench.program.mainForm().control(name);
        state += !button.visible() ? '.' : button.enabled() ? '+' : '-';
    }
    return state;
}
constexpr const char* idleButtons = "+.+..";

/// A bench in hexadecimal display that works with Quick Commands and the Batch page.
struct BatchBench : TestBench {
    explicit BatchBench(const std::string& bits = "8", WithDongle withDongle = WithDongle::No)
        : TestBench("loopback", {}, withDongle) {
        configure(bits);
    }

    forms::ComboBox& names() { return get<forms::ComboBox>("frmMain.cmbMasterQCList"); }
    forms::ListBox& toSend() { return get<forms::ListBox>("frmMain.lstCommandsToSend"); }
    Texts available() { return lines("frmMain.lstCommandsAvailable"); }
    Texts sendLines() { return lines("frmMain.lstCommandsToSend"); }

    void saveBatch(const std::string& name) {
        click("frmMain.cmdSaveBatch");
        edit("frmSaveBatch.txtBatchName", name);
        click("frmSaveBatch.cmdSave");
    }
    /// Other commands to send than before.
    void setToSend(const Texts& lines) { program.mainForm().commands.setToSend(lines); }
    /// Opens the Batch page.
    void openBatchPage() { get<forms::TabStrip>("frmMain.TabStripMain").click(2); }
    /// Plays lines once; the texts of the boxes.
    Texts play(const Texts& lines) {
        setToSend(lines);
        click("frmMain.cmdSendOnce");
        return boxes.takeTexts();
    }
    /// Sends continuously until the n-th turn of the loop.
    void sendContinuously(int turns) {
        loop.atTurn(turns, [this] { click("frmMain.cmdStopContinuous"); });
        click("frmMain.cmdSendContinuous");
    }
    bool dirty() {
        const bool dirty = session().ConfigDirty == ConstOn;
        session().ConfigDirty = ConstOff;
        return dirty;
    }
};

} // namespace bitlux::test
