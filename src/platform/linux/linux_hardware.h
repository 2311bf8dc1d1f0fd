#pragma once

#include "platform/chosen_port.h"
#include "platform/linux/linux_adapter_host.h"
#include "platform/linux/linux_parallel_port.h"
#include "platform/linux/linux_usb_host.h"

#include <optional>
#include <string>
#include <string_view>

namespace bitlux {

/// Which of a machine's ports, dongles and adapters a program may see.
struct HardwareChoice {
    std::optional<PortChoice> port; ///< all of them without one
    std::string serial;             ///< of the dongle; all of them when it is empty
    bool dongles = true;            ///< false: as if none were plugged in, and none is touched
    AdapterChoice adapters;
};

/// The ports, dongles and adapters of this machine.
class LinuxHardware {
public:
    explicit LinuxHardware(HardwareChoice choice = {});

    /// Raises Failure, naming the alternatives, when the chosen port or adapter
    /// (PortUnusable) or dongle (LinkFailed) does not exist.
    void demandChosen(std::string_view deviceInterfaceClass);

    [[nodiscard]] ParallelPort& port();
    [[nodiscard]] LinuxUsbHost& usb() { return usb_; }
    [[nodiscard]] LinuxAdapterHost& adapters() { return adapters_; }

private:
    HardwareChoice choice_;
    LinuxParallelPort ports_;
    std::optional<ChosenPort> chosen_;
    LinuxUsbHost usb_;
    LinuxAdapterHost adapters_;
};

} // namespace bitlux
