#pragma once

#include "program/program.h"

namespace bitlux::perf {

/// Starts a program and makes it ready to send words of 32 bits on the port, in hexadecimal,
/// logging without end.
inline void prepareForEndlessWords(Program& program) {
    program.Main();
    ConfigureDialog& dialog = program.dialog();
    dialog.Btn_ParallelPort_Click();
    dialog.cmbSPIWordLength.setText("32");
    dialog.optHex.setValue(true);
    dialog.optLogForever.setValue(true);
    dialog.cmdApply_Click();
    program.mainForm().singleWord.txtHexWordToSend.setText("DEADBEEF");
}

} // namespace bitlux::perf
