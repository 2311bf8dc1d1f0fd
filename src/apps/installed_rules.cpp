#include "apps/installed_rules.h"

#include "apps/checkup.h"
#include "apps/udev_rules.h"
#include "platform/linux/file_start.h"

#include <filesystem>

namespace bitlux {

namespace {

bool isFile(const Machine& machine, std::string_view name) {
    std::error_code error;
    return std::filesystem::exists(machine.root + std::string(name), error);
}

} // namespace

InstalledRules::InstalledRules(const Machine& machine)
    : machine_(machine),
      isPackaged_(!isFile(machine, udevRuleFile) && isFile(machine, packagedRuleFile)),
      text_(readFileStart(machine.root + file(), 1 << 20).bytes) {}

std::string InstalledRules::file() const {
    return std::string(isPackaged_ ? packagedRuleFile : udevRuleFile);
}

bool InstalledRules::cover(const UsbNumbers& numbers) const {
    const bool isListed =
        isPackaged_ && DongleNumbers({machine_.dongleFiles.front()}).contains(numbers);
    return isListed || hasUdevRule(text_, numbers);
}

std::string InstalledRules::fix(const UsbNumbers& numbers) const {
    if (!cover(numbers))
        return udevInstallCommand();
    const std::string fix = groupFix(machine_, dongleGroup);
    return fix.empty() ? std::string(udevReloadCommand) : fix;
}

} // namespace bitlux
