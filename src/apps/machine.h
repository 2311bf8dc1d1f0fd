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

/// What the doctor examines, and for whom.
struct Machine {
    std::string root; ///< stands before /sys, /proc, /dev and /etc; empty for the real ones
    std::vector<std::string> dongleFiles; ///< dongles.conf, the system's first
    std::string user;
    std::function<Membership(const std::string& group)> membership;
    /// Whether the user may read and write a device node.
    std::function<bool(const std::string& node)> mayOpen;
    /// Asks a device that dongles.conf does not list whether it is a dongle. Called only for those
    /// that the user may open. Empty: only what is listed is one.
    std::function<bool(const UsbCandidate&)> isDongle;
};

/// The machine that this program runs on, and the user who runs it.
Machine thisMachine();

} // namespace bitlux
