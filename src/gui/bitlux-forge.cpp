// The program on hardware.

#include "gui/window/window_program.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

#include <iostream>

int main(int argc, char** argv) {
    const bitlux::SystemClock clock;
    bitlux::LinuxParallelPort port;
    bitlux::LinuxUsbHost usb;
    const bitlux::DongleNumbers numbers(bitlux::DongleNumbers::files());
    for (const std::string& problem : numbers.problems())
        std::cerr << problem << '\n';
    return bitlux::gui::runWindow(argc, argv, {.port = port, .usb = usb, .clock = clock});
}
