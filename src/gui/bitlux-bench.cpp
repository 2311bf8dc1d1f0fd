// The program on the virtual bench.

#include "gui/window/window_program.h"

int main(int argc, char** argv) {
    bitlux::PacedClock clock;
    bitlux::VirtualBench bench(clock, bitlux::makeDevice("loopback"));
    bench.dongle.plug();
    return bitlux::gui::runWindow(argc, argv, bench.hardware(), &bench);
}
