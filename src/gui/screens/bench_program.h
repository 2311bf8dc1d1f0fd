#pragma once

#include "bench/scripted_desk.h"
#include "program/program.h"
#include "workbench/virtual_bench.h"

#include <string_view>

namespace bitlux::gui {

/// The program on the virtual bench, with a device on its lines, to be brought into a state and
/// painted. Who derives from it wires the bench and starts the program.
class BenchProgram {
protected:
    explicit BenchProgram(std::string_view device) : bench_(clock_, makeDevice(device)) {}

    VirtualClock clock_;
    VirtualBench bench_;
    ScriptedDesk desk_{clock_};
    Program program_{bench_.hardware(), desk_.desk()};
};

} // namespace bitlux::gui
