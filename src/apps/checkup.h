#pragma once

#include "apps/findings.h"
#include "apps/machine.h"
#include "platform/linux/node_holders.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

/// Checks the dongles, their list and their rights.
Findings examineDongles(const Machine& machine, const DongleNumbers& numbers);

/// Checks the adapters, their settings and their rights.
Findings examineAdapters(const Machine& machine);

/// Checks the parallel ports, their drivers and their rights.
Findings examinePorts(const Machine& machine);

/// The driver of an interface of a USB device.
struct Binding {
    std::string interface; ///< as "1-2:1.0"
    std::string driver;    ///< empty for none

    /// The kernel's driver for user programs has it.
    [[nodiscard]] bool isPrograms() const { return driver == "usbfs"; }
};
/// `folder` is that of the device in sysfs.
Binding bindingOf(const std::string& folder, int interface);

/// What to do about a device without its node.
inline constexpr std::string_view nodeFix =
    "sudo udevadm trigger, or unplug it and plug it in again";

/// How bad a missing udev rule is: root needs none.
Finding::Rank missingRuleRank(const Machine& machine);

/// What a user has to do to get the rights of a group; empty for one who has them.
std::string groupFix(const Machine& machine, std::string_view group);

/// Adds which programs hold the node, and what to do about it.
void tellHolders(const std::vector<NodeHolder>& holders, Finding& finding);

} // namespace bitlux
