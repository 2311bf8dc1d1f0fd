#pragma once

#include "platform/linux/dongle_numbers.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

inline constexpr std::string_view udevRuleFile = "/etc/udev/rules.d/70-bitlux-forge.rules";

/// What an installed program brings along: a rule for all that the system's dongles.conf lists, in
/// force while there is no file of the administrator.
inline constexpr std::string_view packagedRuleFile = "/usr/lib/udev/rules.d/70-bitlux-forge.rules";

/// Whose members may open a dongle without sitting at the machine.
inline constexpr std::string_view dongleGroup = "plugdev";

/// Makes the kernel's devices look at the rules again.
inline constexpr std::string_view udevReloadCommand =
    "sudo udevadm control --reload && sudo udevadm trigger";

/// Writes the rules and makes them work.
std::string udevInstallCommand();

/// A rule file that lets users open the devices with these numbers.
std::string udevRules(const std::vector<UsbNumbers>& numbers);

/// Whether the text of a rule file has a rule for these numbers.
bool hasUdevRule(std::string_view rules, const UsbNumbers& numbers);

} // namespace bitlux
