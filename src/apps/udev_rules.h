#pragma once

#include "platform/linux/dongle_numbers.h"

#include <string>
#include <string_view>
#include <vector>

namespace bitlux {

inline constexpr std::string_view udevRuleFile = "/etc/udev/rules.d/70-bitlux-forge.rules";

/// What an installed program contains: rules for adapters and for everything in the system's
/// dongles.conf, valid
/// while the administrator has no file of the same name.
inline constexpr std::string_view packagedRuleFile = "/usr/lib/udev/rules.d/70-bitlux-forge.rules";

/// The group whose members may open a dongle or an adapter without a local login.
inline constexpr std::string_view dongleGroup = "plugdev";

/// Makes the kernel apply the rules to its devices again.
inline constexpr std::string_view udevReloadCommand =
    "sudo udevadm control --reload && sudo udevadm trigger";

/// A command line that writes the rules and applies them.
std::string udevInstallCommand();

/// A rule file that lets users open adapters and the devices with these numbers.
std::string udevRules(const std::vector<UsbNumbers>& numbers);

/// Whether the text of a rule file has a rule for these numbers.
bool hasUdevRule(std::string_view rules, const UsbNumbers& numbers);

} // namespace bitlux
