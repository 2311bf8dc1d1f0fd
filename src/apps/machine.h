#pragma once

#include "platform/linux/usb_devices.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace bitlux {

enum class Membership : std::uint8_t {
    Missing,   ///< the user is not in the group
    NextLogin, ///< the user was put into the group after this login
    InEffect,
    NotNeeded, ///< root
};

/// The machine that the doctor examines, and its user.
struct Machine {
    std::string root; ///< prefix of /sys, /proc, /dev and /etc; empty for the real ones
    std::vector<std::string> dongleFiles;  ///< dongles.conf, the system's first
    std::vector<std::string> adapterFiles; ///< adapters.conf, likewise
    std::string user;
    std::function<Membership(const std::string& group)> membership;
    /// Whether the user may read and write a device node.
    std::function<bool(const std::string& node)> mayOpen;
    /// Asks a device that dongles.conf does not list whether it is a dongle. Called only for
    /// devices that the user may open. Empty: only listed devices are dongles.
    std::function<bool(const UsbCandidate&)> isDongle;
};

/// The machine that this program runs on, and the user who runs it.
Machine thisMachine();

} // namespace bitlux
