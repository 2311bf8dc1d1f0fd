#pragma once

#include "bench/chosen_marker_files.h"
#include "panels/panel_bench.h"

namespace bitlux::test {

/// A program with a panel open, whose folder of markers has these files.
struct MarkedBench {
    MarkedBench(std::string name, const Texts& files) : form(std::move(name)), markers(files) {
        program.Main();
        program.forms().show(form);
    }
    Hardware hardware() {
        Hardware all = bench.hardware();
        all.markers = &markers;
        return all;
    }
    template <typename T = forms::Control>
    T& on(const std::string& control) {
        return program.forms().get<T>(form + "." + control);
    }

    const std::string form;
    VirtualClock clock;
    VirtualBench bench{clock, makeDevice("none")};
    ScriptedDesk desk{clock};
    ChosenMarkerFiles markers;
    Program program{hardware(), desk.desk()};
};

} // namespace bitlux::test
