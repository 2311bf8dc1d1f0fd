// The program on the virtual bench.

#include "gui/window_program.h"

int main(int argc, char** argv) {
    bitlux::PacedClock clock;
    bitlux::SimulatedPort port(clock, bitlux::makeDevice("loopback"));
    return bitlux::gui::runWindow(argc, argv, port, &port);
}
