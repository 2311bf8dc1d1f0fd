#pragma once

#include "bench/simulated_port.h"
#include "platform/parallel_port.h"

namespace bitlux::gui {

/// Runs the program in its window on this port until the user ends it; the result is the exit
/// code. With `bench`, which then is the port, the virtual bench stands beside it, set up and
/// ready to send.
int runWindow(int argc, char** argv, ParallelPort& port, SimulatedPort* bench = nullptr);

} // namespace bitlux::gui
