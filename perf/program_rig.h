#pragma once

#include "bench/scripted_desk.h"
#include "bench/simulated_dongle.h"
#include "program/program.h"

#include <algorithm>
#include <vector>

namespace bitlux::perf {

/// A program on a port, set to words of 32 bits in hexadecimal, logging without end.
struct ProgramRig {
    explicit ProgramRig(ParallelPort& port)
        : program({.port = port, .usb = unplugged, .clock = clock}, desk.desk()) {
        program.Main();
        ConfigureDialog& dialog = program.dialog();
        dialog.Btn_ParallelPort_Click();
        dialog.cmbSPIWordLength.setText("32");
        dialog.optHex.setValue(true);
        dialog.optLogForever.setValue(true);
        dialog.cmdApply_Click();
        program.mainForm().singleWord.txtHexWordToSend.setText("DEADBEEF");
    }

    SystemClock clock;
    VirtualClock busClock;
    SimulatedDongle unplugged{busClock, makeDevice("none")};
    ScriptedDesk desk{clock};
    Program program;
};

inline double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<long>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace bitlux::perf
