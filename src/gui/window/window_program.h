#pragma once

#include "platform/hardware.h"
#include "workbench/virtual_bench.h"

namespace bitlux::gui {

/// Runs the program in its window on this hardware until the user, a signal or the end of the
/// session ends it; the result is the exit code. The arguments are the name of a configuration
/// file. With `bench`, which then is the hardware, the virtual bench is shown below the window, set
/// up and ready to send.
int runWindow(int argc, char** argv, const Hardware& hardware, VirtualBench* bench = nullptr);

} // namespace bitlux::gui
