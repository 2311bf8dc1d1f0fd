// The program on hardware.

#include "gui/window_program.h"
#include "platform/linux/linux_parallel_port.h"

int main(int argc, char** argv) {
    bitlux::LinuxParallelPort port;
    return bitlux::gui::runWindow(argc, argv, port);
}
